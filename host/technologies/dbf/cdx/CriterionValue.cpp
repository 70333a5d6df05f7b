#include "host/technologies/dbf/cdx/CriterionValue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "portable/calendar/Calendar.h"
#include "portable/error/Error.h"
#include "portable/text/NumberText.h"
#include "portable/text/Utf.h"

namespace zu::dbf::cdx {

namespace {

using technologies::Decimal;
using technologies::Value;

constexpr double kUnitsPerCurrency = 10000.0;
constexpr std::int32_t kSecond = 1000;

[[noreturn]] void Mismatch(const Value& value, const char* expected) {
    std::string text = "the key value cannot be searched for";
    if (value.kind == Value::Kind::Text)
        text = "the key value \"" + text::ToUtf8(value.text) + "\" does not fit";
    throw Error(ErrorKind::TypeMismatch, text + ": expected " + expected);
}

std::string Trimmed(std::u16string_view characters) {
    const std::string text = text::ToUtf8(characters);
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

text::DecimalDigits DigitsOf(const Decimal& decimal) {
    return {decimal.low, decimal.high, decimal.scale, decimal.negative};
}

/// Takes runs of digits and single characters off the front of a text.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    bool atEnd() const noexcept { return text_.empty(); }
    bool Take(char c) noexcept {
        if (text_.empty() || text_.front() != c) return false;
        text_.remove_prefix(1);
        return true;
    }
    /// Digits, at least `least` and at most `most` of them.
    bool Number(std::size_t least, std::size_t most, int& value) noexcept {
        value = 0;
        std::size_t digits = 0;
        while (digits < most && digits < text_.size() && text_[digits] >= '0' && text_[digits] <= '9') {
            value = value * 10 + (text_[digits++] - '0');
        }
        text_.remove_prefix(digits);
        return digits >= least;
    }

private:
    std::string_view text_;
};

bool TakeDate(Scanner& scanner, calendar::Date& date) {
    Scanner trial = scanner;
    if (trial.Number(4, 4, date.year)) {
        for (const char separator : {'\0', '-', '/', '.'}) {
            Scanner rest = trial;
            const std::size_t least = separator == '\0' ? 2 : 1;
            const auto divide = [&] { return separator == '\0' || rest.Take(separator); };
            if (divide() && rest.Number(least, 2, date.month) && divide() &&
                rest.Number(least, 2, date.day)) {
                scanner = rest;
                return true;
            }
        }
    }
    trial = scanner;
    if (trial.Number(1, 2, date.day) && trial.Take('.') && trial.Number(1, 2, date.month) &&
        trial.Take('.') && trial.Number(4, 4, date.year)) {
        scanner = trial;
        return true;
    }
    return false;
}

bool TakeTime(Scanner& scanner, std::int32_t& milliseconds) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!scanner.Take(' ') && !scanner.Take('T')) return false;
    if (!scanner.Number(1, 2, hour) || !scanner.Take(':') || !scanner.Number(2, 2, minute)) return false;
    if (scanner.Take(':') && !scanner.Number(2, 2, second)) return false;
    milliseconds = ((hour * 60 + minute) * 60 + second) * kSecond;
    return hour < 24 && minute < 60 && second < 60;
}

std::optional<Moment> ParseMoment(std::string_view text) {
    if (text.empty()) return Moment{};
    Scanner scanner(text);
    calendar::Date date;
    if (!TakeDate(scanner, date) || !calendar::IsValid(date)) return std::nullopt;
    Moment moment{calendar::ToJulianDay(date), 0};
    if (!scanner.atEnd() && (!TakeTime(scanner, moment.milliseconds) || !scanner.atEnd()))
        return std::nullopt;
    return moment;
}

std::optional<bool> ParseTruth(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    constexpr std::array<std::string_view, 7> kTrue{"T", "TRUE", "Y", "YES", ".T.", ".Y.", "ON"};
    constexpr std::array<std::string_view, 8> kFalse{"F", "FALSE", "N", "NO", ".F.", ".N.", "OFF", ""};
    if (std::find(kTrue.begin(), kTrue.end(), text) != kTrue.end()) return true;
    if (std::find(kFalse.begin(), kFalse.end(), text) != kFalse.end()) return false;
    double number = 0;
    if (text::ParseNumber(text, number) == text::NumberForm::Number) return number != 0;
    return std::nullopt;
}

// Digits without an exponent where they can be told so, as people write numbers into text fields.
std::string NumberAsText(double number) {
    char digits[40];
    for (unsigned decimals = 0; decimals <= 15; ++decimals) {
        constexpr unsigned kWidth = 32;
        double back = 0;
        if (!text::PrintNumber(number, kWidth, decimals, digits)) break;
        if (text::ParseNumber(std::string_view(digits, kWidth), back) == text::NumberForm::Number &&
            back == number) {
            const std::string_view all(digits, kWidth);
            return std::string(all.substr(std::min(all.find_first_not_of(' '), all.size())));
        }
    }
    std::snprintf(digits, sizeof digits, "%.17g", number);
    std::string text = digits;
    std::replace(text.begin(), text.end(), ',', '.');  // the process may have set a locale
    return text;
}

std::string DayAsText(std::int32_t julianDay) {
    if (julianDay == 0) return {};
    const calendar::Date date = calendar::FromJulianDay(julianDay);
    char digits[40];
    std::snprintf(digits, sizeof digits, "%04d%02d%02d", date.year, date.month, date.day);
    return digits;
}

std::string PlainText(const Value& value) {
    switch (value.kind) {
        case Value::Kind::Boolean:
            return value.boolean ? "T" : "F";
        case Value::Kind::Integer:
            return std::to_string(value.integer);
        case Value::Kind::DateTime:
            return DayAsText(value.julianDay);
        case Value::Kind::Binary:
            Mismatch(value, "a text");
        default:
            return NumberAsText(NumberOf(value));
    }
}

}  // namespace

double NumberOf(const Value& value) {
    switch (value.kind) {
        case Value::Kind::Integer:
            return static_cast<double>(value.integer);
        case Value::Kind::Double:
            return value.number;
        case Value::Kind::Currency:
            return static_cast<double>(value.integer) / kUnitsPerCurrency;
        case Value::Kind::Decimal:
            return text::ToDouble(DigitsOf(value.decimal));
        case Value::Kind::Text: {
            double number = 0;
            if (text::ParseNumber(Trimmed(value.text), number) != text::NumberForm::Number) {
                Mismatch(value, "a number");
            }
            return number;
        }
        default:
            Mismatch(value, "a number");
    }
}

Moment MomentOf(const Value& value) {
    if (value.kind == Value::Kind::DateTime) return {value.julianDay, value.milliseconds};
    if (value.kind == Value::Kind::Text) {
        if (const auto moment = ParseMoment(Trimmed(value.text))) return *moment;
    }
    Mismatch(value, "a date");
}

bool TruthOf(const Value& value) {
    if (value.kind == Value::Kind::Boolean) return value.boolean;
    if (value.kind == Value::Kind::Text) {
        if (const auto truth = ParseTruth(Trimmed(value.text))) return *truth;
        Mismatch(value, "a truth value");
    }
    if (value.kind == Value::Kind::DateTime || value.kind == Value::Kind::Binary) {
        Mismatch(value, "a truth value");
    }
    return NumberOf(value) != 0;
}

std::optional<std::string> BytesOf(const Value& value, const text::CodePage& codePage) {
    if (value.kind == Value::Kind::Text) return codePage.Encode(value.text);
    return PlainText(value);
}

bool IsBlankText(const Value& value) noexcept {
    return value.kind == Value::Kind::Text &&
           std::all_of(value.text.begin(), value.text.end(), [](char16_t c) { return c == u' '; });
}

}  // namespace zu::dbf::cdx
