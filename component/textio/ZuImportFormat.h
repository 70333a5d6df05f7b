#pragma once

#include "com/Object.h"
#include "component/engine/NotBuilt.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// How the lines of a text file are read.
class ZuImportFormat final : public com::DualObject<ZuImportFormat, _ZuImportFormat> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuImportFormat); }

    STDMETHODIMP get_Name(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP get_BooleanLength(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_BooleanLength(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_DateFormat(DateMaskConstants* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DateFormat(DateMaskConstants) override { return E_NOTIMPL; }
    STDMETHODIMP get_DateSeparator(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DateSeparator(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_DateFormatMask(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_DateFormatMask(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_StringsTrimmed(VARIANT_BOOL* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_StringsTrimmed(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_FieldQuoteChar(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_FieldQuoteChar(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_LengthOfSingle(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_LengthOfSingle(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_LengthOfDouble(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_LengthOfDouble(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_LengthOfCurrency(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_LengthOfCurrency(LONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_Separator(BSTR* Result) override { return NotBuilt(Result); }
    STDMETHODIMP put_Separator(BSTR) override { return E_NOTIMPL; }
};

}  // namespace zu::component
