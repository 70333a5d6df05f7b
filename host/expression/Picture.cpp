#include "host/expression/Picture.h"

#include <algorithm>
#include <cmath>

#include "host/expression/NumberFormat.h"

namespace zu::expression {

namespace {

struct Functions {
    bool upper = false;
    bool blankZero = false;
    bool leadingZeros = false;
};

/// Takes "@..." off the front of a picture.
Functions TakeFunctions(std::string_view& picture) noexcept {
    Functions functions;
    if (!picture.starts_with('@')) return functions;
    std::size_t at = 1;
    for (; at < picture.size() && picture[at] != ' '; ++at) {
        functions.upper |= picture[at] == '!';
        functions.blankZero |= picture[at] == 'Z' || picture[at] == 'z';
        functions.leadingZeros |= picture[at] == 'L' || picture[at] == 'l';
    }
    picture.remove_prefix(std::min(at + 1, picture.size()));
    return functions;
}

bool IsDigitPlace(char c) noexcept {
    return c == '9' || c == '#' || c == '*';
}

char Upper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

}  // namespace

void AppendNumberPicture(double value, std::string_view picture, std::string& out) {
    const Functions functions = TakeFunctions(picture);
    if (picture.empty()) return AppendShortest(value, out);
    const std::size_t point = std::min(picture.find('.'), picture.size());
    const auto isPlace = [](char c) { return IsDigitPlace(c); };
    const auto whole =
        static_cast<std::size_t>(std::count_if(picture.begin(), picture.begin() + point, isPlace));
    const auto decimals =
        static_cast<std::size_t>(std::count_if(picture.begin() + point, picture.end(), isPlace));
    constexpr std::size_t kMostDecimals = 15;
    const std::size_t places = std::min(decimals, kMostDecimals);
    value = RoundDecimal(value, static_cast<int>(places));
    std::string digits;
    AppendStr(value, whole + (places > 0 ? places + 1 : 0), places, functions.leadingZeros ? '0' : ' ',
              digits);
    const bool fits = digits.find('*') == std::string::npos &&
                      (places == 0 || (digits.size() > places && digits[whole] == '.'));
    if (functions.blankZero && value == 0) return void(out.append(picture.size(), ' '));
    std::size_t next = 0;
    bool started = false;
    for (const char c : picture) {
        if (IsDigitPlace(c)) {
            const char digit = next < digits.size() ? digits[next] : '0';
            ++next;
            started = started || digit != ' ';
            out.push_back(!fits ? '*' : digit == ' ' && c == '*' ? '*' : digit);
        } else if (c == '.') {
            ++next;
            out.push_back('.');
        } else if (c == ',') {
            // No group mark in front of the first digit.
            const bool hasDigit = started && out.back() != '-';
            out.push_back(hasDigit ? ',' : ' ');
        } else {
            out.push_back(c);
        }
    }
}

void AppendTextPicture(std::string_view text, std::string_view picture, std::string& out) {
    const Functions functions = TakeFunctions(picture);
    const auto append = [&](char c, bool upper) { out.push_back(upper || functions.upper ? Upper(c) : c); };
    if (picture.empty()) {
        for (const char c : text)
            append(c, false);
        return;
    }
    std::size_t next = 0;
    for (const char c : picture) {
        const bool isPlace = c == 'X' || c == 'x' || c == 'A' || c == 'N' || c == '9' || c == '#' || c == '!';
        if (!isPlace) {
            out.push_back(c);
            continue;
        }
        append(next < text.size() ? text[next] : ' ', c == '!');
        ++next;
    }
}

}  // namespace zu::expression
