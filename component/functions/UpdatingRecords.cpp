#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfUpdate(VARIANT, VARIANT*, SAFEARRAY**, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfModify(VARIANT, VARIANT, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
