#include "host/technologies/dbf/FieldNames.h"

#include <algorithm>
#include <map>
#include <set>

#include "portable/text/CaseMap.h"
#include "portable/text/Utf.h"

namespace zu::dbf {

namespace {

constexpr char16_t kUndefined = u'\uFFFD';

bool HasUndefined(std::u16string_view name) noexcept {
    return name.find(kUndefined) != std::u16string_view::npos;
}

std::u16string Decoded(const std::string& bytes, const text::CodePage& codePage, bool hasMark) {
    if (!hasMark) {
        std::u16string name = text::ToUtf16(bytes);
        if (!HasUndefined(name)) return name;
    }
    std::u16string name;
    codePage.Decode(bytes, name);
    if (!HasUndefined(name)) return name;
    name.clear();
    for (const char c : bytes)
        name.push_back(static_cast<std::uint8_t>(c));
    return name;
}

std::u16string Upper(std::u16string name) {
    std::transform(name.begin(), name.end(), name.begin(), text::ToUpper);
    return name;
}

}  // namespace

std::vector<std::string> FieldNames(const std::vector<FieldDescriptor>& fields,
                                    const text::CodePage& codePage, bool hasMark) {
    std::vector<std::string> names;
    std::set<std::u16string> taken;
    std::map<std::u16string, unsigned> lastSuffix;  // a header may repeat one name two thousand times
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::u16string name = Decoded(fields[i].name, codePage, hasMark);
        while (!name.empty() && name.back() == u' ')
            name.pop_back();
        while (!name.empty() && name.front() == u' ')
            name.erase(0, 1);
        if (name.empty()) name = u"FIELD" + text::ToUtf16(std::to_string(i + 1));
        const std::u16string base = name;
        unsigned& suffix = lastSuffix.try_emplace(Upper(base), 1U).first->second;
        while (!taken.insert(Upper(name)).second)
            name = base + u"_" + text::ToUtf16(std::to_string(++suffix));
        names.push_back(text::ToUtf8(name));
    }
    return names;
}

}  // namespace zu::dbf
