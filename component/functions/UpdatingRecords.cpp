#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/functions/KeyLookup.h"
#include "component/table/DataView.h"
#include "component/table/FieldPairs.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ReadOnly.h"
#include "component/table/ShownArgument.h"

namespace zu::component {

using com::ComPtr;
using com::SafeArray;
using com::Variant;

STDMETHODIMP Functions::DbfUpdate(VARIANT TableDefn, VARIANT* IndexKeyValue, SAFEARRAY** UpdateInfo,
                                  VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        const FieldPairs pairs(UpdateInfo ? *UpdateInfo : nullptr);
        if (!pairs.isComplete()) {
            Engine().messages().RaiseError(EngineError::kUpdateListFault, SafeArray::NoArguments());
            return false;
        }
        // Not exact, unlike the other functions: the beginning of a key is enough to name a record.
        const Variant key = GivenOr(IndexKeyValue, Variant(L""));
        ComPtr<ZuDataView> found = LookUpRecords(TableDefn, key, Variant(false), {1, 0, Variant::Missing()});
        if (!found) return false;
        DataView view(std::move(found));
        if (!view.Updateable()) {
            TellReadOnly(view, TableDefn);
            return false;
        }
        try {
            pairs.PutInto(view);
        } catch (const com::ComError& error) {
            if (error.code() != kNoCurrentRecord) throw;
            throw com::ComError(error.code(),
                                L"Nothing was changed: no record of " + ShownSearch(TableDefn, key));
        }
        return view.Update();
    });
}

STDMETHODIMP Functions::DbfModify(VARIANT, VARIANT, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        Engine().messages().RaiseError(EngineError::kFunctionMissing, SafeArray::Of({Variant(L"DbfModify")}));
        return false;
    });
}

}  // namespace zu::component
