#pragma once

#include <windows.h>

#include <oleauto.h>

#include "component/table/ArrayElements.h"
#include "component/table/DataView.h"

namespace zu::component {

/// A list of field names, each followed by the field's new value, as scripts give it: counted from 0, any
/// number of pairs.
class FieldPairs {
public:
    /// `array` stays the caller's. Throws "subscript out of range" for an array never dimensioned.
    explicit FieldPairs(SAFEARRAY* array) : elements_(array), last_(elements_.upperBound()) {}

    /// The list holds whole pairs, at least one.
    bool isComplete() const noexcept { return last_ >= 1 && last_ % 2 == 1; }

    /// Puts the values into the current record of the view, in order. What was put before an error stays in
    /// the record, uncommitted.
    void PutInto(DataView& view) const;

private:
    ArrayElements elements_;
    LONG last_;
};

}  // namespace zu::component
