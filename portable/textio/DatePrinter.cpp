#include "portable/textio/DatePrinter.h"

#include <array>
#include <utility>

#include "portable/calendar/Calendar.h"
#include "portable/textio/MonthNames.h"

namespace zu::textio {

namespace {

void AppendNumber(int number, int digits, std::u16string& out) {
    int power = 1;
    for (int i = 1; i < digits; ++i)
        power *= 10;
    for (; power > 0; power /= 10)
        out += static_cast<char16_t>(u'0' + number / power % 10);
}

void AppendName(std::string_view name, std::u16string& out) {
    out.append(name.begin(), name.end());
}

bool Follows(std::u16string_view mask, std::size_t at, std::string_view part) noexcept {
    if (mask.size() - at < part.size()) return false;
    for (std::size_t i = 0; i < part.size(); ++i) {
        char16_t c = mask[at + i];
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
        if (c != static_cast<unsigned char>(part[i])) return false;
    }
    return true;
}

using Writer = void (*)(const calendar::Date&, std::u16string&);

struct Part {
    std::string_view letters;
    Writer write;
};

/// Longer parts stand before shorter ones with the same letters.
constexpr std::array<Part, 5> kParts = {{
    {"yyyy", [](const calendar::Date& date, std::u16string& out) { AppendNumber(date.year, 4, out); }},
    {"mmmm", [](const calendar::Date& date, std::u16string& out) { AppendName(MonthName(date.month), out); }},
    {"mmm",
     [](const calendar::Date& date, std::u16string& out) { AppendName(ShortMonthName(date.month), out); }},
    {"mm", [](const calendar::Date& date, std::u16string& out) { AppendNumber(date.month, 2, out); }},
    {"dd", [](const calendar::Date& date, std::u16string& out) { AppendNumber(date.day, 2, out); }},
}};

const Part* PartAt(std::u16string_view mask, std::size_t at) noexcept {
    for (const Part& part : kParts) {
        if (Follows(mask, at, part.letters)) return &part;
    }
    return nullptr;
}

}  // namespace

DatePrinter::DatePrinter(std::u16string mask) : mask_(std::move(mask)) {}

std::u16string_view DatePrinter::Print(std::int32_t julianDay) {
    if (julianDay == printed_) return text_;
    const calendar::Date date = calendar::FromJulianDay(julianDay);
    text_.clear();
    for (std::size_t at = 0; at < mask_.size();) {
        if (const Part* part = PartAt(mask_, at)) {
            part->write(date, text_);
            at += part->letters.size();
        } else {
            text_ += mask_[at++];
        }
    }
    printed_ = julianDay;
    return text_;
}

}  // namespace zu::textio
