#include "tests/contract/fake/Rendering.h"

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

namespace {

std::string Narrow(std::wstring_view text) {
    std::string result;
    for (const wchar_t character : text)
        result += character < 128 ? static_cast<char>(character) : '?';
    return result;
}

/// Pieces put together. (Operators on temporaries make this compiler see overlaps where there are none.)
template <class... Pieces>
std::string Joined(const Pieces&... pieces) {
    std::string text;
    (text.append(pieces), ...);
    return text;
}

std::string Converted(const VARIANT& value) {
    VARIANT text;
    VariantInit(&text);
    // The declaration wants a changeable source and leaves it alone.
    if (FAILED(VariantChangeTypeEx(&text, const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, VT_BSTR)))
        return "?";
    const com::Bstr owned = com::Bstr::Adopt(text.bstrVal);
    return Narrow(owned.view());
}

std::string ShowContent(const VARIANT& value) {
    switch (value.vt) {
        case VT_EMPTY:
            return "Empty";
        case VT_NULL:
            return "Null";
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND ? "missing" : "Error";
        case VT_BSTR:
            return Show(value.bstrVal);
        case VT_BOOL:
            return value.boolVal ? "True" : "False";
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return Show(value.punkVal);
        case VT_I2:
            return Joined("I2 ", Converted(value));
        case VT_I4:
            return Joined("I4 ", Converted(value));
        case VT_R8:
            return Joined("R8 ", Converted(value));
        default:
            return Joined("VT", std::to_string(value.vt), " ", Converted(value));
    }
}

}  // namespace

std::string Show(const VARIANT& value) {
    if (value.vt == (VT_BYREF | VT_VARIANT)) return Joined("&", Show(*value.pvarVal));
    if (value.vt & VT_ARRAY) {
        const bool reference = (value.vt & VT_BYREF) != 0;
        return Joined(reference ? "&" : "", Show(reference ? *value.pparray : value.parray));
    }
    if (value.vt == (VT_BYREF | VT_I4)) return Joined("&I4 ", std::to_string(*value.plVal));
    if (value.vt == (VT_BYREF | VT_BSTR)) return Joined("&", Show(*value.pbstrVal));
    if (value.vt & VT_BYREF) return Joined("&", std::to_string(value.vt & VT_TYPEMASK));
    return ShowContent(value);
}

std::string Show(BSTR text) {
    if (!text) return "no text";
    return Joined("\"", Narrow(com::View(text)), "\"");
}

std::string Show(BSTR* text) {
    return text ? Show(*text) : "no reference";
}

std::string Show(LONG number) {
    return std::to_string(number);
}

std::string Show(VARIANT_BOOL flag) {
    return flag ? "True" : "False";
}

std::string Show(IUnknown* object) {
    if (!object) return "Nothing";
    com::ComPtr<IUnknown> identity;
    object->QueryInterface(IID_IUnknown, identity.putVoid());
    return Joined("<", Journal::OfThread().LabelOf(identity.get()), ">");
}

std::string Show(SAFEARRAY* array) {
    LONG first = 0;
    LONG last = 0;
    if (!array || FAILED(SafeArrayGetLBound(array, 1, &first)) ||
        FAILED(SafeArrayGetUBound(array, 1, &last))) {
        return "[]";
    }
    std::string text = Joined("[", std::to_string(first), "..", std::to_string(last), ":");
    for (LONG index = first; index <= last; ++index) {
        VARIANT element;
        VariantInit(&element);
        VARTYPE type = VT_EMPTY;
        SafeArrayGetVartype(array, &type);
        if (type == VT_VARIANT) {
            SafeArrayGetElement(array, &index, &element);
        } else {
            SafeArrayGetElement(array, &index, &element.byref);
            element.vt = type;
        }
        text += Joined(index == first ? " " : ", ", Show(element));
        VariantClear(&element);
    }
    return text + "]";
}

std::string Show(SAFEARRAY** array) {
    return array ? Show(*array) : "no reference";
}

}  // namespace zu::fake
