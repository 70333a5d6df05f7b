#pragma once

#include "com/Object.h"
#include "component/engine/NotBuilt.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// How values are written to a text file.
class ZuExportFormat final : public com::DualObject<ZuExportFormat, _ZuExportFormat> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuExportFormat); }

    STDMETHODIMP get_Name(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP get_DateFormat(DateMaskConstants* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DateFormat(DateMaskConstants) override { return E_NOTIMPL; }
    STDMETHODIMP get_DateSeparator(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DateSeparator(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_DateFormatMask(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DateFormatMask(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_TrueValue(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_TrueValue(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_FalseValue(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_FalseValue(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_StringsTrimmed(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_StringsTrimmed(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_StringsPadded(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_StringsPadded(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_StringPadCharacter(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_StringPadCharacter(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_StringsQuoted(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_StringsQuoted(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumbersTrimmed(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumbersTrimmed(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumbersPadded(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumbersPadded(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumberPadCharacter(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumberPadCharacter(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumbersQuoted(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumbersQuoted(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumberPositiveSymbol(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumberPositiveSymbol(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumberNegativeSymbol(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumberNegativeSymbol(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_NumberSignPosition(PositionConstants* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_NumberSignPosition(PositionConstants) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrencySignPosition(PositionConstants* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_CurrencySignPosition(PositionConstants) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrencySymbol(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_CurrencySymbol(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrencySymbolPosition(PositionConstants* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_CurrencySymbolPosition(PositionConstants) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrencyPrecision(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_CurrencyPrecision(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_Separator(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_Separator(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_FieldQuoteChar(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_FieldQuoteChar(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_LengthOfSingle(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_LengthOfSingle(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_LengthOfDouble(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_LengthOfDouble(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_DecimalsForSingle(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DecimalsForSingle(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_DecimalsForDouble(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DecimalsForDouble(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_LengthOfCurrency(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_LengthOfCurrency(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_OmitDecimalPoint(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_OmitDecimalPoint(VARIANT_BOOL) override { return E_NOTIMPL; }
};

}  // namespace zu::component
