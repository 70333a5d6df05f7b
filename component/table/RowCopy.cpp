#include "component/table/RowCopy.h"

#include <algorithm>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/engine/Trapped.h"

namespace zu::component {

using com::Check;
using com::Variant;

namespace {

void CopyValue(ZuDataField& from, ZuDataField& to) {
    Variant value;
    Check(from.get_Value(value.put()));
    Check(to.put_Value(value));
}

}  // namespace

RowCopy::RowCopy(DataView& source, DataView& destination, FieldMatch match)
    : source_(source),
      destination_(destination),
      match_(match),
      sourceFields_(source.FieldCount()),
      destinationFields_(destination.FieldCount()) {}

bool RowCopy::CopyRow() {
    Variant blank = Variant::Missing();
    if (!destination_.AddNew(*blank.address())) return false;
    if (!paired_) PairFields();
    return CopyFields() && destination_.Update();
}

void RowCopy::PairFields() {
    if (match_ == FieldMatch::kPosition) {
        PairByPosition();
    } else {
        PairByName();
    }
    paired_ = true;
}

void RowCopy::PairByPosition() {
    const LONG count = std::min(sourceFields_, destinationFields_);
    pairs_.clear();
    for (LONG position = 0; position < count; ++position)
        pairs_.push_back({source_.Field(Variant(position)), destination_.Field(Variant(position))});
}

void RowCopy::PairByName() {
    for (LONG position = 0; position < sourceFields_; ++position) {
        Trap([&] {
            Pair pair;
            pair.from = source_.Field(Variant(position));
            com::Bstr name;
            Check(pair.from->get_Name(name.put()));
            pair.to = destination_.Field(Variant(name.view()));
            pairs_.push_back(std::move(pair));
        });
    }
}

void RowCopy::TellNothingCopied() const {
    TellReason(com::kSubscriptOutOfRange,
               pairs_.empty() ? L"No row was copied: the two tables have no field of the same name"
                              : L"A row was not copied: no value fits into the field of its name",
               ReasonFor::Asking);
}

bool RowCopy::CopyFields() {
    if (match_ == FieldMatch::kPosition) {
        for (const Pair& pair : pairs_)
            CopyValue(*pair.from, *pair.to);
        return true;
    }
    bool anyCopied = false;
    for (const Pair& pair : pairs_) {
        Trap([&] {
            CopyValue(*pair.from, *pair.to);
            anyCopied = true;
        });
    }
    if (!anyCopied) TellNothingCopied();
    return anyCopied;
}

}  // namespace zu::component
