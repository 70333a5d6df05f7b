#pragma once

#include "com/Object.h"
#include "component/textio/FormatCollection.h"
#include "component/textio/ZuImportFormat.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The import formats of a control, in the order in which they were added.
class ZuImportFormats final : public com::DualObject<ZuImportFormats, _ZuImportFormats> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuImportFormats); }
    static const IID kInternals;

    FormatCollection<ZuImportFormat>& formats() noexcept { return formats_; }

    STDMETHODIMP get_Count(LONG* Result) override;
    STDMETHODIMP get_Item(VARIANT ItemReference, _ZuImportFormat** Result) override;
    STDMETHODIMP get_NewEnum(IUnknown** Result) override;
    STDMETHODIMP AddFormat(BSTR* Name, LONG* DefaultSetup, VARIANT_BOOL* Result) override;

private:
    HRESULT QueryMore(REFIID iid, void** object) noexcept override;

    FormatCollection<ZuImportFormat> formats_;
};

}  // namespace zu::component
