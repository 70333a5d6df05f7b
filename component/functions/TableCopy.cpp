#include "component/table/TableCopy.h"

#include <string>

#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/OptionalArgument.h"

namespace zu::component {

using com::Variant;

namespace {

/// The row at which a copy has ended, in front of what has ended it; nothing before the first one.
std::wstring PlaceOf(const CopyOutcome& outcome) {
    return outcome.rows() == 0 ? std::wstring()
                               : L"Row " + std::to_wstring(outcome.rows()) + L" of the copy: ";
}

/// The boundary of a copy: an error ends it, and the engine's log says which.
template <class Body>
HRESULT TrappedCopy(const wchar_t* function, VARIANT_BOOL* result, const CopyOutcome& outcome,
                    Body&& body) noexcept {
    if (!result) return E_POINTER;
    *result = VARIANT_FALSE;
    Trap([&] {
        try {
            *result = com::ToVariantBool(std::forward<Body>(body)());
        } catch (...) {
            TellCurrentException(PlaceOf(outcome));
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
    const FunctionCall call;
    CopyOutcome outcome(!com::IsMissing(FailedRowIndexes));
    const HRESULT answer = TrappedCopy(L"DbfFromDbf", Result, outcome, [&] {
        const SelectionLimits limits{MaxRecords, 0, Given(&SourceFieldNames)};
        const Append append{DestTableDefn, SourceTableDefn, GivenText(Condition), limits,
                            Given(&DestFieldNames)};
        return append.Run(outcome, FieldMatch::kPosition);
    });
    outcome.Write(RowCount, AddedCount, FailedRowIndexes);
    return answer;
}

STDMETHODIMP Functions::DbfToDbf(VARIANT SourceTableDefn, VARIANT DestTableDefn, BSTR Condition,
                                 VARIANT SourceFieldNames, LONG MaxRecords, VARIANT* RowCount,
                                 VARIANT* AddedCount, VARIANT* FailedRowIndexes, VARIANT_BOOL* Result) {
    const FunctionCall call;
    CopyOutcome outcome(!com::IsMissing(FailedRowIndexes));
    const HRESULT answer = TrappedCopy(L"DbfToDbf", Result, outcome, [&] {
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
    const FunctionCall call;
    CopyOutcome outcome(!com::IsMissing(FailedRowIndexes));
    const HRESULT answer = TrappedCopy(L"DbfFromDbfCorresponding", Result, outcome, [&] {
        const SelectionLimits limits{MaxRecords, 0, Given(&SourceFieldNames)};
        const Append append{DestTableDefn, SourceTableDefn, GivenText(Condition), limits,
                            Given(&DestFieldNames)};
        return append.Run(outcome, FieldMatch::kName);
    });
    outcome.Write(RowCount, AddedCount, FailedRowIndexes);
    return answer;
}

}  // namespace zu::component
