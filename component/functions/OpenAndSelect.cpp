#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/functions/KeyLookup.h"
#include "component/table/DataView.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ZuDbRef.h"

namespace zu::component {

using com::ComPtr;
using com::Variant;

namespace {

/// The answer of DbfCount when no count was to be had.
constexpr LONG kNoCount = -1;

}  // namespace

STDMETHODIMP Functions::DbfOpen(VARIANT TableDefn, _ZuDbRef** Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        const ComPtr<ZuDbRef> table = com::MakeObject<ZuDbRef>();
        return table->reference().Open(TableDefn) ? ComPtr<_ZuDbRef>(table.get()) : ComPtr<_ZuDbRef>();
    });
}

STDMETHODIMP Functions::DbfSelect(VARIANT TableDefn, BSTR Condition, VARIANT* FieldNames, LONG MaxRecords,
                                  ZuDataView** Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        return SelectRecords(TableDefn, GivenText(Condition), {MaxRecords, 0, Given(FieldNames)});
    });
}

STDMETHODIMP Functions::DbfLookup(VARIANT TableDefn, VARIANT* IndexKeyValue, VARIANT Exact,
                                  VARIANT* FieldNames, LONG MaxRecords, ZuDataView** Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        return LookUpRecords(TableDefn, GivenOr(IndexKeyValue, Variant(L"")), GivenOr(&Exact, Variant(true)),
                             {MaxRecords, 0, Given(FieldNames)});
    });
}

STDMETHODIMP Functions::DbfCount(VARIANT TableDefn, BSTR Condition, LONG* Result) {
    const FunctionCall call;
    return Trapped(Result, kNoCount, [&] {
        const Variant noFields(SHORT{0});
        ComPtr<ZuDataView> view = SelectRecords(TableDefn, GivenText(Condition), {0, 0, noFields});
        return view ? DataView(std::move(view)).RecordCount() : kNoCount;
    });
}

}  // namespace zu::component
