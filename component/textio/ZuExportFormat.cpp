#include "component/textio/ZuExportFormat.h"

#include "com/Bstr.h"
#include "com/Variant.h"

namespace zu::component {

namespace {

std::u16string TextOf(BSTR text) {
    return std::u16string(com::AsUtf16(com::View(text)));
}

HRESULT Answer(BSTR* result, const std::u16string& text) noexcept {
    return com::GuardResult(result, [&] { return com::NewBstr(com::AsWide(text)); });
}

template <class T>
HRESULT AnswerPlain(T* result, T value) noexcept {
    if (!result) return E_POINTER;
    *result = value;
    return S_OK;
}

}  // namespace

const IID ZuExportFormat::kInternals = {
    0x7c04f9d2, 0x36b1, 0x4a8e, {0x95, 0x5d, 0xe1, 0x28, 0x0a, 0x47, 0xbc, 0x63}};

HRESULT ZuExportFormat::QueryMore(REFIID iid, void** object) noexcept {
    if (!IsEqualIID(iid, kInternals)) return E_NOINTERFACE;
    *object = com::ComPtr(this).detach();
    return S_OK;
}

void ZuExportFormat::SetUp(std::wstring_view name, LONG preset) {
    name_ = name;
    format_.ApplyPreset(preset);
}

STDMETHODIMP ZuExportFormat::get_Name(BSTR* Result) {
    return com::GuardResult(Result, [&] { return com::NewBstr(name_); });
}

STDMETHODIMP ZuExportFormat::get_DateFormat(DateMaskConstants* Result) {
    return AnswerPlain(Result, static_cast<DateMaskConstants>(options().dateForm));
}
STDMETHODIMP ZuExportFormat::put_DateFormat(DateMaskConstants Value) {
    return com::Guard([&] { format_.SetDateForm(Value); });
}

STDMETHODIMP ZuExportFormat::get_DateSeparator(BSTR* Result) {
    return Answer(Result, options().dateSeparator);
}
STDMETHODIMP ZuExportFormat::put_DateSeparator(BSTR Value) {
    return com::Guard([&] { format_.SetDateSeparator(TextOf(Value)); });
}

STDMETHODIMP ZuExportFormat::get_DateFormatMask(BSTR* Result) {
    return Answer(Result, options().dateMask);
}
STDMETHODIMP ZuExportFormat::put_DateFormatMask(BSTR Value) {
    return com::Guard([&] { format_.SetDateMask(TextOf(Value)); });
}

STDMETHODIMP ZuExportFormat::get_TrueValue(BSTR* Result) {
    return Answer(Result, options().trueValue);
}
STDMETHODIMP ZuExportFormat::put_TrueValue(BSTR Value) {
    return com::Guard([&] { format_.plainOptions().trueValue = TextOf(Value); });
}

STDMETHODIMP ZuExportFormat::get_FalseValue(BSTR* Result) {
    return Answer(Result, options().falseValue);
}
STDMETHODIMP ZuExportFormat::put_FalseValue(BSTR Value) {
    return com::Guard([&] { format_.plainOptions().falseValue = TextOf(Value); });
}

STDMETHODIMP ZuExportFormat::get_StringsTrimmed(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().stringsTrimmed));
}
STDMETHODIMP ZuExportFormat::put_StringsTrimmed(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().stringsTrimmed = Value != VARIANT_FALSE; });
}

STDMETHODIMP ZuExportFormat::get_StringsPadded(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().stringsPadded));
}
STDMETHODIMP ZuExportFormat::put_StringsPadded(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().stringsPadded = Value != VARIANT_FALSE; });
}

STDMETHODIMP ZuExportFormat::get_StringPadCharacter(BSTR* Result) {
    return Answer(Result, options().stringPad);
}
STDMETHODIMP ZuExportFormat::put_StringPadCharacter(BSTR Value) {
    return com::Guard([&] { format_.SetStringPad(TextOf(Value)); });
}

STDMETHODIMP ZuExportFormat::get_StringsQuoted(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().stringsQuoted));
}
STDMETHODIMP ZuExportFormat::put_StringsQuoted(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().stringsQuoted = Value != VARIANT_FALSE; });
}

STDMETHODIMP ZuExportFormat::get_NumbersTrimmed(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().numbersTrimmed));
}
STDMETHODIMP ZuExportFormat::put_NumbersTrimmed(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().numbersTrimmed = Value != VARIANT_FALSE; });
}

STDMETHODIMP ZuExportFormat::get_NumbersPadded(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().numbersPadded));
}
STDMETHODIMP ZuExportFormat::put_NumbersPadded(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().numbersPadded = Value != VARIANT_FALSE; });
}

STDMETHODIMP ZuExportFormat::get_NumberPadCharacter(BSTR* Result) {
    return Answer(Result, options().numberPad);
}
STDMETHODIMP ZuExportFormat::put_NumberPadCharacter(BSTR Value) {
    return com::Guard([&] { format_.SetNumberPad(TextOf(Value)); });
}

STDMETHODIMP ZuExportFormat::get_NumbersQuoted(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().numbersQuoted));
}
STDMETHODIMP ZuExportFormat::put_NumbersQuoted(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().numbersQuoted = Value != VARIANT_FALSE; });
}

STDMETHODIMP ZuExportFormat::get_NumberPositiveSymbol(BSTR* Result) {
    return Answer(Result, options().positiveSymbol);
}
STDMETHODIMP ZuExportFormat::put_NumberPositiveSymbol(BSTR Value) {
    return com::Guard([&] { format_.plainOptions().positiveSymbol = TextOf(Value); });
}

STDMETHODIMP ZuExportFormat::get_NumberNegativeSymbol(BSTR* Result) {
    return Answer(Result, options().negativeSymbol);
}
STDMETHODIMP ZuExportFormat::put_NumberNegativeSymbol(BSTR Value) {
    return com::Guard([&] { format_.plainOptions().negativeSymbol = TextOf(Value); });
}

STDMETHODIMP ZuExportFormat::get_NumberSignPosition(PositionConstants* Result) {
    return AnswerPlain(Result, static_cast<PositionConstants>(options().signPosition));
}
STDMETHODIMP ZuExportFormat::put_NumberSignPosition(PositionConstants Value) {
    return com::Guard([&] { format_.plainOptions().signPosition = Value; });
}

STDMETHODIMP ZuExportFormat::get_CurrencySignPosition(PositionConstants* Result) {
    return AnswerPlain(Result, static_cast<PositionConstants>(options().currencySignPosition));
}
STDMETHODIMP ZuExportFormat::put_CurrencySignPosition(PositionConstants Value) {
    return com::Guard([&] { format_.plainOptions().currencySignPosition = Value; });
}

STDMETHODIMP ZuExportFormat::get_CurrencySymbol(BSTR* Result) {
    return Answer(Result, options().currencySymbol);
}
STDMETHODIMP ZuExportFormat::put_CurrencySymbol(BSTR Value) {
    return com::Guard([&] { format_.plainOptions().currencySymbol = TextOf(Value); });
}

STDMETHODIMP ZuExportFormat::get_CurrencySymbolPosition(PositionConstants* Result) {
    return AnswerPlain(Result, static_cast<PositionConstants>(options().currencySymbolPosition));
}
STDMETHODIMP ZuExportFormat::put_CurrencySymbolPosition(PositionConstants Value) {
    return com::Guard([&] { format_.plainOptions().currencySymbolPosition = Value; });
}

STDMETHODIMP ZuExportFormat::get_CurrencyPrecision(LONG* Result) {
    return AnswerPlain(Result, LONG{options().currencyPrecision});
}
STDMETHODIMP ZuExportFormat::put_CurrencyPrecision(LONG Value) {
    return com::Guard([&] { format_.plainOptions().currencyPrecision = Value; });
}

STDMETHODIMP ZuExportFormat::get_Separator(BSTR* Result) {
    return Answer(Result, options().separator);
}
STDMETHODIMP ZuExportFormat::put_Separator(BSTR Value) {
    return com::Guard([&] { format_.plainOptions().separator = TextOf(Value); });
}

STDMETHODIMP ZuExportFormat::get_FieldQuoteChar(BSTR* Result) {
    return Answer(Result, options().quote);
}
STDMETHODIMP ZuExportFormat::put_FieldQuoteChar(BSTR Value) {
    return com::Guard([&] { format_.SetQuote(TextOf(Value)); });
}

STDMETHODIMP ZuExportFormat::get_LengthOfSingle(LONG* Result) {
    return AnswerPlain(Result, LONG{options().lengthOfSingle});
}
STDMETHODIMP ZuExportFormat::put_LengthOfSingle(LONG Value) {
    return com::Guard([&] { format_.SetLengthOfSingle(Value); });
}

STDMETHODIMP ZuExportFormat::get_LengthOfDouble(LONG* Result) {
    return AnswerPlain(Result, LONG{options().lengthOfDouble});
}
STDMETHODIMP ZuExportFormat::put_LengthOfDouble(LONG Value) {
    return com::Guard([&] { format_.SetLengthOfDouble(Value); });
}

STDMETHODIMP ZuExportFormat::get_DecimalsForSingle(LONG* Result) {
    return AnswerPlain(Result, LONG{options().decimalsForSingle});
}
STDMETHODIMP ZuExportFormat::put_DecimalsForSingle(LONG Value) {
    return com::Guard([&] { format_.SetDecimalsForSingle(Value); });
}

STDMETHODIMP ZuExportFormat::get_DecimalsForDouble(LONG* Result) {
    return AnswerPlain(Result, LONG{options().decimalsForDouble});
}
STDMETHODIMP ZuExportFormat::put_DecimalsForDouble(LONG Value) {
    return com::Guard([&] { format_.SetDecimalsForDouble(Value); });
}

STDMETHODIMP ZuExportFormat::get_LengthOfCurrency(LONG* Result) {
    return AnswerPlain(Result, LONG{options().lengthOfCurrency});
}
STDMETHODIMP ZuExportFormat::put_LengthOfCurrency(LONG Value) {
    return com::Guard([&] { format_.SetLengthOfCurrency(Value); });
}

STDMETHODIMP ZuExportFormat::get_OmitDecimalPoint(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(options().omitDecimalPoint));
}
STDMETHODIMP ZuExportFormat::put_OmitDecimalPoint(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.plainOptions().omitDecimalPoint = Value != VARIANT_FALSE; });
}

}  // namespace zu::component
