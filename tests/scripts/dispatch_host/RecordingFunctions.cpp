#include "tests/scripts/dispatch_host/RecordingFunctions.h"

#include "com/Bstr.h"
#include "com/Variant.h"

namespace zu::tests {
namespace {

constexpr com::ForeignType kForeign[] = {{L"FieldValues", __uuidof(ZuDataView)},
                                         {L"DataView", __uuidof(ZuDataView)},
                                         {L"Field", __uuidof(ZuDataField)}};

void Answer(VARIANT_BOOL* result) noexcept {
    *result = VARIANT_TRUE;
}

void Answer(LONG* result) noexcept {
    *result = 7;
}

void Answer(VARIANT* result) noexcept {
    *result = com::Variant(std::wstring_view(L"answer")).detach();
}

template <class Interface>
void Answer(Interface** result) noexcept {
    *result = nullptr;
}

// A value that travels back to the caller's variable.
void GiveBack(VARIANT* argument, LONG value) {
    if (argument && !com::IsMissing(argument)) *argument = com::Variant(value).detach();
}

void GiveBack(BSTR* argument, std::wstring_view value) {
    SysFreeString(*argument);
    *argument = com::NewBstr(value);
}

}  // namespace

com::DispatchOptions RecordingFunctions::dispatchOptions() noexcept {
    return {{}, kForeign};
}

template <class Result, class... Arguments>
HRESULT RecordingFunctions::Note(std::wstring_view name, Result* result, const Arguments&... arguments) {
    return com::Guard([&] {
        record_.Begin(name);
        (record_.Add(arguments), ...);
        Answer(result);
    });
}

STDMETHODIMP RecordingFunctions::DbfOpen(VARIANT TableDefn, _ZuDbRef** Result) {
    return Note(L"DbfOpen", Result, TableDefn);
}

STDMETHODIMP RecordingFunctions::DbfSelect(VARIANT TableDefn, BSTR Condition, VARIANT* FieldNames,
                                           LONG MaxRecords, ZuDataView** Result) {
    return Note(L"DbfSelect", Result, TableDefn, Condition, FieldNames, MaxRecords);
}

STDMETHODIMP RecordingFunctions::DbfLookup(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT Exact,
                                           VARIANT* FieldNames, LONG MaxRecords, ZuDataView** Result) {
    return Note(L"DbfLookup", Result, TableDefn, IndexKeyValue, Exact, FieldNames, MaxRecords);
}

STDMETHODIMP RecordingFunctions::DbfCount(VARIANT TableDefn, BSTR Condition, LONG* Result) {
    return Note(L"DbfCount", Result, TableDefn, Condition);
}

STDMETHODIMP RecordingFunctions::DbfTop(VARIANT* View, VARIANT_BOOL* Result) {
    return Note(L"DbfTop", Result, View);
}

STDMETHODIMP RecordingFunctions::DbfBottom(VARIANT* View, VARIANT_BOOL* Result) {
    return Note(L"DbfBottom", Result, View);
}

STDMETHODIMP RecordingFunctions::DbfRecNo(VARIANT* View, LONG* Result) {
    return Note(L"DbfRecNo", Result, View);
}

STDMETHODIMP RecordingFunctions::DbfFieldValue(ZuDataField** Field, VARIANT* Result) {
    return Note(L"DbfFieldValue", Result, Field);
}

STDMETHODIMP RecordingFunctions::Descend(VARIANT* Value, BSTR* Technology, VARIANT* Result) {
    return Note(L"Descend", Result, Value, Technology);
}

STDMETHODIMP RecordingFunctions::DbfVarDeclare(VARIANT TableDefn, ZuDataView** Result) {
    return Note(L"DbfVarDeclare", Result, TableDefn);
}

STDMETHODIMP RecordingFunctions::DbfVarReset(ZuDataView** View, VARIANT* Result) {
    return Note(L"DbfVarReset", Result, View);
}

STDMETHODIMP RecordingFunctions::DbfProcess(VARIANT TableDefn, BSTR RoutineName, BSTR Condition,
                                            VARIANT* FieldNames, LONG MaxRecords, VARIANT* Argument0,
                                            VARIANT* Argument1, VARIANT* Argument2, VARIANT* Argument3,
                                            VARIANT* Argument4, VARIANT* Argument5, VARIANT* Argument6,
                                            VARIANT* Argument7, VARIANT* Argument8, VARIANT* Argument9,
                                            LONG* Result) {
    return Note(L"DbfProcess", Result, TableDefn, RoutineName, Condition, FieldNames, MaxRecords, Argument0,
                Argument1, Argument2, Argument3, Argument4, Argument5, Argument6, Argument7, Argument8,
                Argument9);
}

STDMETHODIMP RecordingFunctions::DbfReplace(SAFEARRAY** params, VARIANT* Result) {
    return Note(L"DbfReplace", Result, params);
}

STDMETHODIMP RecordingFunctions::DbfAddNew(VARIANT TableDefn, ZuDataView** FieldValues,
                                           VARIANT_BOOL* Result) {
    return Note(L"DbfAddNew", Result, TableDefn, FieldValues);
}

STDMETHODIMP RecordingFunctions::DbfConditionalAddNew(VARIANT TableDefn, ZuDataView** FieldValues,
                                                      VARIANT* IndexKeyValue, VARIANT_BOOL* Result) {
    return Note(L"DbfConditionalAddNew", Result, TableDefn, FieldValues, IndexKeyValue);
}

STDMETHODIMP RecordingFunctions::DbfUpdate(VARIANT TableDefn, VARIANT* IndexKeyValue, SAFEARRAY** UpdateInfo,
                                           VARIANT_BOOL* Result) {
    return Note(L"DbfUpdate", Result, TableDefn, IndexKeyValue, UpdateInfo);
}

STDMETHODIMP RecordingFunctions::DbfModify(VARIANT DestTableDefn, VARIANT SourceTableDefn,
                                           VARIANT_BOOL* Result) {
    return Note(L"DbfModify", Result, DestTableDefn, SourceTableDefn);
}

STDMETHODIMP RecordingFunctions::DbfDelete(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT_BOOL Exact,
                                           LONG MaxRecords, LONG* Result) {
    return Note(L"DbfDelete", Result, TableDefn, IndexKeyValue, Exact, MaxRecords);
}

STDMETHODIMP RecordingFunctions::DbfUndelete(VARIANT TableDefn, BSTR* Condition, VARIANT_BOOL* Result) {
    return Note(L"DbfUndelete", Result, TableDefn, Condition);
}

STDMETHODIMP RecordingFunctions::DbfCleanup(VARIANT TableDefn, VARIANT_BOOL* Result) {
    return Note(L"DbfCleanup", Result, TableDefn);
}

STDMETHODIMP RecordingFunctions::DbfFromDbf(VARIANT DestTableDefn, VARIANT SourceTableDefn, BSTR Condition,
                                            VARIANT SourceFieldNames, LONG MaxRecords, VARIANT DestFieldNames,
                                            VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                            VARIANT_BOOL* Result) {
    const HRESULT noted =
        Note(L"DbfFromDbf", Result, DestTableDefn, SourceTableDefn, Condition, SourceFieldNames, MaxRecords,
             DestFieldNames, RowCount, AddedCount, FailedRowIndexes);
    GiveBack(RowCount, 11);
    GiveBack(AddedCount, 12);
    GiveBack(FailedRowIndexes, 13);
    return noted;
}

STDMETHODIMP RecordingFunctions::DbfToDbf(VARIANT SourceTableDefn, VARIANT DestTableDefn, BSTR Condition,
                                          VARIANT SourceFieldNames, LONG MaxRecords, VARIANT* RowCount,
                                          VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                          VARIANT_BOOL* Result) {
    const HRESULT noted = Note(L"DbfToDbf", Result, SourceTableDefn, DestTableDefn, Condition,
                               SourceFieldNames, MaxRecords, RowCount, AddedCount, FailedRowIndexes);
    GiveBack(RowCount, 11);
    GiveBack(AddedCount, 12);
    GiveBack(FailedRowIndexes, 13);
    return noted;
}

STDMETHODIMP RecordingFunctions::DbfFromDbfCorresponding(VARIANT DestTableDefn, VARIANT SourceTableDefn,
                                                         BSTR Condition, VARIANT SourceFieldNames,
                                                         LONG MaxRecords, VARIANT DestFieldNames,
                                                         VARIANT* RowCount, VARIANT* AddedCount,
                                                         VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) {
    const HRESULT noted =
        Note(L"DbfFromDbfCorresponding", Result, DestTableDefn, SourceTableDefn, Condition, SourceFieldNames,
             MaxRecords, DestFieldNames, RowCount, AddedCount, FailedRowIndexes);
    GiveBack(RowCount, 11);
    GiveBack(AddedCount, 12);
    GiveBack(FailedRowIndexes, 13);
    return noted;
}

STDMETHODIMP RecordingFunctions::DbfIndex(VARIANT TableDefn, SAFEARRAY** IndexFields, VARIANT_BOOL* Result) {
    return Note(L"DbfIndex", Result, TableDefn, IndexFields);
}

STDMETHODIMP RecordingFunctions::DbfToDel(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition,
                                          VARIANT FieldNames, LONG MaxRecords,
                                          _ZuDbfControl** ExportDefinition, VARIANT_BOOL* Result) {
    return Note(L"DbfToDel", Result, SourceTableDefn, DestFilename, Condition, FieldNames, MaxRecords,
                ExportDefinition);
}

STDMETHODIMP RecordingFunctions::DbfToFix(VARIANT SourceTableDefn, BSTR DestFilename, BSTR Condition,
                                          VARIANT FieldNames, LONG MaxRecords,
                                          _ZuDbfControl** ExportDefinition, VARIANT_BOOL* Result) {
    return Note(L"DbfToFix", Result, SourceTableDefn, DestFilename, Condition, FieldNames, MaxRecords,
                ExportDefinition);
}

STDMETHODIMP RecordingFunctions::DbfToFile(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition,
                                           VARIANT FieldNames, LONG MaxRecords,
                                           _ZuDbfControl** ExportDefinition, BSTR* FormatName,
                                           VARIANT_BOOL* Result) {
    return Note(L"DbfToFile", Result, SourceTableDefn, DestFilename, Condition, FieldNames, MaxRecords,
                ExportDefinition, FormatName);
}

STDMETHODIMP RecordingFunctions::DbfFromDel(VARIANT DestTableDefn, BSTR SourceFilename, BSTR Condition,
                                            VARIANT FieldNames, _ZuDbfControl** ImportDefinition,
                                            VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                            VARIANT_BOOL* Result) {
    const HRESULT noted = Note(L"DbfFromDel", Result, DestTableDefn, SourceFilename, Condition, FieldNames,
                               ImportDefinition, RowCount, AddedCount, FailedRowIndexes);
    GiveBack(RowCount, 11);
    GiveBack(AddedCount, 12);
    GiveBack(FailedRowIndexes, 13);
    return noted;
}

STDMETHODIMP RecordingFunctions::DbfFromFix(VARIANT DestTableDefn, BSTR SourceFilename, BSTR Condition,
                                            VARIANT FieldNames, _ZuDbfControl** ImportDefinition,
                                            VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                            VARIANT_BOOL* Result) {
    const HRESULT noted = Note(L"DbfFromFix", Result, DestTableDefn, SourceFilename, Condition, FieldNames,
                               ImportDefinition, RowCount, AddedCount, FailedRowIndexes);
    GiveBack(RowCount, 11);
    GiveBack(AddedCount, 12);
    GiveBack(FailedRowIndexes, 13);
    return noted;
}

STDMETHODIMP RecordingFunctions::DbfFromFile(VARIANT* DestTableDefn, BSTR* SourceFilename, BSTR* Condition,
                                             VARIANT* FieldNames, _ZuDbfControl** ImportDefinition,
                                             BSTR* FormatName, VARIANT* RowCount, VARIANT* AddedCount,
                                             VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) {
    const HRESULT noted = Note(L"DbfFromFile", Result, DestTableDefn, SourceFilename, Condition, FieldNames,
                               ImportDefinition, FormatName, RowCount, AddedCount, FailedRowIndexes);
    GiveBack(RowCount, 11);
    GiveBack(AddedCount, 12);
    GiveBack(FailedRowIndexes, 13);
    GiveBack(FormatName, L"changed");
    return noted;
}

STDMETHODIMP RecordingFunctions::DbfEdit(VARIANT TableDefn, BSTR Title, VARIANT Condition, VARIANT Direction,
                                         LONG Height, VARIANT Width, LONG Top, LONG Left, VARIANT* FieldNames,
                                         VARIANT_BOOL AllowUndelete, VARIANT_BOOL* Result) {
    return Note(L"DbfEdit", Result, TableDefn, Title, Condition, Direction, Height, Width, Top, Left,
                FieldNames, AllowUndelete);
}

STDMETHODIMP RecordingFunctions::DbfPick(VARIANT TableDefn, BSTR Title, BSTR Condition, LONG Height,
                                         VARIANT Width, LONG Top, LONG Left, VARIANT* FieldNames,
                                         VARIANT* ReturnField, VARIANT* Result) {
    return Note(L"DbfPick", Result, TableDefn, Title, Condition, Height, Width, Top, Left, FieldNames,
                ReturnField);
}

}  // namespace zu::tests
