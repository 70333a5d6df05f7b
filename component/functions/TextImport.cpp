#include "component/textio/TextImport.h"

#include <memory>
#include <utility>

#include "com/Bstr.h"
#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/OptionalArgument.h"
#include "component/table/TableReference.h"
#include "component/textio/FormatChoice.h"
#include "component/textio/TextFile.h"
#include "component/textio/UnfinishedFiles.h"

namespace zu::component {

using com::ComPtr;
using com::Variant;

namespace {

constexpr const wchar_t* kFunction = L"DbfFromFile";

struct Import {
    const VARIANT* destination;
    std::wstring_view path;
    std::wstring_view condition;
    const VARIANT* fieldNames;

    /// False when the table cannot be opened. Errors end the import where it is.
    bool Run(const textio::ImportFormat& format, CopyOutcome& outcome) const {
        TableReference table;
        if (!table.Open(Given(destination))) return false;
        table.OpenDefaultIndex();
        // A view that holds no record to begin with, for adding.
        DataView view(table.FilterFlagged(Variant::Null(), {1, 0, Given(fieldNames)}));
        auto lines = std::make_unique<textio::LineReader>(OpenTextFile(path));
        try {
            TextImport import(view, format, outcome);
            import.SetCondition(condition);
            const WatchedJob watched(L"import", 0);
            import.Run(*lines, path, &watched);
        } catch (...) {
            KeepOpen(std::move(lines));
            throw;
        }
        return true;
    }
};

/// The three optional outputs.
struct Outputs {
    VARIANT* rowCount;
    VARIANT* addedCount;
    VARIANT* failedRowIndexes;
};

/// The boundary of an import: an error ends it, and the engine's log says which. Without a format of that
/// name nothing is touched, the outputs included.
HRESULT TrappedImport(VARIANT_BOOL* result, _ZuDbfControl** definition, std::wstring_view formatName,
                      const Import& job, const Outputs& outputs) noexcept {
    if (!result) return E_POINTER;
    *result = VARIANT_FALSE;
    const FunctionCall call;
    TrapAndTell([&] {
        const ComPtr<ZuImportFormat> format = ChooseImportFormat(definition, formatName);
        if (!format) return TellUnknownFormat(L"import", formatName);
        CopyOutcome outcome(!com::IsMissing(outputs.failedRowIndexes));
        Trap([&] {
            try {
                *result = com::ToVariantBool(job.Run(format->format(), outcome));
            } catch (...) {
                TellCurrentException();
                Engine().messages().Trace(RunTimeErrorText(kFunction));
            }
        });
        outcome.Write(outputs.rowCount, outputs.addedCount, outputs.failedRowIndexes);
    });
    return S_OK;
}

}  // namespace

STDMETHODIMP Functions::DbfFromDel(VARIANT DestTableDefn, BSTR SourceFilename, BSTR Condition,
                                   VARIANT FieldNames, _ZuDbfControl** ImportDefinition, VARIANT* RowCount,
                                   VARIANT* AddedCount, VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) {
    return TrappedImport(Result, ImportDefinition, L"Delimited",
                         {&DestTableDefn, com::View(SourceFilename), com::View(Condition), &FieldNames},
                         {RowCount, AddedCount, FailedRowIndexes});
}

STDMETHODIMP Functions::DbfFromFix(VARIANT DestTableDefn, BSTR SourceFilename, BSTR Condition,
                                   VARIANT FieldNames, _ZuDbfControl** ImportDefinition, VARIANT* RowCount,
                                   VARIANT* AddedCount, VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) {
    return TrappedImport(Result, ImportDefinition, L"Fixed",
                         {&DestTableDefn, com::View(SourceFilename), com::View(Condition), &FieldNames},
                         {RowCount, AddedCount, FailedRowIndexes});
}

STDMETHODIMP Functions::DbfFromFile(VARIANT* DestTableDefn, BSTR* SourceFilename, BSTR* Condition,
                                    VARIANT* FieldNames, _ZuDbfControl** ImportDefinition, BSTR* FormatName,
                                    VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                    VARIANT_BOOL* Result) {
    const auto text = [](const BSTR* argument) {
        return argument ? com::View(*argument) : std::wstring_view();
    };
    return TrappedImport(Result, ImportDefinition, FormatNameOf(FormatName),
                         {DestTableDefn, text(SourceFilename), text(Condition), FieldNames},
                         {RowCount, AddedCount, FailedRowIndexes});
}

}  // namespace zu::component
