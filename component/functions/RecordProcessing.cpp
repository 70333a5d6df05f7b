#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/DataView.h"
#include "component/table/FieldPairs.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ProcessTable.h"

namespace zu::component {

using com::ComPtr;
using com::SafeArray;
using com::Variant;

STDMETHODIMP Functions::DbfProcess(VARIANT TableDefn, BSTR RoutineName, BSTR Condition, VARIANT* FieldNames,
                                   LONG MaxRecords, VARIANT* Argument0, VARIANT* Argument1,
                                   VARIANT* Argument2, VARIANT* Argument3, VARIANT* Argument4,
                                   VARIANT* Argument5, VARIANT* Argument6, VARIANT* Argument7,
                                   VARIANT* Argument8, VARIANT* Argument9, LONG* Result) {
    if (!Result) return E_POINTER;
    *Result = 0;
    Trap([&] {
        const EngineMessages& messages = Engine().messages();
        messages.Trace(L"entered DbfProcess");
        if (com::View(RoutineName).empty()) {
            messages.RaiseError(EngineError::kNoRoutineName, SafeArray::Of({Variant(L"DbfProcess")}));
            return;
        }
        TableReference table;
        if (!table.Open(TableDefn)) return;
        const ArgumentList arguments = {Argument0, Argument1, Argument2, Argument3, Argument4,
                                        Argument5, Argument6, Argument7, Argument8, Argument9};
        ProcessTable(table, RoutineName, GivenText(Condition), {MaxRecords, 0, Given(FieldNames)}, arguments,
                     *Result);
    });
    return S_OK;
}

STDMETHODIMP Functions::DbfReplace(SAFEARRAY** params, VARIANT* Result) {
    return Trapped(Result, [&] {
        const EngineContext& context = Engine().context();
        ComPtr<ZuDataView> current = IsDataView(context.Value(context.HandleOf(ContextItem::kDataView)));
        if (!current) return Variant();
        const FieldPairs pairs(params ? *params : nullptr);
        if (!pairs.isComplete()) return Variant();
        DataView view(std::move(current));
        pairs.PutInto(view);
        return Variant(view.Update());
    });
}

}  // namespace zu::component
