#pragma once

#include <string>
#include <string_view>

#include "com/Object.h"
#include "idl/ZuDBFFunctions.h"
#include "portable/textio/ImportFormat.h"

namespace zu::component {

/// How the lines of a text file are read. One that a client creates itself belongs to no collection.
class ZuImportFormat final : public com::DualObject<ZuImportFormat, _ZuImportFormat> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuImportFormat); }
    static const IID kInternals;

    /// Name and preset are given once, by the collection that the format is added to.
    void SetUp(std::wstring_view name, LONG preset);
    const std::wstring& name() const noexcept { return name_; }
    const textio::ImportFormat& format() const noexcept { return format_; }

    STDMETHODIMP get_Name(BSTR* Result) override;
    STDMETHODIMP get_BooleanLength(LONG* Result) override;
    STDMETHODIMP put_BooleanLength(LONG Value) override;
    STDMETHODIMP get_DateFormat(DateMaskConstants* Result) override;
    STDMETHODIMP put_DateFormat(DateMaskConstants Value) override;
    STDMETHODIMP get_DateSeparator(BSTR* Result) override;
    STDMETHODIMP put_DateSeparator(BSTR Value) override;
    STDMETHODIMP get_DateFormatMask(BSTR* Result) override;
    STDMETHODIMP put_DateFormatMask(BSTR Value) override;
    STDMETHODIMP get_StringsTrimmed(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_StringsTrimmed(VARIANT_BOOL Value) override;
    STDMETHODIMP get_FieldQuoteChar(BSTR* Result) override;
    STDMETHODIMP put_FieldQuoteChar(BSTR Value) override;
    STDMETHODIMP get_LengthOfSingle(LONG* Result) override;
    STDMETHODIMP put_LengthOfSingle(LONG Value) override;
    STDMETHODIMP get_LengthOfDouble(LONG* Result) override;
    STDMETHODIMP put_LengthOfDouble(LONG Value) override;
    STDMETHODIMP get_LengthOfCurrency(LONG* Result) override;
    STDMETHODIMP put_LengthOfCurrency(LONG Value) override;
    STDMETHODIMP get_Separator(BSTR* Result) override;
    STDMETHODIMP put_Separator(BSTR Value) override;

private:
    HRESULT QueryMore(REFIID iid, void** object) noexcept override;

    std::wstring name_;
    textio::ImportFormat format_;
};

}  // namespace zu::component
