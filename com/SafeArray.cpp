#include "com/SafeArray.h"

#include <new>

#include "com/ScriptList.h"

namespace zu::com {

SafeArray::~SafeArray() {
    if (array_) SafeArrayDestroy(array_);
}

SafeArray SafeArray::Of(const std::vector<Variant>& elements) {
    SafeArray result;
    result.array_ = NewVariantArray(elements);
    return result;
}

SafeArray SafeArray::NoArguments() {
    SafeArray result;
    result.array_ = SafeArrayCreateVector(VT_VARIANT, -1, 1);
    if (!result.array_) throw std::bad_alloc();
    return result;
}

Variant SafeArray::ToVariant() && noexcept {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_ARRAY | VT_VARIANT;
    value.parray = std::exchange(array_, nullptr);
    return Variant::Adopt(value);
}

LONG UpperBound(SAFEARRAY* array) noexcept {
    LONG bound = -1;
    if (!array || SafeArrayGetDim(array) == 0) return -1;
    return SUCCEEDED(SafeArrayGetUBound(array, 1, &bound)) ? bound : -1;
}

std::vector<Variant> ReadArguments(SAFEARRAY* array) {
    std::vector<Variant> elements;
    if (UpperBound(array) == -1) return elements;
    VARTYPE type = VT_EMPTY;
    // Read as VARIANTs, an array of anything else would be read past its end.
    if (FAILED(SafeArrayGetVartype(array, &type)) || type != VT_VARIANT)
        throw ComError(kTypeMismatch, L"An argument list must be an array of VARIANTs");
    VARIANT list;
    VariantInit(&list);
    list.vt = VT_ARRAY | VT_VARIANT;
    list.parray = array;  // lent for the reading, not owned
    ReadList(list, elements);
    return elements;
}

}  // namespace zu::com
