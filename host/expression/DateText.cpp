#include "host/expression/DateText.h"

#include <array>

#include "portable/calendar/Calendar.h"

namespace zu::expression {

namespace {

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

/// Walks over a text; nothing here reads past its end.
class Reader {
public:
    explicit Reader(std::string_view text) noexcept : text_(text) {}

    char peek() const noexcept { return position_ < text_.size() ? text_[position_] : '\0'; }
    bool atEnd() const noexcept { return position_ >= text_.size(); }
    void Skip() noexcept { ++position_; }
    void SkipBlanks() noexcept {
        while (!atEnd() && (peek() == ' ' || peek() == '\t'))
            Skip();
    }
    bool Accept(char c) noexcept {
        if (atEnd() || peek() != c) return false;
        Skip();
        return true;
    }
    /// Reads up to `most` digits; answers how many there were.
    int Digits(int most, int& value) noexcept {
        int count = 0;
        value = 0;
        while (count < most && IsDigit(peek())) {
            value = value * 10 + (peek() - '0');
            Skip();
            ++count;
        }
        return IsDigit(peek()) ? most + 1 : count;
    }

private:
    std::string_view text_;
    std::size_t position_ = 0;
};

int FullYear(int year, int digits) noexcept {
    if (digits > 2) return year;
    return year < 50 ? year + 2000 : year + 1900;
}

bool ReadHalf(Reader& reader, int& hour) noexcept {
    const char letter = reader.peek();
    const bool afternoon = letter == 'P' || letter == 'p';
    if (!afternoon && letter != 'A' && letter != 'a') return true;
    reader.Skip();
    if (!reader.Accept('M') && !reader.Accept('m')) return false;
    if (hour < 1 || hour > 12) return false;
    hour = hour % 12 + (afternoon ? 12 : 0);
    return true;
}

bool ReadTime(Reader& reader, std::int32_t& milliseconds) noexcept {
    int hour = 0;
    int minute = 0;
    int second = 0;
    int thousandths = 0;
    const int hourDigits = reader.Digits(2, hour);
    if (hourDigits < 1 || hourDigits > 2 || !reader.Accept(':')) return false;
    if (reader.Digits(2, minute) != 2) return false;
    if (reader.Accept(':')) {
        if (reader.Digits(2, second) != 2) return false;
        if (reader.Accept('.')) {
            const int digits = reader.Digits(3, thousandths);
            if (digits < 1 || digits > 3) return false;
            for (int i = digits; i < 3; ++i)
                thousandths *= 10;
        }
    }
    reader.SkipBlanks();
    if (!ReadHalf(reader, hour)) return false;
    if (hour > 23 || minute > 59 || second > 59) return false;
    milliseconds = ((hour * 60 + minute) * 60 + second) * 1000 + thousandths;
    return true;
}

bool ReadDay(Reader& reader, std::int32_t& julianDay) noexcept {
    std::array<int, 3> part{};
    std::array<int, 3> digits{};
    digits[0] = reader.Digits(8, part[0]);
    calendar::Date date;
    if (digits[0] == 8) {
        date = {part[0] / 10000, part[0] / 100 % 100, part[0] % 100};
    } else {
        const char separator = reader.peek();
        if (separator != '-' && separator != '/' && separator != '.') return false;
        for (std::size_t i = 1; i < 3; ++i) {
            if (!reader.Accept(separator)) return false;
            digits[i] = reader.Digits(4, part[i]);
        }
        for (const int count : digits) {
            if (count < 1 || count > 4) return false;
        }
        if (digits[0] > 2) {
            date = {part[0], part[1], part[2]};
        } else if (separator == '.') {
            date = {FullYear(part[2], digits[2]), part[1], part[0]};
        } else {
            date = {FullYear(part[2], digits[2]), part[0], part[1]};
        }
    }
    if (!calendar::IsValid(date)) return false;
    julianDay = calendar::ToJulianDay(date);
    return true;
}

bool IsEmptyDate(std::string_view text) noexcept {
    return text.find_first_not_of(std::string_view(" \t-/.:\0", 7)) == std::string_view::npos;
}

void AppendTwo(int value, std::string& out) {
    out.push_back(static_cast<char>('0' + value / 10 % 10));
    out.push_back(static_cast<char>('0' + value % 10));
}

void AppendTime(std::int32_t milliseconds, std::string_view separator, std::string& out) {
    const std::int32_t seconds = milliseconds / 1000;
    AppendTwo(seconds / 3600, out);
    out.append(separator);
    AppendTwo(seconds / 60 % 60, out);
    out.append(separator);
    AppendTwo(seconds % 60, out);
}

}  // namespace

bool ParseDate(std::string_view text, DateValue& out) noexcept {
    out = DateValue{};
    if (IsEmptyDate(text)) {
        out.isEmpty = true;
        return true;
    }
    Reader reader(text);
    reader.SkipBlanks();
    if (!ReadDay(reader, out.julianDay)) return false;
    const bool marked = reader.Accept('T') || reader.Accept('t');
    reader.SkipBlanks();
    if (!reader.atEnd() || marked) {
        out.hasTime = true;
        if (!ReadTime(reader, out.milliseconds)) return false;
        reader.SkipBlanks();
    }
    return reader.atEnd();
}

bool ParseDigitDate(const char* digits, std::int32_t& julianDay) noexcept {
    int value = 0;
    for (int i = 0; i < 8; ++i) {
        if (!IsDigit(digits[i])) return false;
        value = value * 10 + (digits[i] - '0');
    }
    const calendar::Date date{value / 10000, value / 100 % 100, value % 100};
    if (!calendar::IsValid(date)) return false;
    julianDay = calendar::ToJulianDay(date);
    return true;
}

void AppendDigitDate(std::int32_t julianDay, std::string& out) {
    const calendar::Date date = calendar::FromJulianDay(julianDay);
    AppendTwo(date.year / 100, out);
    AppendTwo(date.year % 100, out);
    AppendTwo(date.month, out);
    AppendTwo(date.day, out);
}

void AppendReadableDate(std::int32_t julianDay, std::string& out) {
    const calendar::Date date = calendar::FromJulianDay(julianDay);
    AppendTwo(date.month, out);
    out.push_back('/');
    AppendTwo(date.day, out);
    out.push_back('/');
    AppendTwo(date.year / 100, out);
    AppendTwo(date.year % 100, out);
}

void AppendDigitTime(std::int32_t milliseconds, std::string& out) {
    AppendTime(milliseconds, "", out);
}

void AppendReadableTime(std::int32_t milliseconds, std::string& out) {
    AppendTime(milliseconds, ":", out);
}

}  // namespace zu::expression
