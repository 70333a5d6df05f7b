#include <string>
#include <utility>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/engine/WatchedJob.h"
#include "component/functions/Functions.h"
#include "component/functions/KeyLookup.h"
#include "component/table/DataView.h"
#include "component/table/KeyCondition.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ReadOnly.h"
#include "component/table/ShownArgument.h"
#include "component/table/clsDatabaseDefn.h"
#include "idl/RecordRuns.h"

namespace zu::component {

using com::Bstr;
using com::Check;
using com::ComPtr;
using com::Variant;

namespace {

ComPtr<ZuDataView> RecordsToDelete(const VARIANT& tableDefn, const Variant& keyOrCondition, bool exact,
                                   LONG maxRecords) {
    const SelectionLimits limits{maxRecords, 0, Variant::Missing()};
    return IsCondition(keyOrCondition) ? SelectRecords(tableDefn, keyOrCondition, limits)
                                       : LookUpRecords(tableDefn, keyOrCondition, Variant(exact), limits);
}

void TellNothingDeleted(const VARIANT& tableDefn, const Variant& key, LONG found) {
    const std::wstring search = ShownSearch(tableDefn, key);
    TellReason(kNoCurrentRecord,
               found == 0 ? L"Nothing was deleted: no record of " + search
                          : L"Nothing was deleted: each record of " + search + L" is deleted already",
               ReasonFor::Asking);
}

}  // namespace

STDMETHODIMP Functions::DbfDelete(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT_BOOL Exact,
                                  LONG MaxRecords, LONG* Result) {
    const FunctionCall call;
    return Trapped(Result, LONG{0}, [&] {
        LONG deleted = 0;
        const Variant key = GivenOr(IndexKeyValue, Variant(L""));
        ComPtr<ZuDataView> found = RecordsToDelete(TableDefn, key, Exact != VARIANT_FALSE, MaxRecords);
        if (!found) return deleted;
        const DataView view(std::move(found));
        if (!view.Updateable()) {
            TellReadOnly(view, TableDefn);
            return deleted;
        }
        const LONG rows = view.RecordCount();
        const auto all = rows > 1 ? com::Share(view.get()).tryAs<RecordDeletion>() : nullptr;
        if (all) {
            const HRESULT outcome = all->DeleteAll(&deleted);
            if (outcome == E_ABORT) {
                TellReason(E_ABORT, WatchedJob::EndedByUser(deleted), ReasonFor::Asking);
                return deleted;
            }
            Check(outcome);
        } else {
            // From the end: a view may drop the rows that go.
            for (LONG row = rows - 1; row >= 0; --row)
                if (view.Delete(row)) ++deleted;
        }
        if (deleted == 0) TellNothingDeleted(TableDefn, key, rows);
        return deleted;
    });
}

STDMETHODIMP Functions::DbfUndelete(VARIANT TableDefn, BSTR* Condition, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        clsDatabaseDefn table;
        if (!table.Define(TableDefn)) return false;
        const Bstr condition(Condition ? com::View(*Condition) : std::wstring_view());
        VARIANT_BOOL undeleted = VARIANT_FALSE;
        Check(Engine().data().DatabaseService()->Undelete(table.DataBaseName().get(), table.TableName().get(),
                                                          condition.get(), &undeleted));
        return undeleted != VARIANT_FALSE;
    });
}

STDMETHODIMP Functions::DbfCleanup(VARIANT TableDefn, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        clsDatabaseDefn table;
        if (!table.Define(TableDefn)) return false;
        VARIANT_BOOL packed = VARIANT_FALSE;
        Check(Engine().data().DatabaseService()->Pack(table.DataBaseName().get(), table.TableName().get(),
                                                      &packed));
        return packed != VARIANT_FALSE;
    });
}

}  // namespace zu::component
