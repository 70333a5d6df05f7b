#include "component/table/TableCopy.h"

#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/OptionalArgument.h"

namespace zu::component {

using com::Variant;

namespace {

/// The boundary of a copy: an error ends it, and the engine's log says which.
template <class Body>
HRESULT TrappedCopy(const wchar_t* function, VARIANT_BOOL* result, Body&& body) noexcept {
    if (!result) return E_POINTER;
    *result = VARIANT_FALSE;
    Trap([&] {
        try {
            *result = com::ToVariantBool(std::forward<Body>(body)());
        } catch (...) {
            Engine().messages().Trace(RunTimeErrorText(function));
        }
    });
    return S_OK;
}

/// The copy into a table that is there.
struct Append {
    const VARIANT& destination;
    const VARIANT& source;
    Variant condition;
    SelectionLimits limits;
    Variant destinationFields;

    bool Run(CopyOutcome& outcome, FieldMatch match) const {
        TableCopy copy(outcome);
        if (!copy.SelectSource(source, condition, limits)) return false;
        if (!copy.OpenDestination(destination, destinationFields)) return false;
        copy.CopyRows(match);
        return true;
    }
};

}  // namespace

STDMETHODIMP Functions::DbfFromDbf(VARIANT DestTableDefn, VARIANT SourceTableDefn, BSTR Condition,
                                   VARIANT SourceFieldNames, LONG MaxRecords, VARIANT DestFieldNames,
                                   VARIANT* RowCount, VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                   VARIANT_BOOL* Result) {
    CopyOutcome outcome(!com::IsMissing(FailedRowIndexes));
    const HRESULT answer = TrappedCopy(L"DbfFromDbf", Result, [&] {
        return Append{DestTableDefn,
                      SourceTableDefn,
                      GivenText(Condition),
                      {MaxRecords, 0, Given(&SourceFieldNames)},
                      Given(&DestFieldNames)}
            .Run(outcome, FieldMatch::kPosition);
    });
    outcome.Write(RowCount, AddedCount, FailedRowIndexes);
    return answer;
}

STDMETHODIMP Functions::DbfToDbf(VARIANT SourceTableDefn, VARIANT DestTableDefn, BSTR Condition,
                                 VARIANT SourceFieldNames, LONG MaxRecords, VARIANT* RowCount,
                                 VARIANT* AddedCount, VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) {
    CopyOutcome outcome(!com::IsMissing(FailedRowIndexes));
    const HRESULT answer = TrappedCopy(L"DbfToDbf", Result, [&] {
        TableCopy copy(outcome);
        if (!copy.SelectSource(SourceTableDefn, GivenText(Condition),
                               {MaxRecords, 0, Given(&SourceFieldNames)})) {
            return false;
        }
        if (!copy.CreateDestination(DestTableDefn)) return false;
        if (!copy.OpenDestination(DestTableDefn, Variant::Missing())) return false;
        copy.CopyRows(FieldMatch::kPosition);
        return true;
    });
    outcome.Write(RowCount, AddedCount, FailedRowIndexes);
    return answer;
}

STDMETHODIMP Functions::DbfFromDbfCorresponding(VARIANT DestTableDefn, VARIANT SourceTableDefn,
                                                BSTR Condition, VARIANT SourceFieldNames, LONG MaxRecords,
                                                VARIANT DestFieldNames, VARIANT* RowCount,
                                                VARIANT* AddedCount, VARIANT* FailedRowIndexes,
                                                VARIANT_BOOL* Result) {
    CopyOutcome outcome(!com::IsMissing(FailedRowIndexes));
    const HRESULT answer = TrappedCopy(L"DbfFromDbfCorresponding", Result, [&] {
        return Append{DestTableDefn,
                      SourceTableDefn,
                      GivenText(Condition),
                      {MaxRecords, 0, Given(&SourceFieldNames)},
                      Given(&DestFieldNames)}
            .Run(outcome, FieldMatch::kName);
    });
    outcome.Write(RowCount, AddedCount, FailedRowIndexes);
    return answer;
}

}  // namespace zu::component
