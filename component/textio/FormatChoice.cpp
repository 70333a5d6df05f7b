#include "component/textio/FormatChoice.h"

#include <string>

#include "com/ComError.h"
#include "component/engine/FailureReason.h"
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
    if (!own)
        throw com::ComError(com::kTypeMismatch,
                            L"The import or export definition is none that ZuDBFFunctions.ZuDbfControl made");
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

void TellUnknownFormat(const wchar_t* kind, std::wstring_view name) noexcept {
    try {
        TellReason(com::kSubscriptOutOfRange,
                   std::wstring(L"There is no ") + kind + L" format named \"" + std::wstring(name) +
                       L"\" in the definition that the function was given; without a definition there are "
                       L"\"Delimited\" and \"Fixed\"");
    } catch (...) {  // NOLINT(bugprone-empty-catch): no memory for a text; the caller has the failure value
    }
}

}  // namespace zu::component
