#pragma once

#include <string>
#include <string_view>

#include "com/Object.h"
#include "idl/ZuDBFFunctions.h"
#include "portable/textio/ExportFormat.h"

namespace zu::component {

/// How values are written to a text file. One that a client creates itself belongs to no collection.
class ZuExportFormat final : public com::DualObject<ZuExportFormat, _ZuExportFormat> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuExportFormat); }
    static const IID kInternals;

    /// Name and preset are given once, by the collection that the format is added to.
    void SetUp(std::wstring_view name, LONG preset);
    const std::wstring& name() const noexcept { return name_; }
    const textio::ExportFormat& format() const noexcept { return format_; }

    STDMETHODIMP get_Name(BSTR* Result) override;
    STDMETHODIMP get_DateFormat(DateMaskConstants* Result) override;
    STDMETHODIMP put_DateFormat(DateMaskConstants Value) override;
    STDMETHODIMP get_DateSeparator(BSTR* Result) override;
    STDMETHODIMP put_DateSeparator(BSTR Value) override;
    STDMETHODIMP get_DateFormatMask(BSTR* Result) override;
    STDMETHODIMP put_DateFormatMask(BSTR Value) override;
    STDMETHODIMP get_TrueValue(BSTR* Result) override;
    STDMETHODIMP put_TrueValue(BSTR Value) override;
    STDMETHODIMP get_FalseValue(BSTR* Result) override;
    STDMETHODIMP put_FalseValue(BSTR Value) override;
    STDMETHODIMP get_StringsTrimmed(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_StringsTrimmed(VARIANT_BOOL Value) override;
    STDMETHODIMP get_StringsPadded(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_StringsPadded(VARIANT_BOOL Value) override;
    STDMETHODIMP get_StringPadCharacter(BSTR* Result) override;
    STDMETHODIMP put_StringPadCharacter(BSTR Value) override;
    STDMETHODIMP get_StringsQuoted(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_StringsQuoted(VARIANT_BOOL Value) override;
    STDMETHODIMP get_NumbersTrimmed(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_NumbersTrimmed(VARIANT_BOOL Value) override;
    STDMETHODIMP get_NumbersPadded(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_NumbersPadded(VARIANT_BOOL Value) override;
    STDMETHODIMP get_NumberPadCharacter(BSTR* Result) override;
    STDMETHODIMP put_NumberPadCharacter(BSTR Value) override;
    STDMETHODIMP get_NumbersQuoted(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_NumbersQuoted(VARIANT_BOOL Value) override;
    STDMETHODIMP get_NumberPositiveSymbol(BSTR* Result) override;
    STDMETHODIMP put_NumberPositiveSymbol(BSTR Value) override;
    STDMETHODIMP get_NumberNegativeSymbol(BSTR* Result) override;
    STDMETHODIMP put_NumberNegativeSymbol(BSTR Value) override;
    STDMETHODIMP get_NumberSignPosition(PositionConstants* Result) override;
    STDMETHODIMP put_NumberSignPosition(PositionConstants Value) override;
    STDMETHODIMP get_CurrencySignPosition(PositionConstants* Result) override;
    STDMETHODIMP put_CurrencySignPosition(PositionConstants Value) override;
    STDMETHODIMP get_CurrencySymbol(BSTR* Result) override;
    STDMETHODIMP put_CurrencySymbol(BSTR Value) override;
    STDMETHODIMP get_CurrencySymbolPosition(PositionConstants* Result) override;
    STDMETHODIMP put_CurrencySymbolPosition(PositionConstants Value) override;
    STDMETHODIMP get_CurrencyPrecision(LONG* Result) override;
    STDMETHODIMP put_CurrencyPrecision(LONG Value) override;
    STDMETHODIMP get_Separator(BSTR* Result) override;
    STDMETHODIMP put_Separator(BSTR Value) override;
    STDMETHODIMP get_FieldQuoteChar(BSTR* Result) override;
    STDMETHODIMP put_FieldQuoteChar(BSTR Value) override;
    STDMETHODIMP get_LengthOfSingle(LONG* Result) override;
    STDMETHODIMP put_LengthOfSingle(LONG Value) override;
    STDMETHODIMP get_LengthOfDouble(LONG* Result) override;
    STDMETHODIMP put_LengthOfDouble(LONG Value) override;
    STDMETHODIMP get_DecimalsForSingle(LONG* Result) override;
    STDMETHODIMP put_DecimalsForSingle(LONG Value) override;
    STDMETHODIMP get_DecimalsForDouble(LONG* Result) override;
    STDMETHODIMP put_DecimalsForDouble(LONG Value) override;
    STDMETHODIMP get_LengthOfCurrency(LONG* Result) override;
    STDMETHODIMP put_LengthOfCurrency(LONG Value) override;
    STDMETHODIMP get_OmitDecimalPoint(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_OmitDecimalPoint(VARIANT_BOOL Value) override;

private:
    HRESULT QueryMore(REFIID iid, void** object) noexcept override;
    const textio::ExportOptions& options() const noexcept { return format_.options(); }

    std::wstring name_;
    textio::ExportFormat format_;
};

}  // namespace zu::component
