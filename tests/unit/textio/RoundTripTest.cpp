// What is written and read again under the same settings gives the same values. Where a format itself loses
// something (docs/text-formats.md lists it), the values here are chosen within what it keeps.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "portable/calendar/Calendar.h"
#include "portable/textio/FieldRenderer.h"
#include "portable/textio/LineCutter.h"
#include "portable/textio/ValueReader.h"

namespace zu::textio {
namespace {

using Random = std::mt19937;

const Encoding& Western() {
    static const Encoding encoding(*text::CodePage::Find(1252));
    return encoding;
}

int Below(Random& random, int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

struct Formats {
    ExportFormat out;
    ImportFormat in;
};

/// Settings that both formats share, as a client would set them.
Formats RandomDelimited(Random& random) {
    static const char16_t* const separators[] = {u",", u";", u"\t", u"|", u";;", u"<>", u" | "};
    static const char16_t* const quotes[] = {u"\"", u"'", u"\u00AB"};
    static const char16_t* const dateSeparators[] = {u"", u".", u"/", u"-", u" "};
    Formats formats;
    formats.out.ApplyPreset(kDelimited);
    formats.in.ApplyPreset(kDelimited);
    const char16_t* const separator = separators[Below(random, 7)];
    formats.out.plainOptions().separator = separator;
    formats.in.SetSeparator(separator);
    const char16_t* const quote = quotes[Below(random, 3)];
    formats.out.SetQuote(quote);
    formats.in.SetQuote(quote);
    formats.out.plainOptions().numbersQuoted = Below(random, 2) == 0;
    const int form = Below(random, 8);
    const char16_t* const dateSeparator = dateSeparators[Below(random, 5)];
    formats.out.SetDateForm(form);
    formats.in.SetDateForm(form);
    formats.out.SetDateSeparator(dateSeparator);
    formats.in.SetDateSeparator(dateSeparator);
    return formats;
}

Formats RandomFixed(Random& random) {
    Formats formats;
    formats.out.ApplyPreset(kFixed);
    formats.in.ApplyPreset(kFixed);
    // Names have no common width, so that lines of fixed length cannot hold full ones.
    const int form = Below(random, 6);
    formats.out.SetDateForm(form);
    formats.in.SetDateForm(form);
    if (Below(random, 2) == 0) {
        formats.out.SetNumberPad(u"0");
        formats.out.plainOptions().signPosition = 0;
        formats.out.plainOptions().negativeSymbol = u"";
    }
    const int length = 25 + Below(random, 10);
    formats.out.SetLengthOfDouble(length);
    formats.in.SetLengthOfDouble(length);
    return formats;
}

struct Record {
    std::int32_t small, whole, byte, day;
    float single;
    double number;
    std::int64_t currency, units;
    std::u16string name;
    bool truth;
    bool noDate;
};

std::u16string RandomText(Random& random) {
    static constexpr std::u16string_view alphabet = u"ab\"',;|<> \t\u00AB\u00FC\u20ACZ09";
    std::u16string text;
    for (int i = Below(random, 13); i > 0; --i)
        text += alphabet[static_cast<std::size_t>(Below(random, static_cast<int>(alphabet.size())))];
    while (text.ends_with(u' '))
        text.pop_back();
    return text;
}

Record RandomRecord(Random& random, bool delimited) {
    Record record{};
    record.small = Below(random, 65536) - 32768;
    record.whole = static_cast<std::int32_t>(random());
    record.byte = Below(random, 256);
    record.day = calendar::ToJulianDay({100, 1, 1}) + Below(random, 3'615'000);
    if (delimited) {
        do {
            record.single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        } while (!std::isfinite(record.single));
        do {
            record.number = std::bit_cast<double>((static_cast<std::uint64_t>(random()) << 32) |
                                                  static_cast<std::uint32_t>(random()));
        } while (!std::isfinite(record.number));
    } else {
        record.single = static_cast<float>(Below(random, 20000) - 10000) / 128;
        record.number = static_cast<double>(Below(random, 200'000'000) - 100'000'000) / 1e5;
    }
    // Both go through double precision on their way back.
    record.currency = static_cast<std::int64_t>(random()) * 1000 - 2'000'000'000'000;
    record.units = static_cast<std::int64_t>(random()) - 2'000'000'000;
    record.name = RandomText(random);
    record.truth = Below(random, 2) == 0;
    record.noDate = Below(random, 10) == 0;
    return record;
}

const std::vector<ExportField> kFields = {{"SMALL", 2, 6, 0},   {"WHOLE", 3, 11, 0},  {"SINGLE", 4, 20, 0},
                                          {"NUMBER", 5, 20, 0}, {"PRICE", 6, 21, 4},  {"DAY", 7, 8, 0},
                                          {"NAME", 8, 12, 0},   {"TRUTH", 11, 1, 0},  {"AMOUNT", 14, 14, 2},
                                          {"BYTE", 17, 3, 0},   {"NOTE", 100, 10, 0}, {"LAST", 3, 11, 0}};

std::string Write(const Formats& formats, const Record& record) {
    FieldRenderer<char> renderer(formats.out, kFields, Western());
    const Cell cells[] = {Cell::OfInteger(record.small),
                          Cell::OfInteger(record.whole),
                          Cell::OfNumber(static_cast<double>(record.single), Cell::Kind::Single),
                          Cell::OfNumber(record.number),
                          Cell::OfInteger(record.currency, Cell::Kind::Currency),
                          record.noDate ? Cell() : Cell::OfInteger(record.day, Cell::Kind::Date),
                          Cell::OfCharacters(record.name),
                          Cell::OfBoolean(record.truth),
                          Cell::OfDecimal(record.units, 2),
                          Cell::OfInteger(record.byte),
                          Cell::OfCharacters(record.name),
                          Cell::OfInteger(1)};
    TextBuffer<char> out;
    renderer.RenderLine(cells, out);
    std::string line(out.view());
    line.resize(line.size() - 2);
    return line;
}

void ExpectSame(const Formats& formats, const Record& record, const std::string& line) {
    using Kind = ReadValue<char>::Kind;
    LineCutter<char> cutter(formats.in.preset(), Western().Encode(formats.in.separator()),
                            Western().Encode(formats.in.quote()));
    ValueReader reader(formats.in);
    cutter.Start(line);
    const auto next = [&](std::size_t field) {
        const ImportField target{kFields[field].type, kFields[field].size};
        return reader.Read<char>(target, cutter.Next(reader.WidthOf(target)));
    };
    EXPECT_EQ(next(0).integer, record.small);
    EXPECT_EQ(next(1).integer, record.whole);
    EXPECT_EQ(next(2).number, static_cast<double>(record.single));
    EXPECT_EQ(next(3).number, record.number);
    EXPECT_EQ(std::llround(next(4).number * 1e4), record.currency);
    const auto day = next(5);
    EXPECT_EQ(day.kind, record.noDate ? Kind::NoDate : Kind::Date);
    if (!record.noDate) {
        EXPECT_EQ(day.integer, record.day);
    }
    EXPECT_EQ(next(6).text, Western().Encode(record.name));
    EXPECT_EQ(next(7).text, record.truth ? "T" : "F");
    EXPECT_EQ(std::llround(next(8).number * 1e2), record.units);
    EXPECT_EQ(next(9).integer, record.byte);
    EXPECT_EQ(next(10).text, Western().Encode(record.name));
    EXPECT_EQ(next(11).integer, 1);
    EXPECT_TRUE(cutter.isAtEnd());
}

TEST(RoundTrip, DelimitedLinesGiveTheirValuesBack) {
    Random random(5);
    for (int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round) {
        const Formats formats = RandomDelimited(random);
        const Record record = RandomRecord(random, true);
        const std::string line = Write(formats, record);
        SCOPED_TRACE(line);
        ExpectSame(formats, record, line);
    }
}

TEST(RoundTrip, FixedLinesGiveTheirValuesBack) {
    Random random(6);
    for (int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round) {
        const Formats formats = RandomFixed(random);
        Record record = RandomRecord(random, false);
        if (formats.out.options().negativeSymbol.empty()) {
            // Without a minus only numbers from zero up come back.
            record.small = std::abs(record.small) % 32768;
            record.whole = std::abs(record.whole / 2);
            record.single = std::fabs(record.single);
            record.number = std::fabs(record.number);
            record.currency = std::abs(record.currency);
            record.units = std::abs(record.units);
        }
        const std::string line = Write(formats, record);
        SCOPED_TRACE(line);
        ExpectSame(formats, record, line);
    }
}

}  // namespace
}  // namespace zu::textio
