#pragma once

#include <windows.h>

#include <oleauto.h>

#include <map>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::host {

/// What a running job shares with the functions that its script calls: values under small numbers.
///
/// Clients ask for the handle of an item once and use the handle from then on. Failures are ComErrors.
class ContextItems {
public:
    static constexpr LONG kRecordNumber = 2;  ///< Long: the number of the record being processed, from 1
    static constexpr LONG kView = 6;          ///< object: the view being processed
    static constexpr LONG kGreatestItem = 255;

    /// The handle of an item from 1 to kGreatestItem.
    static LONG HandleOf(LONG item);

    /// The value; where none is set: no object for the view, 0 for the record number, else Empty.
    com::Variant Get(LONG handle) const;
    /// Empty takes the value away. The view item takes only views and no object.
    void Set(LONG handle, const VARIANT& value);
    bool Has(LONG item) const noexcept { return items_.contains(item); }
    LONG count() const noexcept { return static_cast<LONG>(items_.size()); }
    void Clear() noexcept;

private:
    static LONG ItemOf(LONG handle);
    std::map<LONG, com::Variant> items_;
};

}  // namespace zu::host
