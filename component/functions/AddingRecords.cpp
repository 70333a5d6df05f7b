#include "component/engine/NotBuilt.h"
#include "component/functions/Functions.h"

namespace zu::component {

STDMETHODIMP Functions::DbfAddNew(VARIANT, ZuDataView**, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

STDMETHODIMP Functions::DbfConditionalAddNew(VARIANT, ZuDataView**, VARIANT*, VARIANT_BOOL* Result) {
    return NotBuilt(Result);
}

}  // namespace zu::component
