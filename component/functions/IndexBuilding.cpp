#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfIndex(VARIANT, SAFEARRAY**, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
