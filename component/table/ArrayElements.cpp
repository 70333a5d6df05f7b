#include "component/table/ArrayElements.h"

#include "com/ComError.h"

namespace zu::component {

using com::Check;
using com::ComError;
using com::Variant;

namespace {

[[noreturn]] void OutOfRange() {
    throw ComError(com::kSubscriptOutOfRange, L"Subscript out of range");
}

/// Records and other elements that no VARIANT holds by value.
[[noreturn]] void TypeMismatch() {
    throw ComError(com::kTypeMismatch, L"Type mismatch");
}

}  // namespace

bool IsArray(const VARIANT& value) noexcept {
    return (com::Dereference(value).vt & VT_ARRAY) != 0;
}

SAFEARRAY* ArrayOf(const VARIANT& value) noexcept {
    const VARIANT& content = com::Dereference(value);
    if (!(content.vt & VT_ARRAY)) return nullptr;
    if (!(content.vt & VT_BYREF)) return content.parray;
    return content.pparray ? *content.pparray : nullptr;
}

LONG ArrayElements::lowerBound() const {
    LONG bound = 0;
    if (!array_ || FAILED(SafeArrayGetLBound(array_, 1, &bound))) OutOfRange();
    return bound;
}

LONG ArrayElements::upperBound() const {
    LONG bound = 0;
    if (!array_ || FAILED(SafeArrayGetUBound(array_, 1, &bound))) OutOfRange();
    return bound;
}

Variant ArrayElements::At(LONG index) const {
    LONG first = 0;
    if (!array_ || SafeArrayGetDim(array_) != 1 || FAILED(SafeArrayGetLBound(array_, 1, &first)) ||
        index < first || index > upperBound()) {
        OutOfRange();
    }
    VARTYPE type = VT_EMPTY;
    Check(SafeArrayGetVartype(array_, &type));
    if (type == VT_VARIANT) {
        VARIANT element;
        VariantInit(&element);
        Check(SafeArrayGetElement(array_, &index, &element));
        const Variant owned = Variant::Adopt(element);
        return Variant(owned.get());  // looks through a reference that the array may hold
    }
    if (SafeArrayGetElemsize(array_) > (type == VT_DECIMAL ? sizeof(DECIMAL) : sizeof(LONGLONG)))
        TypeMismatch();
    VARIANT element;
    VariantInit(&element);
    void* const content = type == VT_DECIMAL ? static_cast<void*>(&element.decVal) : &element.byref;
    Check(SafeArrayGetElement(array_, &index, content));
    element.vt = type;
    return Variant::Adopt(element);
}

}  // namespace zu::component
