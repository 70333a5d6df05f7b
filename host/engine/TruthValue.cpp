#include "host/engine/TruthValue.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "com/ComError.h"
#include "com/Variant.h"
#include "host/engine/DefaultValue.h"

namespace zu::host {
namespace {

constexpr std::array<std::wstring_view, 7> kTrue = {L"T", L"TRUE", L"Y", L"YES", L".T.", L".Y.", L"ON"};
constexpr std::array<std::wstring_view, 7> kFalse = {L"F", L"FALSE", L"N", L"NO", L".F.", L".N.", L"OFF"};

std::wstring Normalised(std::wstring_view text) {
    constexpr std::wstring_view kBlanks(L" \t\r\n\0", 5);
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos) return {};
    std::wstring result(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
    for (wchar_t& character : result)
        if (character >= L'a' && character <= L'z') character = static_cast<wchar_t>(character - L'a' + L'A');
    return result;
}

bool IsOneOf(const std::array<std::wstring_view, 7>& words, std::wstring_view text) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

bool TruthOfText(std::wstring_view text) {
    std::wstring word = Normalised(text);
    if (word.empty() || IsOneOf(kFalse, word)) return false;
    if (IsOneOf(kTrue, word)) return true;
    double number = 0;
    if (FAILED(VarR8FromStr(word.data(), LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, &number)))
        throw com::ComError(
            com::kTypeMismatch,
            L"\"" + std::wstring(text) + L"\" is no truth value; True, False, yes, no, 1 and 0 are some");
    return number != 0;
}

}  // namespace

bool ToTruthValue(const VARIANT& value) {
    const VARIANT& content = com::Dereference(value);
    if (content.vt == VT_BOOL) return content.boolVal != VARIANT_FALSE;
    if (const auto text = com::TextOf(content)) return TruthOfText(*text);
    if (com::IsMissing(content)) return false;
    switch (content.vt & ~VT_BYREF) {
        case VT_EMPTY:
        case VT_NULL:
            return false;
        case VT_DATE:
            return true;
        case VT_DISPATCH:
            return ToTruthValue(DefaultValue(content));
        case VT_BOOL:  // by reference
        case VT_I1:
        case VT_I2:
        case VT_I4:
        case VT_I8:
        case VT_INT:
        case VT_UI1:
        case VT_UI2:
        case VT_UI4:
        case VT_UI8:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
            return com::Convert(content, VT_R8).get().dblVal != 0;
        default:
            throw com::ComError(com::kTypeMismatch, L"The value is no truth value");
    }
}

}  // namespace zu::host
