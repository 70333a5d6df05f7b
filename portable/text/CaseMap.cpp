#include "portable/text/CaseMap.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace zu::text {

namespace {

// Position by position: a small letter and its capital, beyond ASCII, ascending by the small letter.
constexpr std::u16string_view kSmall =
    u"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿāăąćčďđēėęěğģīįıķ"
    u"ĺļľłńņňōőœŕŗřśşšţťūůűųźżžάέήίαβγδεζηθικλμνξοπρςσ"
    u"τυφχψωϊϋόύώабвгдежзийклмнопрстуфхцчшщъыьэюяёђѓєѕ"
    u"іїјљњћќўџґ";
constexpr std::u16string_view kCapital =
    u"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸĀĂĄĆČĎĐĒĖĘĚĞĢĪĮIĶ"
    u"ĹĻĽŁŃŅŇŌŐŒŔŖŘŚŞŠŢŤŪŮŰŲŹŻŽΆΈΉΊΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΣ"
    u"ΤΥΦΧΨΩΪΫΌΎΏАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯЁЂЃЄЅ"
    u"ІЇЈЉЊЋЌЎЏҐ";
static_assert(kSmall.size() == kCapital.size());

constexpr std::size_t kPairs = kSmall.size();

/// Capitals in ascending order with their small letters. Where two small letters share a capital (final
/// sigma), the common one wins.
constexpr auto kByCapital = [] {
    std::array<std::pair<char16_t, char16_t>, kPairs> pairs{};
    for (std::size_t i = 0; i < kPairs; ++i)
        pairs[i] = {kCapital[i], kSmall[i]};
    std::sort(pairs.begin(), pairs.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second > b.second;
    });
    return pairs;
}();

}  // namespace

char16_t ToUpper(char16_t character) noexcept {
    if (character < 0x80) return character >= u'a' && character <= u'z' ? character - 32 : character;
    const auto found = std::lower_bound(kSmall.begin(), kSmall.end(), character);
    if (found == kSmall.end() || *found != character) return character;
    return kCapital[static_cast<std::size_t>(found - kSmall.begin())];
}

char16_t ToLower(char16_t character) noexcept {
    if (character < 0x80) return character >= u'A' && character <= u'Z' ? character + 32 : character;
    const auto found =
        std::lower_bound(kByCapital.begin(), kByCapital.end(), character,
                         [](const auto& pair, char16_t sought) { return pair.first < sought; });
    return found != kByCapital.end() && found->first == character ? found->second : character;
}

}  // namespace zu::text
