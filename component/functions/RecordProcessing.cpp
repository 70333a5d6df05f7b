#include "com/ComError.h"
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
    const FunctionCall call;
    if (!Result) return E_POINTER;
    *Result = 0;
    TrapAndTell([&] {
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
    const FunctionCall call;
    return Trapped(Result, [&] {
        const EngineContext& context = Engine().context();
        ComPtr<ZuDataView> current = IsDataView(context.Value(context.HandleOf(ContextItem::kDataView)));
        if (!current) {
            TellReason(
                com::kObjectNotSet,
                L"DbfReplace changes the record that DbfProcess has in hand: call it in the routine that "
                L"DbfProcess calls");
            return Variant();
        }
        const FieldPairs pairs(params ? *params : nullptr);
        if (!pairs.isComplete()) {
            TellReason(
                static_cast<HRESULT>(EngineError::kUpdateListFault),
                L"DbfReplace takes pairs: a field name, its new value, the next field name, and so on");
            return Variant();
        }
        DataView view(std::move(current));
        pairs.PutInto(view);
        return Variant(view.Update());
    });
}

}  // namespace zu::component
