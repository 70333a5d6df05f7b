#include "tests/contract/Arrays.h"

#include "com/Bstr.h"

namespace zu::contract {

using com::Variant;

namespace {

SAFEARRAY* NewArray(VARTYPE type, std::size_t count, LONG lowerBound) {
    SAFEARRAYBOUND bounds{static_cast<ULONG>(count), lowerBound};
    return SafeArrayCreate(type, 1, &bounds);
}

Variant Owned(VARTYPE type, SAFEARRAY* array) {
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    value.parray = array;
    return Variant::Adopt(value);
}

}  // namespace

Variant Array(const std::vector<Variant>& elements) {
    SAFEARRAY* const array = NewArray(VT_VARIANT, elements.size(), 0);
    LONG index = 0;
    for (const Variant& element : elements) {
        Variant copy(element);
        SafeArrayPutElement(array, &index, copy.address());
        ++index;
    }
    return Owned(VT_VARIANT, array);
}

Variant Array(std::initializer_list<const wchar_t*> texts) {
    std::vector<Variant> elements;
    for (const wchar_t* text : texts)
        elements.emplace_back(std::wstring_view(text));
    return Array(elements);
}

Variant Array(std::initializer_list<Variant> elements) {
    return Array(std::vector<Variant>(elements));
}

Variant TextArray(const std::vector<std::wstring_view>& texts, LONG lowerBound) {
    SAFEARRAY* const array = NewArray(VT_BSTR, texts.size(), lowerBound);
    LONG index = lowerBound;
    for (const std::wstring_view text : texts) {
        const com::Bstr element(text);
        SafeArrayPutElement(array, &index, element.get());
        ++index;
    }
    return Owned(VT_BSTR, array);
}

Variant LongArray(const std::vector<LONG>& numbers, LONG lowerBound) {
    SAFEARRAY* const array = NewArray(VT_I4, numbers.size(), lowerBound);
    LONG index = lowerBound;
    for (LONG number : numbers) {
        SafeArrayPutElement(array, &index, &number);
        ++index;
    }
    return Owned(VT_I4, array);
}

Variant TwoDimensionalArray() {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    return Owned(VT_VARIANT, SafeArrayCreate(VT_VARIANT, 2, bounds));
}

Variant UndimensionedArray() {
    return Owned(VT_VARIANT, nullptr);
}

VARIANT ReferenceTo(Variant& variable) {
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = variable.address();
    return reference;
}

}  // namespace zu::contract
