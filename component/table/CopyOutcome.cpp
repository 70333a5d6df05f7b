#include "component/table/CopyOutcome.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
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
        if (listsFailures_) Remember(rows_);
    } else if (listsFailures_) {
        failed_.push_back(rows_);
    }
}

void CopyOutcome::Remember(LONG row) {
    // No view holds back more rows than this: the memory stays the same however long the copy is.
    constexpr std::size_t kMostHeldBack = 1U << 18;
    if (recent_.size() == 2 * kMostHeldBack) recent_.erase(recent_.begin(), recent_.begin() + kMostHeldBack);
    recent_.push_back(row);
}

void CopyOutcome::TakeBack(LONG count) {
    added_ -= std::min(count, added_);
    if (!listsFailures_) return;
    const auto first = recent_.end() - std::min<std::ptrdiff_t>(count, std::ssize(recent_));
    const auto before = std::ssize(failed_);
    failed_.insert(failed_.end(), first, recent_.end());
    std::inplace_merge(failed_.begin(), failed_.begin() + before, failed_.end());
    recent_.erase(first, recent_.end());
}

void CopyOutcome::Write(VARIANT* rowCount, VARIANT* addedCount, VARIANT* failedRowIndexes) const noexcept {
    WriteOutput(rowCount, Variant(rows_));
    WriteOutput(addedCount, Variant(added_));
    Trap([&] { WriteOutput(failedRowIndexes, TextList(failed_)); });
}

}  // namespace zu::component
