#include "portable/textio/ExportFormat.h"

#include <utility>

namespace zu::textio {

namespace {

std::u16string FirstCharacter(std::u16string text) {
    if (text.size() > 1) text.resize(1);
    return text;
}

void SetPresetValues(bool delimited, ExportOptions& options) {
    options.dateForm = DateForm::YearMonthDay;
    options.dateSeparator.clear();
    options.trueValue = u"T";
    options.falseValue = u"F";
    options.stringsTrimmed = delimited;
    options.stringsPadded = !delimited;
    options.stringPad = u" ";
    options.stringsQuoted = delimited;
    options.numbersTrimmed = false;
    options.numbersPadded = !delimited;
    options.numberPad = u" ";
    options.numbersQuoted = false;
    options.positiveSymbol.clear();
    options.negativeSymbol = u"-";
    options.signPosition = static_cast<int>(SignPosition::Left);
    options.currencySignPosition = static_cast<int>(SignPosition::Left);
    options.currencySymbol.clear();
    options.currencySymbolPosition = static_cast<int>(SignPosition::Left);
    options.separator = delimited ? u"," : u"";
}

}  // namespace

bool ExportFormat::ApplyPreset(int preset) {
    preset_ = preset;
    const bool known = preset == kDelimited || preset == kFixed;
    if (known) SetPresetValues(preset == kDelimited, options_);
    BuildMask();
    return known;
}

void ExportFormat::BuildMask() {
    BuildDateMask(options_.dateForm, options_.dateSeparator, options_.dateMask);
}

void ExportFormat::SetDateForm(int form) {
    if (!IsArrangement(form)) return;
    options_.dateForm = static_cast<DateForm>(form);
    BuildMask();
}

void ExportFormat::SetDateSeparator(std::u16string separator) {
    options_.dateSeparator = std::move(separator);
    BuildMask();
}

void ExportFormat::SetDateMask(std::u16string mask) {
    options_.dateMask = std::move(mask);
    options_.dateForm = DateForm::Custom;
}

void ExportFormat::SetStringPad(std::u16string pad) {
    options_.stringPad = FirstCharacter(std::move(pad));
}

void ExportFormat::SetNumberPad(std::u16string pad) {
    options_.numberPad = FirstCharacter(std::move(pad));
}

void ExportFormat::SetQuote(std::u16string quote) {
    options_.quote = FirstCharacter(std::move(quote));
}

void ExportFormat::SetLengthOfSingle(int length) noexcept {
    if (length > 0) options_.lengthOfSingle = length;
}

void ExportFormat::SetLengthOfDouble(int length) noexcept {
    if (length > 0) options_.lengthOfDouble = length;
}

void ExportFormat::SetLengthOfCurrency(int length) noexcept {
    if (length > 0) options_.lengthOfCurrency = length;
}

void ExportFormat::SetDecimalsForSingle(int decimals) noexcept {
    if (decimals >= 0) options_.decimalsForSingle = decimals;
}

void ExportFormat::SetDecimalsForDouble(int decimals) noexcept {
    if (decimals >= 0) options_.decimalsForDouble = decimals;
}

}  // namespace zu::textio
