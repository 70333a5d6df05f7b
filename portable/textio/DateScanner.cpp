#include "portable/textio/DateScanner.h"

#include "portable/calendar/Calendar.h"
#include "portable/textio/MonthNames.h"

namespace zu::textio {

namespace {

/// The first year of automation dates.
constexpr int kFirstYear = 100;
/// Years of two digits up to this one belong to the 2000s, as automation has it.
constexpr int kLastYearOfThisCentury = 29;

constexpr char kUnknown = '\x01';

char Narrow(char16_t c) noexcept {
    return c < 0x80 ? static_cast<char>(c) : kUnknown;
}

char Lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsLetter(char c) noexcept {
    return Lower(c) >= 'a' && Lower(c) <= 'z';
}

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view text) noexcept {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// A number of at most nine digits with blanks around it.
std::optional<int> NumberOf(std::string_view text) noexcept {
    text = Trimmed(text);
    if (text.empty() || text.size() > 9) return std::nullopt;
    int number = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

}  // namespace

DateScanner::DateScanner(std::u16string_view mask, std::u16string_view separator, std::size_t maskLength) {
    for (const char16_t c : mask.substr(0, maskLength))
        mask_ += Lower(Narrow(c));
    if (separator.size() == 1) separator_ = Lower(Narrow(separator.front()));
    digits_ = FindDigits();
}

std::optional<DateScanner::Digits> DateScanner::FindDigits() const noexcept {
    constexpr std::size_t kMostDigits = 9;
    Digits digits;
    for (std::size_t at = 0; at < mask_.size();) {
        const char c = IsSeparator(mask_[at]) ? '\0' : mask_[at];
        Run* const run = c == 'd'   ? &digits.day
                         : c == 'm' ? &digits.month
                         : c == 'y' ? &digits.year
                                    : nullptr;
        if (run == nullptr) {
            ++at;
            continue;
        }
        const std::size_t length = RunAt(at);
        if (run->length != 0 || length > kMostDigits || (c == 'm' && length > 2)) return std::nullopt;
        *run = {at, length};
        at += length;
    }
    if (digits.day.length == 0 || digits.month.length == 0 || digits.year.length == 0) return std::nullopt;
    return digits;
}

/// Reads what CutByContent would cut into runs of full length.
std::optional<std::int32_t> DateScanner::ScanDigits(std::string_view token) const noexcept {
    if (!digits_ || token.size() != mask_.size()) return std::nullopt;
    bool plain = true;
    const auto number = [&](const Run& run) {
        int value = 0;
        for (std::size_t at = run.first; at < run.first + run.length; ++at) {
            plain = plain && IsDigit(token[at]);
            value = value * 10 + (plain ? token[at] - '0' : 0);
        }
        return value;
    };
    const int year = number(digits_->year);
    const int month = number(digits_->month);
    const int day = number(digits_->day);
    return plain ? ToDay(year, month, day) : std::nullopt;
}

bool DateScanner::IsSeparator(char maskCharacter) const noexcept {
    return separator_ && maskCharacter == *separator_;
}

std::string& DateScanner::PartOf(char maskCharacter, Parts& parts) const noexcept {
    switch (IsSeparator(maskCharacter) ? '\0' : maskCharacter) {
        case 'd':
            return parts.day;
        case 'm':
            return parts.month;
        case 'y':
            return parts.year;
        default:
            return parts.other;
    }
}

std::size_t DateScanner::RunAt(std::size_t position) const noexcept {
    std::size_t end = position + 1;
    while (end < mask_.size() && mask_[end] == mask_[position])
        ++end;
    return end - position;
}

DateScanner::Parts DateScanner::CutByMask(std::string_view token) const {
    Parts parts;
    for (std::size_t at = 0; at < mask_.size() && at < token.size(); ++at)
        PartOf(mask_[at], parts) += token[at];
    return parts;
}

std::optional<DateScanner::Parts> DateScanner::CutByContent(std::string_view token) const {
    Parts parts;
    for (std::size_t at = 0; at < mask_.size();) {
        std::string& part = PartOf(mask_[at], parts);
        if (&part == &parts.other) {
            ++at;
            if (!token.empty()) token.remove_prefix(1);
            continue;
        }
        const std::size_t run = RunAt(at);
        const bool name = mask_[at] == 'm' && run > 2;
        std::size_t length = 0;
        while (length < token.size() &&
               (name ? IsLetter(token[length]) : length < run && IsDigit(token[length])))
            ++length;
        part += token.substr(0, length);
        token.remove_prefix(length);
        at += run;
    }
    if (!token.empty()) return std::nullopt;
    return parts;
}

std::optional<std::int32_t> DateScanner::ToDay(const Parts& parts) {
    const std::optional<int> day = NumberOf(parts.day);
    const std::optional<int> year = NumberOf(parts.year);
    if (!day || !year) return std::nullopt;
    const std::optional<int> month = NumberOf(parts.month);
    return ToDay(*year, month ? *month : FindMonth(Trimmed(parts.month)), *day);
}

std::optional<std::int32_t> DateScanner::ToDay(int year, int month, int day) noexcept {
    if (year < kFirstYear) year += year <= kLastYearOfThisCentury ? 2000 : 1900;
    const calendar::Date date{year, month, day};
    if (!calendar::IsValid(date)) return std::nullopt;
    return calendar::ToJulianDay(date);
}

std::optional<std::int32_t> DateScanner::Scan(std::string_view token) const {
    const std::string_view text = Trimmed(token);
    if (const auto day = ScanDigits(text)) return day;
    // Content first: cut by "mmmm" alone, "2024 May 19" would be the 9th.
    if (const std::optional<Parts> parts = CutByContent(text)) {
        if (const auto day = ToDay(*parts)) return day;
    }
    return ToDay(CutByMask(text));
}

}  // namespace zu::textio
