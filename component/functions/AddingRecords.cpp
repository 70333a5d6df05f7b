#include <utility>

#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/DataView.h"
#include "component/table/KeyCondition.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ShownArgument.h"
#include "component/table/TableReference.h"

namespace zu::component {

using com::ComPtr;
using com::Required;
using com::Variant;

namespace {

/// One record of the table, with all its fields, is enough to add through and to know that there is one.
SelectionLimits OneRecord() {
    return {1, 0, Variant::Missing()};
}

/// Starts the new record. The view takes the values by reference: the object that it leaves there is the
/// caller's from then on.
bool StartRecord(const DataView& target, ZuDataView*& fieldValues) {
    Variant values(static_cast<IDispatch*>(fieldValues));
    const bool added = target.AddNew(*values.address());
    ComPtr<ZuDataView> left;
    if (const auto object = com::ObjectOf<IUnknown>(values)) left = object.as<ZuDataView>();
    const auto given = ComPtr<ZuDataView>::Adopt(std::exchange(fieldValues, left.detach()));
    return added;
}

bool AddRecord(const ComPtr<ZuDataView>& view, ZuDataView** fieldValues) {
    const DataView target(view);
    ZuDataView* none = nullptr;
    ZuDataView*& values = fieldValues ? *fieldValues : none;
    if (!StartRecord(target, values)) return false;
    DataView(com::Share(values)).MoveFirst();
    Engine().data().RecordAdded(values);
    return target.Update();
}

}  // namespace

STDMETHODIMP Functions::DbfAddNew(VARIANT TableDefn, ZuDataView** FieldValues, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        TableReference table;
        if (!table.Open(TableDefn)) return false;
        table.OpenDefaultIndex();
        return AddRecord(table.FilterFlagged(Variant::Null(), OneRecord()), FieldValues);
    });
}

STDMETHODIMP Functions::DbfConditionalAddNew(VARIANT TableDefn, ZuDataView** FieldValues,
                                             VARIANT* IndexKeyValue, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        TableReference table;
        if (!table.Open(TableDefn)) return false;
        table.OpenDefaultIndex();
        const Variant key = Given(IndexKeyValue);
        const ComPtr<ZuDataView> found = IsCondition(key)
                                             ? table.FilterFlagged(key, OneRecord())
                                             : table.LookupFlagged(key, Variant(true), OneRecord());
        if (!found) return false;
        if (DataView(found).RecordCount() != 0) {
            TellReason(STG_E_FILEALREADYEXISTS,
                       L"Nothing was added: a record of " + ShownSearch(TableDefn, key) + L" already",
                       ReasonFor::Asking);
            return false;
        }
        return AddRecord(found, FieldValues);
    });
}

}  // namespace zu::component
