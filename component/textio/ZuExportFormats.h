#pragma once

#include "com/Object.h"
#include "component/textio/FormatCollection.h"
#include "component/textio/ZuExportFormat.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The export formats of a control, in the order in which they were added.
class ZuExportFormats final : public com::DualObject<ZuExportFormats, _ZuExportFormats> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuExportFormats); }
    static const IID kInternals;

    FormatCollection<ZuExportFormat>& formats() noexcept { return formats_; }

    STDMETHODIMP get_Count(LONG* Result) override;
    STDMETHODIMP get_Item(VARIANT ItemReference, _ZuExportFormat** Result) override;
    STDMETHODIMP get_NewEnum(IUnknown** Result) override;
    STDMETHODIMP AddFormat(BSTR* Name, LONG* DefaultSetup, VARIANT_BOOL* Result) override;

private:
    HRESULT QueryMore(REFIID iid, void** object) noexcept override;

    FormatCollection<ZuExportFormat> formats_;
};

}  // namespace zu::component
