#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfToDel(VARIANT, BSTR, VARIANT, VARIANT, LONG, _ZuDbfControl**,
                                 VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfToFix(VARIANT, BSTR, BSTR, VARIANT, LONG, _ZuDbfControl**, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfToFile(VARIANT, BSTR, VARIANT, VARIANT, LONG, _ZuDbfControl**, BSTR*,
                                  VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
