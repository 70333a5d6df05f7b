#pragma once

#include "com/Object.h"
#include "com/ScriptNumber.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The table functions that scripts call. The object holds no state; the functions stand in one source file
/// for each group below. They never raise: whatever fails inside, a function answers its failure value and
/// S_OK.
class Functions final : public com::DualObject<Functions, _Functions> {
public:
    static CLSID classId() noexcept { return __uuidof(::Functions); }
    static com::DispatchOptions dispatchOptions() noexcept;
    /// Callers by name get decimals as doubles where nothing is lost.
    static void adjustDispatchResult(VARIANT& result) noexcept { com::MakeUsableForScripts(result); }

    // OpenAndSelect.cpp
    STDMETHODIMP DbfOpen(VARIANT TableDefn, _ZuDbRef** Result) override;
    STDMETHODIMP DbfSelect(VARIANT TableDefn, BSTR Condition, VARIANT* FieldNames, LONG MaxRecords,
                           ZuDataView** Result) override;
    STDMETHODIMP DbfLookup(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT Exact, VARIANT* FieldNames,
                           LONG MaxRecords, ZuDataView** Result) override;
    STDMETHODIMP DbfCount(VARIANT TableDefn, BSTR Condition, LONG* Result) override;

    // ViewPosition.cpp
    STDMETHODIMP DbfTop(VARIANT* View, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfBottom(VARIANT* View, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfRecNo(VARIANT* View, LONG* Result) override;

    // FieldValues.cpp
    STDMETHODIMP DbfFieldValue(ZuDataField** Field, VARIANT* Result) override;
    STDMETHODIMP Descend(VARIANT* Value, BSTR* Technology, VARIANT* Result) override;

    // RecordVariables.cpp
    STDMETHODIMP DbfVarDeclare(VARIANT TableDefn, ZuDataView** Result) override;
    STDMETHODIMP DbfVarReset(ZuDataView** View, VARIANT* Result) override;

    // RecordProcessing.cpp
    STDMETHODIMP DbfProcess(VARIANT TableDefn, BSTR RoutineName, BSTR Condition, VARIANT* FieldNames,
                            LONG MaxRecords, VARIANT* Argument0, VARIANT* Argument1, VARIANT* Argument2,
                            VARIANT* Argument3, VARIANT* Argument4, VARIANT* Argument5, VARIANT* Argument6,
                            VARIANT* Argument7, VARIANT* Argument8, VARIANT* Argument9,
                            LONG* Result) override;
    STDMETHODIMP DbfReplace(SAFEARRAY** params, VARIANT* Result) override;

    // AddingRecords.cpp
    STDMETHODIMP DbfAddNew(VARIANT TableDefn, ZuDataView** FieldValues, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfConditionalAddNew(VARIANT TableDefn, ZuDataView** FieldValues, VARIANT* IndexKeyValue,
                                      VARIANT_BOOL* Result) override;

    // UpdatingRecords.cpp
    STDMETHODIMP DbfUpdate(VARIANT TableDefn, VARIANT* IndexKeyValue, SAFEARRAY** UpdateInfo,
                           VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfModify(VARIANT DestTableDefn, VARIANT SourceTableDefn, VARIANT_BOOL* Result) override;

    // DeletingRecords.cpp
    STDMETHODIMP DbfDelete(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT_BOOL Exact, LONG MaxRecords,
                           LONG* Result) override;
    STDMETHODIMP DbfUndelete(VARIANT TableDefn, BSTR* Condition, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfCleanup(VARIANT TableDefn, VARIANT_BOOL* Result) override;

    // TableCopy.cpp
    STDMETHODIMP DbfFromDbf(VARIANT DestTableDefn, VARIANT SourceTableDefn, BSTR Condition,
                            VARIANT SourceFieldNames, LONG MaxRecords, VARIANT DestFieldNames,
                            VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                            VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfToDbf(VARIANT SourceTableDefn, VARIANT DestTableDefn, BSTR Condition,
                          VARIANT SourceFieldNames, LONG MaxRecords, VARIANT* RowCount, VARIANT* AddedCount,
                          VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfFromDbfCorresponding(VARIANT DestTableDefn, VARIANT SourceTableDefn, BSTR Condition,
                                         VARIANT SourceFieldNames, LONG MaxRecords, VARIANT DestFieldNames,
                                         VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                         VARIANT_BOOL* Result) override;

    // IndexBuilding.cpp
    STDMETHODIMP DbfIndex(VARIANT TableDefn, SAFEARRAY** IndexFields, VARIANT_BOOL* Result) override;

    // TextExport.cpp
    STDMETHODIMP DbfToDel(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition, VARIANT FieldNames,
                          LONG MaxRecords, _ZuDbfControl** ExportDefinition, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfToFix(VARIANT SourceTableDefn, BSTR DestFilename, BSTR Condition, VARIANT FieldNames,
                          LONG MaxRecords, _ZuDbfControl** ExportDefinition, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfToFile(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition, VARIANT FieldNames,
                           LONG MaxRecords, _ZuDbfControl** ExportDefinition, BSTR* FormatName,
                           VARIANT_BOOL* Result) override;

    // TextImport.cpp
    STDMETHODIMP DbfFromDel(VARIANT DestTableDefn, BSTR SourceFilename, BSTR Condition, VARIANT FieldNames,
                            _ZuDbfControl** ImportDefinition, VARIANT* RowCount, VARIANT* AddedCount,
                            VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfFromFix(VARIANT DestTableDefn, BSTR SourceFilename, BSTR Condition, VARIANT FieldNames,
                            _ZuDbfControl** ImportDefinition, VARIANT* RowCount, VARIANT* AddedCount,
                            VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfFromFile(VARIANT* DestTableDefn, BSTR* SourceFilename, BSTR* Condition,
                             VARIANT* FieldNames, _ZuDbfControl** ImportDefinition, BSTR* FormatName,
                             VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                             VARIANT_BOOL* Result) override;

    // EditAndPick.cpp
    STDMETHODIMP DbfEdit(VARIANT TableDefn, BSTR Title, VARIANT Condition, VARIANT Direction, LONG Height,
                         VARIANT Width, LONG Top, LONG Left, VARIANT* FieldNames, VARIANT_BOOL AllowUndelete,
                         VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfPick(VARIANT TableDefn, BSTR Title, BSTR Condition, LONG Height, VARIANT Width, LONG Top,
                         LONG Left, VARIANT* FieldNames, VARIANT* ReturnField, VARIANT* Result) override;
};

}  // namespace zu::component
