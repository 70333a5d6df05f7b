#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Table.h"

namespace zu::host {

/// A field as a view shows it.
struct ViewField {
    explicit ViewField(technologies::FieldDescription field);

    technologies::FieldDescription description;
    std::wstring name;
};

using ViewFields = std::vector<ViewField>;

/// The position of the field `name`, looked up without regard to case and outer blanks; npos when there is
/// none.
inline constexpr std::size_t kNoField = static_cast<std::size_t>(-1);
std::size_t FindField(const ViewFields& fields, std::wstring_view name) noexcept;

/// 0 left, 1 right, 2 centre.
int AlignmentOf(const technologies::FieldDescription& field) noexcept;

/// The name of a type for people, e.g. "Decimal".
std::wstring_view TypeNameOf(technologies::FieldType type) noexcept;

}  // namespace zu::host
