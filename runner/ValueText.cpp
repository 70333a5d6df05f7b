#include "runner/ValueText.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "runner/DispatchCall.h"
#include "runner/ErrorTexts.h"

namespace zu::runner {
namespace {

// Elements of long arrays and arrays in arrays are cut: the text is for people.
constexpr LONG kMostElements = 100;
constexpr int kDeepest = 5;

// The automation conversion of the user's locale, as CStr does it.
std::wstring Converted(const VARIANT& value, USHORT flags) {
    com::Variant text;
    VARIANT copy = value;  // borrowed; the conversion only reads it
    const HRESULT code = VariantChangeTypeEx(text.address(), &copy, LOCALE_USER_DEFAULT, flags, VT_BSTR);
    if (FAILED(code)) throw com::ComError(code);
    return com::TextOf(text).has_value() ? std::wstring(*com::TextOf(text)) : std::wstring();
}

com::Variant DefaultValue(IDispatch* object) {
    const DISPPARAMS none{};
    return InvokeMember(object, DISPID_VALUE, DISPATCH_PROPERTYGET, none);
}

std::wstring TypeName(IDispatch* object) {
    com::ComPtr<ITypeInfo> type;
    com::Bstr name;
    if (SUCCEEDED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.put())) && type) {
        type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    }
    return name.empty() ? L"Object" : name.str();
}

std::wstring TextAtDepth(const VARIANT& value, int depth);

std::wstring ObjectText(const VARIANT& value, int depth) {
    const com::ComPtr<IDispatch> object = com::ObjectOf<IDispatch>(value);
    if (!object) return com::ObjectOf<IUnknown>(value) ? L"[Object]" : L"Nothing";
    if (depth < kDeepest) {
        try {
            const com::Variant content = DefaultValue(object.get());
            if (content.type() != VT_EMPTY) return TextAtDepth(content, depth + 1);
        } catch (const com::ComError&) {
            // No default value: the type name stands for it.
        }
    }
    return L"[" + TypeName(object.get()) + L"]";
}

com::Variant Element(SAFEARRAY* array, VARTYPE type, LONG index) {
    com::Variant element;
    if (type == VT_VARIANT) {
        com::Check(SafeArrayGetElement(array, &index, element.put()));
        return element;
    }
    VARIANT raw;
    VariantInit(&raw);
    com::Check(SafeArrayGetElement(array, &index, &raw.llVal));
    raw.vt = type;
    return com::Variant::Adopt(raw);
}

std::wstring ArrayText(const VARIANT& value, int depth) {
    SAFEARRAY* array = value.vt & VT_BYREF ? *value.pparray : value.parray;
    const auto type = static_cast<VARTYPE>(value.vt & VT_TYPEMASK);
    LONG lower = 0;
    LONG upper = -1;
    // Elements that are no plain values (records) are larger than any of those.
    const bool plain = array && (type == VT_VARIANT || SafeArrayGetElemsize(array) <= sizeof(LONGLONG));
    if (!plain || SafeArrayGetDim(array) != 1 || depth >= kDeepest) return L"[Array]";
    com::Check(SafeArrayGetLBound(array, 1, &lower));
    com::Check(SafeArrayGetUBound(array, 1, &upper));
    std::wstring text = L"(";
    for (LONG index = lower; index <= upper; ++index) {
        if (index > lower) text += L", ";
        if (index - lower == kMostElements) return text + L"...)";
        text += TextAtDepth(Element(array, type, index), depth + 1);
    }
    return text + L")";
}

std::wstring TextAtDepth(const VARIANT& reference, int depth) {
    const VARIANT& value = com::Dereference(reference);
    if (value.vt & VT_ARRAY) return ArrayText(value, depth);
    switch (value.vt & VT_TYPEMASK) {
        case VT_EMPTY:
            return {};
        case VT_NULL:
            return L"Null";
        case VT_ERROR:
            if (com::IsMissing(value)) return {};
            return L"Error " + ErrorNumber(value.vt & VT_BYREF ? *value.pscode : value.scode);
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return ObjectText(value, depth);
        default:
            return Converted(value, VARIANT_ALPHABOOL);
    }
}

}  // namespace

std::wstring ValueText(const VARIANT& value) {
    try {
        return TextAtDepth(value, 0);
    } catch (const com::ComError&) {
        return L"[type " + std::to_wstring(com::Dereference(value).vt) + L"]";
    }
}

std::wstring HostText(const VARIANT& reference) {
    const VARIANT& value = com::Dereference(reference);
    if (value.vt == VT_NULL) return L"null";
    if (com::IsMissing(value)) return {};
    return Converted(value, 0);
}

}  // namespace zu::runner
