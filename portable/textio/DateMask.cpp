#include "portable/textio/DateMask.h"

#include <array>

namespace zu::textio {

namespace {

constexpr std::array<std::u16string_view, 8> kPatterns = {u"yyyy/mm/dd",   u"dd/mm/yyyy",  u"mm/dd/yyyy",
                                                          u"yyyy/mm/dd",   u"dd/mmm/yyyy", u"yyyy/mmm/dd",
                                                          u"dd/mmmm/yyyy", u"yyyy/mmmm/dd"};

}  // namespace

bool IsArrangement(int dateForm) noexcept {
    return dateForm >= 0 && dateForm < static_cast<int>(kPatterns.size());
}

void BuildDateMask(DateForm form, std::u16string& separator, std::u16string& mask) {
    if (!IsArrangement(static_cast<int>(form))) return;
    if (form == DateForm::Ansi) separator = u".";
    mask.clear();
    for (const char16_t c : kPatterns[static_cast<std::size_t>(form)]) {
        if (c == u'/') {
            mask += separator;
        } else {
            mask += c;
        }
    }
}

}  // namespace zu::textio
