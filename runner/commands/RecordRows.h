#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::runner::commands {

/// The records of a view, one at a time.
class RecordRows {
public:
    struct Field {
        std::wstring name;
        bool right = false;   ///< shown at the right
        bool isText = false;  ///< may be cut
        long decimals = 0;    ///< places that are shown at least
    };

    /// `view` is a view as selections answer it.
    explicit RecordRows(const com::ComPtr<IDispatch>& view);

    const std::vector<Field>& fields() const noexcept { return fields_; }
    LONG count() const noexcept { return count_; }

    /// Makes the record with this number in the view, counted from 0, current.
    void MoveTo(LONG row);
    bool IsDeleted() const;
    LONG RecordNumber() const;
    const com::Variant& Value(std::size_t field);
    /// As people read it: the first line of a text, numbers with the places of their field, nothing for Null.
    std::wstring Shown(std::size_t field);

private:
    com::ComPtr<ZuDataView> view_;
    std::vector<Field> fields_;
    LONG count_ = 0;
    LONG row_ = -1;
    com::Variant value_;
};

}  // namespace zu::runner::commands
