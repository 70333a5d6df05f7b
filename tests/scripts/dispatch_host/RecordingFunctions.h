#pragma once

#include "com/Object.h"
#include "idl/ZuDBFFunctions.h"
#include "tests/scripts/dispatch_host/CallRecord.h"

namespace zu::tests {

/// The functions' interface with nothing behind it: each call is written down with its arguments as they
/// arrived in the vtable. Arguments that carry answers back receive marked values, so that a script can see
/// them.
class RecordingFunctions final : public com::DualObject<RecordingFunctions, _Functions> {
public:
    static com::DispatchOptions dispatchOptions() noexcept;

    const std::wstring& lastCall() const noexcept { return record_.text(); }

    STDMETHODIMP DbfOpen(VARIANT TableDefn, _ZuDbRef** Result) override;
    STDMETHODIMP DbfSelect(VARIANT TableDefn, BSTR Condition, VARIANT* FieldNames, LONG MaxRecords,
                           ZuDataView** Result) override;
    STDMETHODIMP DbfLookup(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT Exact, VARIANT* FieldNames,
                           LONG MaxRecords, ZuDataView** Result) override;
    STDMETHODIMP DbfCount(VARIANT TableDefn, BSTR Condition, LONG* Result) override;
    STDMETHODIMP DbfTop(VARIANT* View, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfBottom(VARIANT* View, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfRecNo(VARIANT* View, LONG* Result) override;
    STDMETHODIMP DbfFieldValue(ZuDataField** Field, VARIANT* Result) override;
    STDMETHODIMP Descend(VARIANT* Value, BSTR* Technology, VARIANT* Result) override;
    STDMETHODIMP DbfVarDeclare(VARIANT TableDefn, ZuDataView** Result) override;
    STDMETHODIMP DbfVarReset(ZuDataView** View, VARIANT* Result) override;
    STDMETHODIMP DbfProcess(VARIANT TableDefn, BSTR RoutineName, BSTR Condition, VARIANT* FieldNames,
                            LONG MaxRecords, VARIANT* Argument0, VARIANT* Argument1, VARIANT* Argument2,
                            VARIANT* Argument3, VARIANT* Argument4, VARIANT* Argument5, VARIANT* Argument6,
                            VARIANT* Argument7, VARIANT* Argument8, VARIANT* Argument9,
                            LONG* Result) override;
    STDMETHODIMP DbfReplace(SAFEARRAY** params, VARIANT* Result) override;
    STDMETHODIMP DbfAddNew(VARIANT TableDefn, ZuDataView** FieldValues, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfConditionalAddNew(VARIANT TableDefn, ZuDataView** FieldValues, VARIANT* IndexKeyValue,
                                      VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfUpdate(VARIANT TableDefn, VARIANT* IndexKeyValue, SAFEARRAY** UpdateInfo,
                           VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfModify(VARIANT DestTableDefn, VARIANT SourceTableDefn, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfDelete(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT_BOOL Exact, LONG MaxRecords,
                           LONG* Result) override;
    STDMETHODIMP DbfUndelete(VARIANT TableDefn, BSTR* Condition, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfCleanup(VARIANT TableDefn, VARIANT_BOOL* Result) override;
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
    STDMETHODIMP DbfIndex(VARIANT TableDefn, SAFEARRAY** IndexFields, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfToDel(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition, VARIANT FieldNames,
                          LONG MaxRecords, _ZuDbfControl** ExportDefinition, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfToFix(VARIANT SourceTableDefn, BSTR DestFilename, BSTR Condition, VARIANT FieldNames,
                          LONG MaxRecords, _ZuDbfControl** ExportDefinition, VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfToFile(VARIANT SourceTableDefn, BSTR DestFilename, VARIANT Condition, VARIANT FieldNames,
                           LONG MaxRecords, _ZuDbfControl** ExportDefinition, BSTR* FormatName,
                           VARIANT_BOOL* Result) override;
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
    STDMETHODIMP DbfEdit(VARIANT TableDefn, BSTR Title, VARIANT Condition, VARIANT Direction, LONG Height,
                         VARIANT Width, LONG Top, LONG Left, VARIANT* FieldNames, VARIANT_BOOL AllowUndelete,
                         VARIANT_BOOL* Result) override;
    STDMETHODIMP DbfPick(VARIANT TableDefn, BSTR Title, BSTR Condition, LONG Height, VARIANT Width, LONG Top,
                         LONG Left, VARIANT* FieldNames, VARIANT* ReturnField, VARIANT* Result) override;

private:
    template <class Result, class... Arguments>
    HRESULT Note(std::wstring_view name, Result* result, const Arguments&... arguments);

    CallRecord record_;
};

}  // namespace zu::tests
