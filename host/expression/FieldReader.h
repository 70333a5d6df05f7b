#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/expression/RecordLayout.h"
#include "host/expression/Slot.h"

namespace zu::expression {

/// The type that a field has in expressions; Unknown for Opaque ones.
Type TypeOf(Storage storage) noexcept;

/// Where the null bit of a field lies; a mask of 0 means never null.
struct NullBit {
    std::size_t offset = 0;
    unsigned mask = 0;

    NullBit() = default;
    NullBit(const RecordLayout& layout, const FieldLayout& field) noexcept;
    bool IsSet(const std::byte* record) const noexcept {
        return mask != 0 && (std::to_integer<unsigned>(record[offset]) & mask) != 0;
    }
};

/// Text that a Character or Varchar field holds, padding included for Character.
std::string_view TextOf(const RecordLayout& layout, const FieldLayout& field,
                        const std::byte* record) noexcept;

std::int32_t LoadInteger(const std::byte* at) noexcept;
std::int64_t LoadInteger64(const std::byte* at) noexcept;
double LoadDouble(const std::byte* at) noexcept;

/// A DateTime field; false when it has no day. Milliseconds that miss a full second by one are put right:
/// writers compute them from fractions of a day.
bool LoadDateTime(const std::byte* at, std::int32_t& julianDay, std::int32_t& milliseconds) noexcept;

/// 1 for true, 0 for false, -1 when the field is not initialised.
int LoadLogical(std::byte stored) noexcept;

/// Puts the value of a field of `row` into `out`. Texts are views into the record where they lie there.
void ReadField(const RecordLayout& layout, std::size_t field, const Row& row, Register& out);

/// Nothing was ever put into the field: the bytes are blanks, or NULs where numbers are kept in binary form
/// there is no such state and the answer is false.
bool IsBlankField(const RecordLayout& layout, std::size_t field, const Row& row, Register& scratch);

}  // namespace zu::expression
