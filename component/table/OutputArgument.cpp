#include "component/table/OutputArgument.h"

#include <utility>

#include "component/engine/Trapped.h"

namespace zu::component {

namespace {

/// The places that a reference of a type of its own can lead to, as far as outputs need them.
void WriteTyped(const VARIANT& reference, const com::Variant& value) {
    const com::Variant converted = com::Convert(value, static_cast<VARTYPE>(reference.vt & ~VT_BYREF));
    switch (converted.type()) {
        case VT_I2:
            *reference.piVal = converted->iVal;
            break;
        case VT_I4:
            *reference.plVal = converted->lVal;
            break;
        case VT_R8:
            *reference.pdblVal = converted->dblVal;
            break;
        case VT_BSTR: {
            com::Bstr text(com::View(converted->bstrVal));
            const com::Bstr old = com::Bstr::Adopt(std::exchange(*reference.pbstrVal, text.detach()));
            break;
        }
        default:
            break;
    }
}

}  // namespace

void WriteOutput(VARIANT* argument, com::Variant value) noexcept {
    if (com::IsMissing(argument)) return;
    // The declaration of the look-up is for readers; the content is the caller's variable.
    auto& target = const_cast<VARIANT&>(com::Dereference(*argument));
    Trap([&] {
        if (target.vt & VT_BYREF) {
            WriteTyped(target, value);
        } else {
            com::Check(VariantClear(&target));
            target = value.detach();
        }
    });
}

}  // namespace zu::component
