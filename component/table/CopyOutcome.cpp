#include "component/table/CopyOutcome.h"

#include <string>

#include "com/SafeArray.h"
#include "com/Variant.h"
#include "component/engine/Trapped.h"
#include "component/table/OutputArgument.h"

namespace zu::component {

using com::Variant;

namespace {

/// Zero-based, elements VARIANTs: script languages can index no other kind of array.
Variant TextList(const std::vector<LONG>& numbers) {
    if (numbers.empty()) return Variant();
    std::vector<Variant> texts;
    texts.reserve(numbers.size());
    for (const LONG number : numbers)
        texts.emplace_back(std::wstring_view(std::to_wstring(number)));
    return com::SafeArray::Of(texts).ToVariant();
}

}  // namespace

void CopyOutcome::EndRow(bool added) {
    if (added) {
        ++added_;
    } else if (listsFailures_) {
        failed_.push_back(rows_);
    }
}

void CopyOutcome::Write(VARIANT* rowCount, VARIANT* addedCount, VARIANT* failedRowIndexes) const noexcept {
    WriteOutput(rowCount, Variant(rows_));
    WriteOutput(addedCount, Variant(added_));
    Trap([&] { WriteOutput(failedRowIndexes, TextList(failed_)); });
}

}  // namespace zu::component
