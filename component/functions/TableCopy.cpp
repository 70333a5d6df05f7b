#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfFromDbf(VARIANT, VARIANT, BSTR, VARIANT, LONG, VARIANT, VARIANT*, VARIANT*,
                                   VARIANT*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfToDbf(VARIANT, VARIANT, BSTR, VARIANT, LONG, VARIANT*, VARIANT*, VARIANT*,
                                 VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfFromDbfCorresponding(VARIANT, VARIANT, BSTR, VARIANT, LONG, VARIANT, VARIANT*,
                                                VARIANT*, VARIANT*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
