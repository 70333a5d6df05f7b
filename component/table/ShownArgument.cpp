#include "component/table/ShownArgument.h"

#include <vector>

#include "com/ComError.h"
#include "com/QuotedText.h"
#include "com/ScriptList.h"
#include "com/Variant.h"
#include "component/table/KeyCondition.h"

namespace zu::component {

namespace {

constexpr std::size_t kMostCharacters = 100;
constexpr std::size_t kMostElements = 8;

std::wstring ShownList(const std::vector<com::Variant>& elements) {
    std::wstring text = L"(";
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i == kMostElements) return text + L", ...)";
        text += i ? L", " : L"";
        text += com::IsList(elements[i]) ? L"a list" : Shown(elements[i]);
    }
    return text + L")";
}

std::wstring ShownValue(const VARIANT& content) {
    if (const auto text = com::TextOf(content)) return com::Quoted(*text, kMostCharacters);
    std::vector<com::Variant> elements;
    if (com::ReadList(content, elements)) return ShownList(elements);
    switch (content.vt & ~VT_BYREF) {
        case VT_EMPTY:
            return L"Empty";
        case VT_NULL:
            return L"Null";
        case VT_BOOL:
            return com::Variant(content)->boolVal ? L"True" : L"False";
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return com::ObjectOf<IUnknown>(content) ? L"an object" : L"no object";
        default:
            return com::Convert(content, VT_BSTR).ToText().str();
    }
}

}  // namespace

std::wstring Shown(const VARIANT& argument) {
    const VARIANT& content = com::Dereference(argument);
    if (com::IsMissing(content)) return L"nothing";
    try {
        return ShownValue(content);
    } catch (const com::ComError&) {
        return L"a value";
    }
}

std::wstring ShownTable(const VARIANT& tableDefn) {
    return L"table " + Shown(tableDefn);
}

std::wstring ShownSearch(const VARIANT& tableDefn, const VARIANT& keyOrCondition) {
    return ShownTable(tableDefn) +
           (IsCondition(keyOrCondition) ? L" meets the condition " : L" has the key ") +
           Shown(keyOrCondition);
}

}  // namespace zu::component
