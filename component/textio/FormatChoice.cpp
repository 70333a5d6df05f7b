#include "component/textio/FormatChoice.h"

#include "component/textio/Internals.h"
#include "component/textio/ZuDbfControl.h"

namespace zu::component {

using com::Check;
using com::ComPtr;

namespace {

ComPtr<_ZuDbfControl> ChosenControl(_ZuDbfControl** definition) {
    if (definition && *definition) return ComPtr<_ZuDbfControl>(*definition);
    ComPtr<_ZuDbfControl> control = DefaultControl();
    if (definition) *definition = control.copy();
    return control;
}

template <class Formats>
auto Named(IUnknown* formats, std::wstring_view name) {
    const ComPtr<Formats> own = Internals<Formats>(formats);
    if (!own) throw com::ComError(com::kTypeMismatch, L"The formats are those of another component");
    return own->formats().Find(name);
}

}  // namespace

ComPtr<ZuExportFormat> ChooseExportFormat(_ZuDbfControl** definition, std::wstring_view name) {
    ComPtr<_ZuExportFormats> formats;
    Check(ChosenControl(definition)->get_ExportFormats(formats.put()));
    return Named<ZuExportFormats>(formats.get(), name);
}

ComPtr<ZuImportFormat> ChooseImportFormat(_ZuDbfControl** definition, std::wstring_view name) {
    ComPtr<_ZuImportFormats> formats;
    Check(ChosenControl(definition)->get_ImportFormats(formats.put()));
    return Named<ZuImportFormats>(formats.get(), name);
}

}  // namespace zu::component
