#include "portable/textio/MonthNames.h"

#include <algorithm>
#include <array>

#include "portable/text/AsciiCase.h"

namespace zu::textio {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr auto kLower = text::AsciiLowerTable();

bool SameLetters(std::string_view left, std::string_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return kLower[static_cast<unsigned char>(a)] == kLower[static_cast<unsigned char>(b)];
    });
}

}  // namespace

std::string_view MonthName(int month) noexcept {
    return month >= 1 && month <= 12 ? kMonths[static_cast<std::size_t>(month - 1)] : std::string_view();
}

std::string_view ShortMonthName(int month) noexcept {
    return MonthName(month).substr(0, 3);
}

int FindMonth(std::string_view name) noexcept {
    for (int month = 1; month <= 12; ++month) {
        if (SameLetters(name, MonthName(month)) || SameLetters(name, ShortMonthName(month))) return month;
    }
    return 0;
}

}  // namespace zu::textio
