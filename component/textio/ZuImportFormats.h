#pragma once

#include "com/Object.h"
#include "component/engine/NotBuilt.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The import formats of a control, in the order in which they were added.
class ZuImportFormats final : public com::DualObject<ZuImportFormats, _ZuImportFormats> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuImportFormats); }

    STDMETHODIMP get_Count(LONG* Result) override { return NotBuilt(Result); }
    STDMETHODIMP get_Item(VARIANT, _ZuImportFormat** Result) override { return NotBuilt(Result); }
    STDMETHODIMP get_NewEnum(IUnknown** Result) override { return NotBuilt(Result); }
    STDMETHODIMP AddFormat(BSTR*, LONG*, VARIANT_BOOL* Result) override { return NotBuilt(Result); }
};

}  // namespace zu::component
