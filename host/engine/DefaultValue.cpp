#include "host/engine/DefaultValue.h"

#include "com/ComError.h"
#include "com/ComPtr.h"

namespace zu::host {

com::Variant DefaultValue(const VARIANT& value) {
    const com::ComPtr<IDispatch> object = com::ObjectOf<IDispatch>(value);
    com::Required(object.get());
    DISPPARAMS none{};
    com::Variant result;
    const HRESULT called =
        object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_INVARIANT, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                       &none, result.put(), nullptr, nullptr);
    // An object whose value is an object again would go round in circles.
    if (FAILED(called) || result.type() == VT_DISPATCH || result.type() == VT_UNKNOWN)
        throw com::ComError(com::kTypeMismatch, L"An object cannot be used as a value");
    return result;
}

}  // namespace zu::host
