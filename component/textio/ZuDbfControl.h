#pragma once

#include "com/Object.h"
#include "component/engine/NotBuilt.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The import and export formats that a text file function works with.
class ZuDbfControl final : public com::DualObject<ZuDbfControl, _ZuDbfControl> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuDbfControl); }

    STDMETHODIMP get_ImportFormats(_ZuImportFormats** Result) override { return NotBuilt(Result); }
    STDMETHODIMP get_ExportFormats(_ZuExportFormats** Result) override { return NotBuilt(Result); }
};

}  // namespace zu::component
