#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfFromDel(VARIANT, BSTR, BSTR, VARIANT, _ZuDbfControl**, VARIANT*, VARIANT*,
                                   VARIANT*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfFromFix(VARIANT, BSTR, BSTR, VARIANT, _ZuDbfControl**, VARIANT*, VARIANT*,
                                   VARIANT*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfFromFile(VARIANT*, BSTR*, BSTR*, VARIANT*, _ZuDbfControl**, BSTR*, VARIANT*,
                                    VARIANT*, VARIANT*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
