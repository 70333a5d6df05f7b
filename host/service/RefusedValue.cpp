#include "host/service/RefusedValue.h"

#include <string_view>

#include "com/Bstr.h"
#include "com/QuotedText.h"
#include "com/ScriptList.h"
#include "com/Variant.h"

namespace zu::host {
namespace {

using technologies::FieldType;

constexpr std::size_t kMostShown = 60;

std::wstring_view Wanted(FieldType type) noexcept {
    switch (type) {
        case FieldType::Boolean:
            return L"True or False";
        case FieldType::Byte:
        case FieldType::Integer16:
        case FieldType::Integer32:
            return L"a whole number";
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Currency:
        case FieldType::Decimal:
            return L"a number";
        case FieldType::Date:
            return L"a date";
        case FieldType::Binary:
            return L"an array of bytes";
        case FieldType::Text:
        case FieldType::LongText:
            break;
    }
    return L"a text";
}

std::wstring Shown(const VARIANT& value) {
    const VARIANT& content = com::Dereference(value);
    if (const auto text = com::TextOf(content)) return com::Quoted(*text, kMostShown);
    if (com::IsArray(content)) return L"an array";
    if (content.vt == VT_BOOL) return content.boolVal ? L"True" : L"False";
    const VARTYPE type = content.vt & ~VT_BYREF;
    if (type == VT_DISPATCH || type == VT_UNKNOWN)
        return com::ObjectOf<IUnknown>(content) ? L"an object" : L"no object";
    try {
        return com::Convert(content, VT_BSTR).ToText().str();
    } catch (const com::ComError&) {
        return L"a value of another kind";
    }
}

}  // namespace

com::ComError RefusedValue(const com::ComError& error, const std::wstring& place, FieldType type,
                           const VARIANT& value) {
    std::wstring text;
    switch (error.code()) {
        case com::kOverflow:
        case DISP_E_OVERFLOW:
            text = place + L" cannot hold " + Shown(value) + L": the number is too great";
            break;
        case com::kTypeMismatch:
        case com::kObjectNotSet:
        case DISP_E_TYPEMISMATCH:
        case DISP_E_BADVARTYPE:
            text = place + L" takes " + std::wstring(Wanted(type)) + L", not " + Shown(value);
            break;
        default:
            text = place + L": " + error.description();
    }
    return com::ComError(error.code(), text, error.source());
}

}  // namespace zu::host
