#include "host/technologies/dbf/write/ValueText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "portable/calendar/Calendar.h"
#include "portable/text/NumberText.h"
#include "portable/text/Utf.h"

namespace zu::dbf::write {
namespace {

using technologies::Decimal;
using technologies::Value;

constexpr std::int32_t kMillisecondsPerSecond = 1000;

constexpr std::string_view kBlanks("\t \0", 3);

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Divides the 96-bit number by ten and answers the remainder.
unsigned DivideByTen(std::array<std::uint32_t, 3>& limbs) {
    std::uint64_t rest = 0;
    for (auto limb = limbs.rbegin(); limb != limbs.rend(); ++limb) {
        const std::uint64_t part = rest << 32 | *limb;
        *limb = static_cast<std::uint32_t>(part / 10);
        rest = part % 10;
    }
    return static_cast<unsigned>(rest);
}

std::array<std::uint32_t, 3> LimbsOf(const Decimal& decimal) {
    return {static_cast<std::uint32_t>(decimal.low), static_cast<std::uint32_t>(decimal.low >> 32),
            decimal.high};
}

std::string DecimalText(const Decimal& decimal) {
    std::string digits = DigitsOf(decimal);
    if (decimal.scale > 0) {
        digits.insert(digits.size() - decimal.scale, ".");
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') digits.pop_back();
    }
    const bool zero = digits.find_first_of("123456789") == std::string::npos;
    return decimal.negative && !zero ? "-" + digits : digits;
}

std::string DoubleText(double value) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end.ptr};
}

Decimal FromInteger(std::int64_t value, std::uint8_t scale) {
    Decimal decimal;
    decimal.negative = value < 0;
    decimal.low =
        decimal.negative ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    decimal.scale = scale;
    return decimal;
}

std::string Padded(int value, int width) {
    std::string digits = std::to_string(value);
    if (digits.size() < static_cast<std::size_t>(width))
        digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
    return digits;
}

std::string MomentText(const Value& value) {
    const calendar::Date date = calendar::FromJulianDay(value.julianDay);
    std::string text = Padded(date.year, 4) + "-" + Padded(date.month, 2) + "-" + Padded(date.day, 2);
    if (value.milliseconds != 0) {
        const int seconds = value.milliseconds / kMillisecondsPerSecond;
        text += " " + Padded(seconds / 3600, 2) + ":" + Padded(seconds / 60 % 60, 2) + ":" +
                Padded(seconds % 60, 2);
    }
    return text;
}

// Takes numbers and separators from the front of a text.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    bool atEnd() const noexcept { return text_.empty(); }
    bool Skip(std::string_view any) {
        if (text_.empty() || any.find(text_.front()) == std::string_view::npos) return false;
        text_.remove_prefix(1);
        return true;
    }
    std::optional<int> Number(std::size_t atLeast, std::size_t atMost) {
        std::size_t length = 0;
        int value = 0;
        while (length < atMost && length < text_.size() && text_[length] >= '0' && text_[length] <= '9')
            value = value * 10 + (text_[length++] - '0');
        if (length < atLeast) return std::nullopt;
        text_.remove_prefix(length);
        return value;
    }

private:
    std::string_view text_;
};

std::optional<std::int32_t> TimeIn(Scanner& scanner) {
    const auto hour = scanner.Number(1, 2);
    if (!hour || !scanner.Skip(":")) return std::nullopt;
    const auto minute = scanner.Number(2, 2);
    const auto second = scanner.Skip(":") ? scanner.Number(2, 2) : std::optional<int>(0);
    if (!minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    return ((*hour * 60 + *minute) * 60 + *second) * kMillisecondsPerSecond;
}

}  // namespace

std::string DigitsOf(const Decimal& decimal) {
    auto limbs = LimbsOf(decimal);
    std::string digits;
    while (limbs[0] != 0 || limbs[1] != 0 || limbs[2] != 0 || digits.size() <= decimal.scale)
        digits += static_cast<char>('0' + DivideByTen(limbs));
    std::reverse(digits.begin(), digits.end());
    return digits;
}

Decimal Rounded(Decimal decimal, unsigned places) {
    if (decimal.scale <= places) return decimal;
    auto limbs = LimbsOf(decimal);
    unsigned last = 0;
    for (unsigned scale = decimal.scale; scale > places; --scale)
        last = DivideByTen(limbs);
    decimal.scale = static_cast<std::uint8_t>(places);
    decimal.low = std::uint64_t{limbs[1]} << 32 | limbs[0];
    decimal.high = limbs[2];
    // Cutting one digit at a time leaves the first digit that went in `last`: from 5 on it rounds up.
    if (last >= 5 && ++decimal.low == 0) ++decimal.high;
    return decimal;
}

bool IsBlankText(std::u16string_view text) noexcept {
    return text.find_first_not_of(std::u16string_view(u"\t \0", 3)) == std::u16string_view::npos;
}

std::u16string TextOf(const Value& value) {
    switch (value.kind) {
        case Value::Kind::Null:
            return {};
        case Value::Kind::Boolean:
            return value.boolean ? u"True" : u"False";
        case Value::Kind::Integer:
            return text::ToUtf16(std::to_string(value.integer));
        case Value::Kind::Double:
            return text::ToUtf16(DoubleText(value.number));
        case Value::Kind::Currency:
            return text::ToUtf16(DecimalText(FromInteger(value.integer, 4)));
        case Value::Kind::Decimal:
            return text::ToUtf16(DecimalText(value.decimal));
        case Value::Kind::DateTime:
            return text::ToUtf16(MomentText(value));
        case Value::Kind::Text:
            return value.text;
        case Value::Kind::Binary:
            break;
    }
    return {};
}

std::optional<Decimal> DecimalIn(std::u16string_view text) {
    const std::string utf8 = text::ToUtf8(text);
    text::DecimalDigits digits;
    if (text::ParseDecimal(Trimmed(utf8), digits) != text::NumberForm::Number) return std::nullopt;
    return Decimal{digits.low, digits.high, digits.scale, digits.negative};
}

std::optional<Moment> MomentIn(std::u16string_view text) {
    const std::string utf8 = text::ToUtf8(text);
    Scanner scanner(Trimmed(utf8));
    const auto year = scanner.Number(4, 4);
    if (!year) return std::nullopt;
    const bool separated = scanner.Skip("-/.");
    const auto month = scanner.Number(separated ? 1 : 2, 2);
    if (!month || (separated && !scanner.Skip("-/."))) return std::nullopt;
    const auto day = scanner.Number(separated ? 1 : 2, 2);
    if (!day) return std::nullopt;
    const calendar::Date date{*year, *month, *day};
    if (!calendar::IsValid(date)) return std::nullopt;
    Moment moment{calendar::ToJulianDay(date), 0};
    if (scanner.atEnd()) return moment;
    if (!scanner.Skip(" T")) return std::nullopt;
    const auto time = TimeIn(scanner);
    if (!time || !scanner.atEnd()) return std::nullopt;
    moment.milliseconds = *time;
    return moment;
}

std::optional<bool> TruthIn(std::u16string_view text) {
    const std::string utf8 = text::ToUtf8(text);
    std::string word(Trimmed(utf8));
    std::transform(word.begin(), word.end(), word.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    constexpr std::array kTrue{"T", "TRUE", "Y", "YES", "ON", ".T.", ".Y."};
    constexpr std::array kFalse{"F", "FALSE", "N", "NO", "OFF", ".F.", ".N."};
    if (std::find(kTrue.begin(), kTrue.end(), word) != kTrue.end()) return true;
    if (std::find(kFalse.begin(), kFalse.end(), word) != kFalse.end()) return false;
    const auto number = DecimalIn(text);
    if (!number) return std::nullopt;
    return number->low != 0 || number->high != 0;
}

}  // namespace zu::dbf::write
