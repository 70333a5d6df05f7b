#include "com/ScriptList.h"

#include <new>
#include <string>

#include "com/ComError.h"

namespace zu::com {
namespace {

/// One element of an array that is locked for the time.
Variant ElementOf(SAFEARRAY* array, VARTYPE type, LONG index) {
    Variant element;
    VARIANT* target = element.address();
    if (type == VT_VARIANT) {
        Check(SafeArrayGetElement(array, &index, target));
        // What a script put into the array may itself be a reference.
        return (target->vt & VT_BYREF) != 0 ? Variant(element.get()) : element;
    }
    if (type == VT_DECIMAL) {
        DECIMAL number{};
        Check(SafeArrayGetElement(array, &index, &number));
        target->decVal = number;
        target->vt = VT_DECIMAL;
        return element;
    }
    Check(SafeArrayGetElement(array, &index, &target->llVal));
    target->vt = type;
    return element;
}

void ReadArray(SAFEARRAY* array, std::vector<Variant>& elements) {
    elements.clear();
    // An array without bounds yet, as `Dim a()` makes it.
    if (!array || SafeArrayGetDim(array) == 0) return;
    if (SafeArrayGetDim(array) != 1) {
        throw ComError(kTypeMismatch, L"Type mismatch: a list with one dimension was expected");
    }
    LONG lower = 0;
    LONG upper = -1;
    VARTYPE type = VT_VARIANT;
    Check(SafeArrayGetLBound(array, 1, &lower));
    Check(SafeArrayGetUBound(array, 1, &upper));
    Check(SafeArrayGetVartype(array, &type));
    if (type == VT_RECORD)
        throw ComError(kTypeMismatch, L"Type mismatch: a list of records is not understood");
    if (upper < lower) return;
    elements.reserve(static_cast<std::size_t>(upper - static_cast<long long>(lower) + 1));
    for (long long index = lower; index <= upper; ++index) {
        elements.push_back(ElementOf(array, type, static_cast<LONG>(index)));
    }
}

/// The property of an object by name; Empty when it has none of that name.
bool ReadProperty(IDispatch& object, const wchar_t* name, Variant& value) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<LPOLESTR>(name);
    if (FAILED(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id))) return false;
    DISPPARAMS none{};
    return SUCCEEDED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                   value.put(), nullptr, nullptr));
}

/// The `length` of an array object; Empty for any other object.
Variant LengthOf(IDispatch& object) {
    Variant length;
    if (!ReadProperty(object, L"length", length)) return {};
    const bool number = length.type() == VT_I4 || length.type() == VT_I2 || length.type() == VT_R8;
    return number ? length : Variant();
}

bool ReadObject(IDispatch& object, std::vector<Variant>& elements) {
    const Variant length = LengthOf(object);
    if (length.type() == VT_EMPTY) return false;
    const double count = length.ToDouble();
    if (!(count >= 0 && count <= kMaxListLength)) {
        throw ComError(kTypeMismatch, L"Type mismatch: the list has too many elements");
    }
    elements.assign(static_cast<std::size_t>(count), Variant());
    for (std::size_t index = 0; index < elements.size(); ++index) {
        ReadProperty(object, std::to_wstring(index).c_str(), elements[index]);
    }
    return true;
}

}  // namespace

bool IsArray(const VARIANT& value) noexcept {
    return (Dereference(value).vt & VT_ARRAY) != 0;
}

SAFEARRAY* ArrayOf(const VARIANT& value) noexcept {
    const VARIANT& content = Dereference(value);
    if ((content.vt & VT_ARRAY) == 0) return nullptr;
    if ((content.vt & VT_BYREF) == 0) return content.parray;
    return content.pparray ? *content.pparray : nullptr;
}

bool ReadList(const VARIANT& value, std::vector<Variant>& elements) {
    if (IsArray(value)) {
        ReadArray(ArrayOf(value), elements);
        return true;
    }
    const ComPtr<IDispatch> object = ObjectOf<IDispatch>(value);
    return object && ReadObject(*object, elements);
}

bool IsList(const VARIANT& value) {
    if (IsArray(value)) return true;
    const ComPtr<IDispatch> object = ObjectOf<IDispatch>(value);
    return object && LengthOf(*object).type() != VT_EMPTY;
}

SAFEARRAY* NewVariantArray(const std::vector<Variant>& elements) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
    if (!array) throw std::bad_alloc();
    for (std::size_t index = 0; index < elements.size(); ++index) {
        auto position = static_cast<LONG>(index);
        const HRESULT result =
            SafeArrayPutElement(array, &position, const_cast<VARIANT*>(&elements[index].get()));
        if (FAILED(result)) {
            SafeArrayDestroy(array);
            throw std::bad_alloc();
        }
    }
    return array;
}

}  // namespace zu::com
