#include "portable/text/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "portable/text/ByteWords.h"

namespace zu::text {

namespace {

constexpr int kMostPlaces = 28;  // what a 96-bit decimal can carry
constexpr int kExponentLimit = 400;

/// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> kExactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr bool IsPadding(char c) noexcept {
    return c == ' ' || c == '\0' || c == '\t';
}
constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view bytes) noexcept {
    while (!bytes.empty() && IsPadding(bytes.back()))
        bytes.remove_suffix(1);
    while (!bytes.empty() && IsPadding(bytes.front()))
        bytes.remove_prefix(1);
    return bytes;
}

/// An unsigned number of 96 bits in three limbs, lowest first.
class Wide {
public:
    /// this * 10 + digit; false when 96 bits do not hold it.
    bool Append(unsigned digit) noexcept {
        std::uint64_t carry = digit;
        std::array<std::uint32_t, 3> next{};
        for (std::size_t i = 0; i < limbs_.size(); ++i) {
            carry += std::uint64_t{limbs_[i]} * 10;
            next[i] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        if (carry != 0) return false;
        limbs_ = next;
        return true;
    }
    bool AddOne() noexcept {
        for (std::uint32_t& limb : limbs_) {
            if (++limb != 0) return true;
        }
        return false;
    }
    void Store(DecimalDigits& out) const noexcept {
        out.low = (std::uint64_t{limbs_[1]} << 32) | limbs_[0];
        out.high = limbs_[2];
    }

private:
    std::array<std::uint32_t, 3> limbs_{};
};

/// The pieces of a number's text.
struct Scan {
    std::string_view mantissa;  ///< digits with at most one point or comma
    int exponent = 0;
    bool negative = false;
};

NumberForm ScanNumber(std::string_view bytes, Scan& scan) noexcept {
    std::string_view rest = Trimmed(bytes);
    if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
        scan.negative = rest.front() == '-';
        rest.remove_prefix(1);
        while (!rest.empty() && IsPadding(rest.front()))
            rest.remove_prefix(1);
    }
    std::size_t at = 0;
    std::size_t digits = 0;
    bool point = false;
    for (; at < rest.size(); ++at) {
        if (IsDigit(rest[at])) {
            ++digits;
        } else if ((rest[at] == '.' || rest[at] == ',') && !point) {
            point = true;
        } else {
            break;
        }
    }
    scan.mantissa = rest.substr(0, at);
    if (at == rest.size()) return digits > 0 ? NumberForm::Number : NumberForm::Blank;
    if (digits == 0 || (rest[at] != 'e' && rest[at] != 'E')) return NumberForm::Unreadable;

    ++at;
    bool down = false;
    if (at < rest.size() && (rest[at] == '-' || rest[at] == '+')) down = rest[at++] == '-';
    if (at == rest.size()) return NumberForm::Unreadable;
    for (; at < rest.size(); ++at) {
        if (!IsDigit(rest[at])) return NumberForm::Unreadable;
        if (scan.exponent < kExponentLimit) scan.exponent = scan.exponent * 10 + (rest[at] - '0');
    }
    if (down) scan.exponent = -scan.exponent;
    return NumberForm::Number;
}

/// The common case: up to 18 digits, one point at most, nothing dirty but blanks in front. False: look
/// closer.
bool ScanPlain(std::string_view bytes, std::uint64_t& units, unsigned& scale, bool& negative) noexcept {
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at != end && *at == ' ')
        ++at;
    negative = at != end && *at == '-';
    if (negative) ++at;
    if (at == end || end - at > 19) return false;
    units = 0;
    const char* pointAt = nullptr;
    const char* const first = at;
    for (; at != end; ++at) {
        const auto digit = static_cast<unsigned char>(*at - '0');
        if (digit <= 9) {
            units = units * 10 + digit;
        } else if (*at == '.' && !pointAt) {
            pointAt = at;
        } else {
            return false;
        }
    }
    const auto digits = (end - first) - (pointAt ? 1 : 0);
    if (digits == 0 || digits > 18) return false;
    scale = pointAt ? static_cast<unsigned>(end - pointAt - 1) : 0;
    return true;
}

/// Puts the two digits of a number below 100 in front of `end`; answers where they begin.
char* PutTwoDigits(unsigned number, char* end) noexcept {
    end[-1] = static_cast<char>('0' + number % 10);
    end[-2] = static_cast<char>('0' + number / 10);
    return end - 2;
}

}  // namespace

NumberForm ParseDecimal(std::string_view bytes, DecimalDigits& out) noexcept {
    out = {};
    std::uint64_t units = 0;
    unsigned scale = 0;
    if (ScanPlain(bytes, units, scale, out.negative)) {
        out.low = units;
        out.scale = static_cast<std::uint8_t>(scale);
        if (units == 0) out.negative = false;
        return NumberForm::Number;
    }
    out = {};
    Scan scan;
    if (const NumberForm form = ScanNumber(bytes, scan); form != NumberForm::Number) return form;

    // The exponent moves the point; digits right of 28 places are rounded away.
    int places = -scan.exponent;
    bool pointSeen = false;
    for (const char c : scan.mantissa) {
        if (!IsDigit(c)) {
            pointSeen = true;
        } else if (pointSeen) {
            ++places;
        }
    }
    std::size_t digits = scan.mantissa.size() - (pointSeen ? 1 : 0);
    Wide value;
    bool any = false;
    bool roundUp = false;
    int dropped = places > kMostPlaces ? places - kMostPlaces : 0;
    for (const char c : scan.mantissa) {
        if (!IsDigit(c)) continue;
        const auto digit = static_cast<unsigned>(c - '0');
        if (static_cast<std::size_t>(dropped) >= digits--) {
            // The first digit that falls away decides, if it stands right behind the last one kept.
            roundUp = static_cast<std::size_t>(dropped) == digits + 1 && digit >= 5;
            places -= static_cast<int>(digits) + 1;
            break;
        }
        if (!value.Append(digit)) {
            // Too many digits: those left of the point cannot be spared.
            if (places <= static_cast<int>(digits)) {
                out = {};
                return NumberForm::Unreadable;
            }
            roundUp = digit >= 5;
            places -= static_cast<int>(digits) + 1;
            break;
        }
        any = any || digit != 0;
    }
    if (roundUp && !value.AddOne()) {
        out = {};
        return NumberForm::Unreadable;
    }
    any = any || roundUp;
    if (!any || places > kMostPlaces) {
        out = {};
        return NumberForm::Number;
    }
    for (; places < 0; ++places) {
        if (!value.Append(0)) {
            out = {};
            return NumberForm::Unreadable;
        }
    }
    value.Store(out);
    out.scale = static_cast<std::uint8_t>(places);
    out.negative = scan.negative;
    return NumberForm::Number;
}

NumberForm ParseNumber(std::string_view bytes, double& out) noexcept {
    std::uint64_t units = 0;
    unsigned scale = 0;
    bool negative = false;
    // Both operands are exact up to 2^53, so the one division rounds correctly.
    if (ScanPlain(bytes, units, scale, negative) && units <= (std::uint64_t{1} << 53)) {
        const double magnitude = static_cast<double>(units) / kExactPowers[scale];
        out = negative && units != 0 ? -magnitude : magnitude;
        return NumberForm::Number;
    }
    out = 0;
    Scan scan;
    if (const NumberForm form = ScanNumber(bytes, scan); form != NumberForm::Number) return form;

    std::array<char, 288> text{};
    if (scan.mantissa.size() > text.size() - 16) return NumberForm::Unreadable;
    char* at = text.data();
    for (const char c : scan.mantissa)
        *at++ = c == ',' ? '.' : c;
    *at++ = 'e';
    at = std::to_chars(at, text.data() + text.size(), scan.exponent).ptr;
    double magnitude = 0;
    const auto result = std::from_chars(text.data(), at, magnitude);
    if (result.ec == std::errc::result_out_of_range) {
        if (scan.exponent > 0 || scan.mantissa.size() > 300) return NumberForm::Unreadable;
        magnitude = 0;
    } else if (result.ec != std::errc()) {
        return NumberForm::Unreadable;
    }
    out = scan.negative && magnitude != 0 ? -magnitude : magnitude;
    return NumberForm::Number;
}

double ToDouble(const DecimalDigits& digits) noexcept {
    double magnitude = 0;
    if (digits.high == 0 && digits.low <= (std::uint64_t{1} << 53) && digits.scale < kExactPowers.size()) {
        magnitude = static_cast<double>(digits.low) / kExactPowers[digits.scale];
    } else {
        // Through the digits, so that the one rounding is the correct one.
        std::array<char, 64> reversed{};
        std::size_t count = 0;
        std::array<std::uint32_t, 3> limbs = {static_cast<std::uint32_t>(digits.low),
                                              static_cast<std::uint32_t>(digits.low >> 32), digits.high};
        do {
            std::uint64_t remainder = 0;
            for (std::size_t i = limbs.size(); i-- > 0;) {
                const std::uint64_t part = (remainder << 32) | limbs[i];
                limbs[i] = static_cast<std::uint32_t>(part / 10);
                remainder = part % 10;
            }
            reversed[count++] = static_cast<char>('0' + remainder);
        } while (limbs[0] != 0 || limbs[1] != 0 || limbs[2] != 0);
        std::array<char, 80> text{};
        char* at = text.data();
        while (count > 0)
            *at++ = reversed[--count];
        *at++ = 'e';
        at = std::to_chars(at, text.data() + text.size(), -static_cast<int>(digits.scale)).ptr;
        std::from_chars(text.data(), at, magnitude);
    }
    return digits.negative ? -magnitude : magnitude;
}

bool PrintUnits(std::int64_t units, unsigned width, unsigned decimals, char* out) noexcept {
    if (decimals > 18) return false;
    std::array<char, 40> text{};
    char* const end = text.data() + text.size();
    char* at = end;
    const bool negative = units < 0;
    std::uint64_t rest =
        negative ? std::uint64_t{0} - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    unsigned places = decimals;
    for (; places >= 2; places -= 2, rest /= 100)
        at = PutTwoDigits(static_cast<unsigned>(rest % 100), at);
    if (places != 0) {
        *--at = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    if (decimals > 0) *--at = '.';
    char* const whole = at;
    for (; rest >= 100; rest /= 100)
        at = PutTwoDigits(static_cast<unsigned>(rest % 100), at);
    if (rest >= 10)
        at = PutTwoDigits(static_cast<unsigned>(rest), at);
    else
        *--at = static_cast<char>('0' + rest);
    if (negative) *--at = '-';
    auto length = static_cast<std::size_t>(end - at);
    // A lone zero in front of the point gives way where room is short: 0.5 in two columns is ".5".
    if (length == width + 1U && decimals > 0 && whole - at == 1 + (negative ? 1 : 0) && whole[-1] == '0') {
        ++at;
        --length;
        if (negative) *at = '-';
    }
    if (length > width) return false;
    for (char* const digits = out + (width - length); out != digits; ++out)
        *out = ' ';
    CopyBytes(at, length, out);
    return true;
}

bool PrintNumber(double value, unsigned width, unsigned decimals, char* out) noexcept {
    if (!std::isfinite(value)) return false;
    // The shortest text that means this double, rounded by its digits: 0.125 to two places is 0.13, and 1.005
    // is 1.01 although the double lies a little below.
    std::array<char, 400> shortest{};
    const auto printed =
        std::to_chars(shortest.data(), shortest.data() + shortest.size(), value, std::chars_format::fixed);
    if (printed.ec != std::errc()) return false;
    std::string_view digits(shortest.data(), static_cast<std::size_t>(printed.ptr - shortest.data()));
    const bool minus = digits.starts_with('-');
    if (minus) digits.remove_prefix(1);
    const std::size_t point = digits.find('.');
    const std::string_view whole = digits.substr(0, point);
    const std::string_view places =
        point == std::string_view::npos ? std::string_view() : digits.substr(point + 1);

    std::array<char, 448> text{};
    std::size_t length = 1;  // room for a carry
    text[0] = '0';
    if (whole.size() + decimals + 4 > text.size() || decimals > 30) return false;
    for (const char c : whole)
        text[length++] = c;
    for (unsigned place = 0; place < decimals; ++place) {
        text[length++] = place < places.size() ? places[place] : '0';
    }
    if (decimals < places.size() && places[decimals] >= '5') {
        std::size_t at = length;
        while (text[--at] == '9')
            text[at] = '0';
        ++text[at];
    }
    std::size_t first = 0;
    while (first + decimals + 1 < length && text[first] == '0')
        ++first;
    bool zero = true;
    for (std::size_t i = first; i < length; ++i)
        zero = zero && text[i] == '0';
    const bool negative = minus && !zero;

    std::size_t needed = (length - first) + (decimals > 0 ? 1 : 0) + (negative ? 1 : 0);
    if (needed == width + 1U && decimals > 0 && length - first == decimals + 1U && text[first] == '0') {
        ++first;
        --needed;
    }
    if (needed > width) return false;
    std::memset(out, ' ', width - needed);
    char* at = out + (width - needed);
    if (negative) *at++ = '-';
    for (; first < length; ++first) {
        if (decimals > 0 && length - first == decimals) *at++ = '.';
        *at++ = text[first];
    }
    return true;
}

}  // namespace zu::text
