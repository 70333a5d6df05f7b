#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfProcess(VARIANT, BSTR, BSTR, VARIANT*, LONG, VARIANT*, VARIANT*, VARIANT*,
                                   VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*,
                                   LONG* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfReplace(SAFEARRAY**, VARIANT* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
