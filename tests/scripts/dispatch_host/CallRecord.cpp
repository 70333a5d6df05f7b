#include "tests/scripts/dispatch_host/CallRecord.h"

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDBFFunctions.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::tests {
namespace {

std::wstring Quoted(std::wstring_view text) {
    return L"'" + std::wstring(text) + L"'";
}

std::wstring AsText(const VARIANT& value) {
    return com::Convert(value, VT_BSTR).ToText().str();
}

}  // namespace

void CallRecord::Begin(std::wstring_view name) {
    text_ = std::wstring(name) + L"(";
    first_ = true;
}

void CallRecord::Append(const std::wstring& argument) {
    if (text_.ends_with(L")")) text_.pop_back();
    if (!first_) text_ += L", ";
    first_ = false;
    text_ += argument + L")";
}

void CallRecord::Add(const VARIANT& value) {
    Append(Describe(value));
}

void CallRecord::Add(VARIANT* value) {
    Append(value ? Describe(*value) : L"null pointer");
}

void CallRecord::Add(BSTR text) {
    Append(text ? Quoted(com::View(text)) : L"none");
}

void CallRecord::Add(BSTR* text) {
    Append(!text ? L"null pointer" : *text ? Quoted(com::View(*text)) : L"none");
}

void CallRecord::Add(LONG number) {
    Append(std::to_wstring(number));
}

void CallRecord::Add(VARIANT_BOOL truth) {
    Append(truth == VARIANT_TRUE ? L"True" : truth == VARIANT_FALSE ? L"False" : L"odd truth");
}

void CallRecord::Add(SAFEARRAY** array) {
    Append(array && *array ? Describe(*array) : L"null array");
}

std::wstring CallRecord::Describe(const VARIANT& reference) {
    const VARIANT& value = com::Dereference(reference);
    if (com::IsMissing(value)) return L"missing";
    if (const auto text = com::TextOf(value)) return Quoted(*text);
    if (value.vt & VT_ARRAY) return Describe(value.vt & VT_BYREF ? *value.pparray : value.parray);
    switch (value.vt & VT_TYPEMASK) {
        case VT_EMPTY:
            return L"Empty";
        case VT_NULL:
            return L"Null";
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return Describe(com::ObjectOf<IUnknown>(value).get());
        case VT_BOOL:
            return com::Convert(value, VT_BOOL).ToBoolean() ? L"True" : L"False";
        default:
            return AsText(value);
    }
}

std::wstring CallRecord::Describe(SAFEARRAY* array) {
    LONG lower = 0;
    LONG upper = -1;
    VARTYPE type = VT_EMPTY;
    SafeArrayGetLBound(array, 1, &lower);
    SafeArrayGetUBound(array, 1, &upper);
    SafeArrayGetVartype(array, &type);
    if (type != VT_VARIANT) return L"array of type " + std::to_wstring(type);
    std::wstring text = lower == 0 ? L"[" : L"from " + std::to_wstring(lower) + L" [";
    for (LONG index = lower; index <= upper; ++index) {
        com::Variant element;
        SafeArrayGetElement(array, &index, element.put());
        if (index > lower) text += L", ";
        text += Describe(element.get());
    }
    return text + L"]";
}

std::wstring CallRecord::Describe(IUnknown* object) {
    if (!object) return L"Nothing";
    const auto shared = com::Share(object);
    if (shared.tryAs<ZuDataView>()) return L"view";
    if (shared.tryAs<ZuDataField>()) return L"field";
    if (shared.tryAs<_ZuDbfControl>()) return L"control";
    return L"object";
}

}  // namespace zu::tests
