#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfDelete(VARIANT, VARIANT*, VARIANT_BOOL, LONG, LONG* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfUndelete(VARIANT, BSTR*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfCleanup(VARIANT, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
