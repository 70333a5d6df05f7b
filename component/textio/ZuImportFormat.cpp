#include "component/textio/ZuImportFormat.h"

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

const IID ZuImportFormat::kInternals = {
    0xd1860b3e, 0x72f4, 0x4be9, {0x80, 0xca, 0x15, 0x9d, 0x63, 0xf8, 0x2e, 0x0b}};

HRESULT ZuImportFormat::QueryMore(REFIID iid, void** object) noexcept {
    if (!IsEqualIID(iid, kInternals)) return E_NOINTERFACE;
    *object = com::ComPtr(this).detach();
    return S_OK;
}

void ZuImportFormat::SetUp(std::wstring_view name, LONG preset) {
    name_ = name;
    format_.ApplyPreset(preset);
}

STDMETHODIMP ZuImportFormat::get_Name(BSTR* Result) {
    return com::GuardResult(Result, [&] { return com::NewBstr(name_); });
}

STDMETHODIMP ZuImportFormat::get_BooleanLength(LONG* Result) {
    return AnswerPlain(Result, LONG{format_.booleanLength()});
}
STDMETHODIMP ZuImportFormat::put_BooleanLength(LONG Value) {
    return com::Guard([&] { format_.SetBooleanLength(Value); });
}

STDMETHODIMP ZuImportFormat::get_DateFormat(DateMaskConstants* Result) {
    return AnswerPlain(Result, static_cast<DateMaskConstants>(format_.dateForm()));
}
STDMETHODIMP ZuImportFormat::put_DateFormat(DateMaskConstants Value) {
    return com::Guard([&] { format_.SetDateForm(Value); });
}

STDMETHODIMP ZuImportFormat::get_DateSeparator(BSTR* Result) {
    return Answer(Result, format_.dateSeparator());
}
STDMETHODIMP ZuImportFormat::put_DateSeparator(BSTR Value) {
    return com::Guard([&] { format_.SetDateSeparator(TextOf(Value)); });
}

STDMETHODIMP ZuImportFormat::get_DateFormatMask(BSTR* Result) {
    return Answer(Result, format_.dateMask());
}
STDMETHODIMP ZuImportFormat::put_DateFormatMask(BSTR Value) {
    return com::Guard([&] { format_.SetDateMask(TextOf(Value)); });
}

STDMETHODIMP ZuImportFormat::get_StringsTrimmed(VARIANT_BOOL* Result) {
    return AnswerPlain(Result, com::ToVariantBool(format_.stringsTrimmed()));
}
STDMETHODIMP ZuImportFormat::put_StringsTrimmed(VARIANT_BOOL Value) {
    return com::Guard([&] { format_.SetStringsTrimmed(Value != VARIANT_FALSE); });
}

STDMETHODIMP ZuImportFormat::get_FieldQuoteChar(BSTR* Result) {
    return Answer(Result, format_.quote());
}
STDMETHODIMP ZuImportFormat::put_FieldQuoteChar(BSTR Value) {
    return com::Guard([&] { format_.SetQuote(TextOf(Value)); });
}

STDMETHODIMP ZuImportFormat::get_LengthOfSingle(LONG* Result) {
    return AnswerPlain(Result, LONG{format_.lengthOfSingle()});
}
STDMETHODIMP ZuImportFormat::put_LengthOfSingle(LONG Value) {
    return com::Guard([&] { format_.SetLengthOfSingle(Value); });
}

STDMETHODIMP ZuImportFormat::get_LengthOfDouble(LONG* Result) {
    return AnswerPlain(Result, LONG{format_.lengthOfDouble()});
}
STDMETHODIMP ZuImportFormat::put_LengthOfDouble(LONG Value) {
    return com::Guard([&] { format_.SetLengthOfDouble(Value); });
}

STDMETHODIMP ZuImportFormat::get_LengthOfCurrency(LONG* Result) {
    return AnswerPlain(Result, LONG{format_.lengthOfCurrency()});
}
STDMETHODIMP ZuImportFormat::put_LengthOfCurrency(LONG Value) {
    return com::Guard([&] { format_.SetLengthOfCurrency(Value); });
}

STDMETHODIMP ZuImportFormat::get_Separator(BSTR* Result) {
    return Answer(Result, format_.separator());
}
STDMETHODIMP ZuImportFormat::put_Separator(BSTR Value) {
    return com::Guard([&] { format_.SetSeparator(TextOf(Value)); });
}

}  // namespace zu::component
