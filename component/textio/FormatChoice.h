#pragma once

#include <string_view>

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "component/textio/ZuExportFormat.h"
#include "component/textio/ZuImportFormat.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The format of this name in the control that a caller gave, or in the thread's default control when it gave
/// none; the variable of such a caller then receives the default control. Null when there is no format of
/// that name. Throws ComError for a control that is none of this component's.
com::ComPtr<ZuExportFormat> ChooseExportFormat(_ZuDbfControl** definition, std::wstring_view name);
com::ComPtr<ZuImportFormat> ChooseImportFormat(_ZuDbfControl** definition, std::wstring_view name);

/// Tells that there is no format of this name; `kind` is "export" or "import".
void TellUnknownFormat(const wchar_t* kind, std::wstring_view name) noexcept;

/// The name in an optional argument; a null text is "Delimited".
inline std::wstring_view FormatNameOf(const BSTR* argument) noexcept {
    return argument && *argument ? com::View(*argument) : std::wstring_view(L"Delimited");
}

}  // namespace zu::component
