#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/TableReference.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Variant;

namespace {

/// A record variable holds one record.
constexpr LONG kOneRecord = 1;

}  // namespace

STDMETHODIMP Functions::DbfVarDeclare(VARIANT TableDefn, ZuDataView** Result) {
    const FunctionCall call;
    return Trapped(Result, [&]() -> ComPtr<ZuDataView> {
        TableReference table;
        if (!table.Open(TableDefn)) return nullptr;
        const ComPtr<IDispatch> layout = table.Layout();
        if (!layout) return nullptr;
        const ComPtr<ZuRecordVariable> variable = Engine().data().NewRecordVariable();
        VARIANT_BOOL initialised = VARIANT_FALSE;
        Check(variable->Initialise(layout.get(), kOneRecord, &initialised));
        return initialised ? variable.as<ZuDataView>() : ComPtr<ZuDataView>();
    });
}

STDMETHODIMP Functions::DbfVarReset(ZuDataView** View, VARIANT* Result) {
    return Trapped(Result, [&] {
        ComPtr<ZuRecordVariable> variable;
        if (View && *View) variable = com::Share(*View).tryAs<ZuRecordVariable>();
        if (!variable)
            throw com::ComError(com::kTypeMismatch,
                                L"DbfVarReset takes a record variable that DbfVarDeclare made");
        Check(variable->Reset());
        return Variant();
    });
}

}  // namespace zu::component
