#include "portable/textio/ImportFormat.h"

#include <utility>

namespace zu::textio {

void ImportFormat::ApplyPreset(int preset) {
    if (preset != kDelimited && preset != kFixed) return;
    preset_ = preset;
    dateForm_ = DateForm::YearMonthDay;
    dateSeparator_.clear();
    if (preset == kDelimited) {
        quote_ = u"\"";
        separator_ = u",";
    } else {
        booleanLength_ = 1;
        stringsTrimmed_ = true;
        quote_.clear();
    }
    BuildMask();
}

void ImportFormat::BuildMask() {
    BuildDateMask(dateForm_, dateSeparator_, dateMask_);
    maskLength_ = dateMask_.size();
}

void ImportFormat::SetBooleanLength(int length) noexcept {
    if (length > 0) booleanLength_ = length;
}

void ImportFormat::SetDateForm(int form) {
    if (!IsArrangement(form)) return;
    dateForm_ = static_cast<DateForm>(form);
    BuildMask();
}

void ImportFormat::SetDateSeparator(std::u16string separator) {
    dateSeparator_ = std::move(separator);
    BuildMask();
}

void ImportFormat::SetDateMask(std::u16string mask) {
    dateMask_ = std::move(mask);
    dateForm_ = DateForm::Custom;
}

void ImportFormat::SetQuote(std::u16string quote) {
    quote_ = std::move(quote);
    if (quote_.size() > 1) quote_.resize(1);
}

void ImportFormat::SetLengthOfSingle(int length) noexcept {
    if (length > 0) lengthOfSingle_ = length;
}

void ImportFormat::SetLengthOfDouble(int length) noexcept {
    if (length > 0) lengthOfDouble_ = length;
}

void ImportFormat::SetLengthOfCurrency(int length) noexcept {
    if (length > 0) lengthOfCurrency_ = length;
}

void ImportFormat::SetSeparator(std::u16string separator) {
    if (!separator.empty()) separator_ = std::move(separator);
}

}  // namespace zu::textio
