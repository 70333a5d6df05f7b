#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfEdit(VARIANT, BSTR, VARIANT, VARIANT, LONG, VARIANT, LONG, LONG, VARIANT*,
                                VARIANT_BOOL, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfPick(VARIANT, BSTR, BSTR, LONG, VARIANT, LONG, LONG, VARIANT*, VARIANT*,
                                VARIANT* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
