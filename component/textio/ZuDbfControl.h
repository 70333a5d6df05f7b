#pragma once

#include "com/Object.h"
#include "component/textio/ZuExportFormats.h"
#include "component/textio/ZuImportFormats.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The import and export formats that a text file function works with. A new one has the formats "Delimited"
/// and "Fixed" in both collections.
class ZuDbfControl final : public com::DualObject<ZuDbfControl, _ZuDbfControl> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuDbfControl); }

    ZuDbfControl();

    STDMETHODIMP get_ImportFormats(_ZuImportFormats** Result) override;
    STDMETHODIMP get_ExportFormats(_ZuExportFormats** Result) override;

private:
    com::ComPtr<ZuExportFormats> exportFormats_;
    com::ComPtr<ZuImportFormats> importFormats_;
};

/// The control of calls that bring none: one for each thread, made when it is first needed and kept with
/// whatever clients change in it, until the thread's apartment goes.
com::ComPtr<_ZuDbfControl> DefaultControl();

}  // namespace zu::component
