#include "host/technologies/dbf/cdx/KeyChecker.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

std::string RecordText(std::uint32_t record) {
    return "record " + std::to_string(record);
}

}  // namespace

KeyChecker::KeyChecker(const TagHeader& header, const IndexContext& context, FindingList& findings)
    : header_(header),
      context_(context),
      findings_(findings),
      key_(expression::Program::CompileBytes(header.key, context.layout)),
      count_(context.records.Count()),
      seen_(std::size_t{count_} + 1, false) {
    if (!header.filter.empty()) {
        filter_.emplace(expression::Program::CompileBytes(header.filter, context.layout));
    }
    std::string reason;
    forms_ =
        KeyForm::ForTag(key_, context.layout, header.keyLength, (header.options & kNullableKey) != 0, reason);
    if (forms_.empty()) throw Error(ErrorKind::Unsupported, reason);
    encoder_.emplace(key_, context.layout, forms_.front());
    expected_.resize(forms_.front().length());
}

expression::Row KeyChecker::RowOf(std::uint32_t record) const {
    return {context_.records.Record(record), record, context_.records.memos()};
}

void KeyChecker::Take(const std::byte* key, std::uint32_t record, std::uint32_t page) {
    CheckOrderOfEqualKeys(key, record, page);
    if (record == 0 || record > count_) {
        findings_.Fault(
            page, RecordText(record) + " is not in the table of " + std::to_string(count_) + " records");
        return;
    }
    if (seen_[record]) {
        findings_.Fault(page, RecordText(record) + " has two keys");
        return;
    }
    seen_[record] = true;
    const expression::Row row = RowOf(record);
    if (row.record == nullptr) return;
    if (!Belongs(row)) {
        findings_.Fault(page, RecordText(record) + " is in the tag against the FOR condition");
        return;
    }
    CheckKey(key, row, page);
}

void KeyChecker::CheckOrderOfEqualKeys(const std::byte* key, std::uint32_t record, std::uint32_t page) {
    const std::size_t length = expected_.size();
    const bool isUnique = (header_.options & kUnique) != 0;
    const bool isCandidate = (header_.options & kCandidate) != 0;
    if (isUnique) allKeys_.insert(allKeys_.end(), key, key + length);
    if ((isUnique || isCandidate) && previous_.size() == length &&
        std::memcmp(previous_.data(), key, length) == 0) {
        findings_.Fault(page, RecordText(previousRecord_) + " and " + RecordText(record) +
                                  " have one key in a tag that allows no equal keys");
    }
    previous_.assign(key, key + length);
    previousRecord_ = record;
}

void KeyChecker::CheckKey(const std::byte* key, const expression::Row& row, std::uint32_t page) {
    const std::size_t length = expected_.size();
    while (forms_.size() > 1) {
        encoder_->Encode(row, expected_.data());
        const bool isFirst = std::memcmp(expected_.data(), key, length) == 0;
        KeyEncoder other(key_, context_.layout, forms_[1]);
        other.Encode(row, expected_.data());
        const bool isSecond = std::memcmp(expected_.data(), key, length) == 0;
        if (isFirst == isSecond) break;  // this record does not tell
        forms_.erase(isFirst ? forms_.begin() + 1 : forms_.begin());
        encoder_.emplace(key_, context_.layout, forms_.front());
    }
    encoder_->Encode(row, expected_.data());
    if (!encoder_->SameValue(key, expected_.data())) {
        findings_.Fault(page,
                        "the key of " + RecordText(row.number) + " is not the one that the record has now");
    }
}

bool KeyChecker::IsAmongUniqueKeys(const expression::Row& row) {
    encoder_->Encode(row, expected_.data());
    const std::size_t length = expected_.size();
    std::size_t low = 0;
    std::size_t high = allKeys_.size() / length;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (CompareKeys(allKeys_.data() + middle * length, expected_.data(), length) < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low < allKeys_.size() / length &&
           std::memcmp(allKeys_.data() + low * length, expected_.data(), length) == 0;
}

void KeyChecker::Finish(std::uint32_t root) {
    const bool isUnique = (header_.options & kUnique) != 0;
    for (std::uint32_t record = 1; record <= count_; ++record) {
        if (seen_[record]) continue;
        const expression::Row row = RowOf(record);
        if (row.record == nullptr || !Belongs(row)) continue;
        if (!isUnique) {
            findings_.Fault(root, RecordText(record) + " has no key");
        } else if (!IsAmongUniqueKeys(row)) {
            // The record that stood for its key has changed since; the next rebuild brings this one in.
            findings_.Remark(root,
                             RecordText(record) + " has no key, nor has another record with the same one");
        }
    }
}

}  // namespace zu::dbf::cdx
