#include "component/textio/TextExport.h"

#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ShownArgument.h"
#include "component/table/TableReference.h"
#include "component/textio/FormatChoice.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::component {

using com::ComPtr;

namespace {

constexpr const wchar_t* kFunction = L"DbfToFile";

struct Export {
    const VARIANT& source;
    std::wstring_view path;
    com::Variant condition;
    SelectionLimits limits;
    _ZuDbfControl** definition;
    std::wstring_view formatName;

    bool Run() const {
        const ComPtr<ZuExportFormat> format = ChooseExportFormat(definition, formatName);
        if (!format) {
            TellUnknownFormat(L"export", formatName);
            return false;
        }
        TableReference table;
        if (!table.Open(source)) return false;
        ComPtr<ZuDataView> records = table.FilterFlagged(condition, limits);
        if (!records) return false;
        DataView view(std::move(records));
        TextExport file(path, format->format());
        const WatchedJob job(L"export", 0);
        try {
            file.Write(view, &job);
        } catch (const Error& error) {
            throw Error(error.kind(), text::ToUtf8(com::AsUtf16(L"The " + ShownTable(source))) +
                                          " was not exported to its end: " + error.what());
        }
        if (file.missingCharacters() != 0)
            Engine().messages().Trace(
                std::wstring(kFunction) + L": " + std::to_wstring(file.missingCharacters()) +
                L" characters that the system's code page lacks became ? in " + std::wstring(path));
        return true;
    }
};

/// The boundary of an export: nothing is shown and no error reaches the caller, but the engine's log says
/// which file, record and field it was. `makeJob` answers the Export.
template <class MakeJob>
HRESULT TrappedExport(VARIANT_BOOL* result, MakeJob&& makeJob) noexcept {
    if (!result) return E_POINTER;
    *result = VARIANT_FALSE;
    const FunctionCall call;
    Trap([&] {
        try {
            *result = com::ToVariantBool(makeJob().Run());
        } catch (...) {
            TellCurrentException();
            Engine().messages().Trace(RunTimeErrorText(kFunction));
        }
    });
    return S_OK;
}

}  // namespace

STDMETHODIMP Functions::DbfToDel(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition,
                                 VARIANT FieldNames, LONG MaxRecords, _ZuDbfControl** ExportDefinition,
                                 VARIANT_BOOL* Result) {
    return TrappedExport(Result, [&] {
        return Export{SourceTableDefn,   com::View(DestFilename),
                      Given(&Condition), {MaxRecords, 0, Given(&FieldNames)},
                      ExportDefinition,  L"Delimited"};
    });
}

STDMETHODIMP Functions::DbfToFix(VARIANT SourceTableDefn, BSTR DestFilename, BSTR Condition,
                                 VARIANT FieldNames, LONG MaxRecords, _ZuDbfControl** ExportDefinition,
                                 VARIANT_BOOL* Result) {
    return TrappedExport(Result, [&] {
        return Export{SourceTableDefn,      com::View(DestFilename),
                      GivenText(Condition), {MaxRecords, 0, Given(&FieldNames)},
                      ExportDefinition,     L"Fixed"};
    });
}

STDMETHODIMP Functions::DbfToFile(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition,
                                  VARIANT FieldNames, LONG MaxRecords, _ZuDbfControl** ExportDefinition,
                                  BSTR* FormatName, VARIANT_BOOL* Result) {
    return TrappedExport(Result, [&] {
        return Export{SourceTableDefn,   com::View(DestFilename),
                      Given(&Condition), {MaxRecords, 0, Given(&FieldNames)},
                      ExportDefinition,  FormatNameOf(FormatName)};
    });
}

}  // namespace zu::component
