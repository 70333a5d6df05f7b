#include <gtest/gtest.h>

#include <random>

#include "portable/text/Utf.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::string ShownBound(const std::optional<Result>& bound) {
    if (!bound) return "open";
    std::string text = ShownResult(*bound);
    for (char& c : text) {
        if (c == '\0') c = '0';
        if (c == '\xFF') c = '~';
    }
    return text;
}

/// `[low .. high]`, round brackets for bounds that are not included, `low...` for prefixes, `-` for nothing.
std::string Range(std::u16string_view condition, std::u16string_view key) {
    const RecordBuilder builder = SampleRecord();
    const auto range =
        Program::Compile(condition, builder.layout).RangeOf(Program::Compile(key, builder.layout));
    if (!range) return "-";
    if (range->prefix) return ShownBound(range->low) + "...";
    return (range->lowIncluded ? "[" : "(") + ShownBound(range->low) + " .. " + ShownBound(range->high) +
           (range->highIncluded ? "]" : ")");
}

TEST(KeyRange, ComesFromEveryComparison) {
    EXPECT_EQ(Range(u"CUSTOMER = 'Miller  '", u"CUSTOMER"), "[\"Miller\" .. \"Miller\"]");
    EXPECT_EQ(Range(u"'Miller' == CUSTOMER", u"customer"), "[\"Miller\" .. \"Miller\"]");
    EXPECT_EQ(Range(u"CUSTOMER > 'M'", u"CUSTOMER"), "(\"M\" .. open]");
    EXPECT_EQ(Range(u"CUSTOMER >= 'M'", u"CUSTOMER"), "[\"M\" .. open]");
    EXPECT_EQ(Range(u"CUSTOMER < 'M'", u"CUSTOMER"), "[open .. \"M\")");
    EXPECT_EQ(Range(u"'M' > CUSTOMER", u"CUSTOMER"), "[open .. \"M\")");
    EXPECT_EQ(Range(u"ORDERED < {2024-01-31}", u"ORDERED"), "[open .. 2024-01-31)");
    EXPECT_EQ(Range(u"CUSTOMER <> 'M'", u"CUSTOMER"), "-");
}

TEST(KeyRange, ComesFromBetweenAndIn) {
    EXPECT_EQ(Range(u"ID BETWEEN 5 AND 7", u"ID"), "[5 .. 7]");
    EXPECT_EQ(Range(u"COUNTRY IN ('GB', 'DE', 'FR')", u"COUNTRY"), "[\"DE\" .. \"GB\"]");
    EXPECT_EQ(Range(u"ID NOT BETWEEN 5 AND 7", u"ID"), "-");
    EXPECT_EQ(Range(u"ID BETWEEN 5 AND QTY", u"ID"), "-");
}

TEST(KeyRange, ComesFromBeginnings) {
    EXPECT_EQ(Range(u"CUSTOMER LIKE 'Mil%'", u"CUSTOMER"), "\"Mil\"...");
    EXPECT_EQ(Range(u"LEFT(CUSTOMER, 3) = 'Mil'", u"CUSTOMER"), "\"Mil\"...");
    EXPECT_EQ(Range(u"SUBSTR(CUSTOMER, 1, 3) = 'Mil'", u"CUSTOMER"), "\"Mil\"...");
    EXPECT_EQ(Range(u"UPPER(CUSTOMER) LIKE 'MIL%'", u"UPPER(CUSTOMER)"), "\"MIL\"...");
    EXPECT_EQ(Range(u"CUSTOMER LIKE '%il%'", u"CUSTOMER"), "-");
    EXPECT_EQ(Range(u"CUSTOMER LIKE '%'", u"CUSTOMER"), "-");
    EXPECT_EQ(Range(u"SUBSTR(CUSTOMER, 2, 3) = 'ill'", u"CUSTOMER"), "-");
}

TEST(KeyRange, JoinsAllTermsOfAnAnd) {
    EXPECT_EQ(Range(u"PAID AND CUSTOMER >= 'A' AND ID = 3 AND CUSTOMER < 'C'", u"CUSTOMER"),
              "[\"A\" .. \"C\")");
    EXPECT_EQ(Range(u"CUSTOMER >= 'A' AND CUSTOMER >= 'B'", u"CUSTOMER"), "[\"B\" .. open]");
    EXPECT_EQ(Range(u"CUSTOMER >= 'A' AND CUSTOMER = 'B'", u"CUSTOMER"), "[\"B\" .. \"B\"]");
    EXPECT_EQ(Range(u"CUSTOMER = 'A' OR CUSTOMER = 'B'", u"CUSTOMER"), "-");
    EXPECT_EQ(Range(u"NOT CUSTOMER = 'A'", u"CUSTOMER"), "-");
}

TEST(KeyRange, KnowsNothingOfOtherExpressions) {
    EXPECT_EQ(Range(u"CUSTOMER = 'A'", u"COUNTRY"), "-");
    EXPECT_EQ(Range(u"UPPER(CUSTOMER) = 'A'", u"CUSTOMER"), "-");
    EXPECT_EQ(Range(u"CUSTOMER = NULL", u"CUSTOMER"), "-");
    EXPECT_EQ(Range(u"CUSTOMER = 'Ω'", u"CUSTOMER"), "-");
    EXPECT_EQ(Range(u"AMOUNT + 1", u"AMOUNT"), "-");
    EXPECT_EQ(Range(u"ID = 5", u"RECNO()"), "-");
}

TEST(KeyRange, IncludesTheBoundsOfNumbers) {
    EXPECT_EQ(Range(u"ID > 5", u"ID"), "[5 .. open]");
    EXPECT_EQ(Range(u"ID < 5", u"ID"), "[open .. 5]");
}

TEST(KeyRange, TakesDaysAndMomentsForEachOther) {
    EXPECT_EQ(Range(u"ORDERED < {2024-01-31 12:00:00}", u"ORDERED"), "[open .. 2024-01-31 12:00:00.000]");
    EXPECT_EQ(Range(u"STAMP >= {2024-01-31}", u"STAMP"), "[2024-01-31 00:00:00.000 .. open]");
}

TEST(KeyRange, FollowsFromFieldsWithOneValue) {
    EXPECT_EQ(Range(u"CUSTOMER = 'Miller'", u"UPPER(CUSTOMER)"), "[\"MILLER\" .. \"MILLER\"]");
    EXPECT_EQ(Range(u"ORDERED = {2024-01-31}", u"DTOS(ORDERED)"), "[\"20240131\" .. \"20240131\"]");
    EXPECT_EQ(Range(u"ID = 5", u"STR(ID, 4)"), "[\"   5\" .. \"   5\"]");
    EXPECT_EQ(Range(u"ORDERED = {2024-01-31}", u"YEAR(ORDERED)"), "[2024 .. 2024]");
    EXPECT_EQ(Range(u"CUSTOMER = 'Miller'", u"STUFF(CUSTOMER, 20, 0, 'x')"), "-");
    EXPECT_EQ(Range(u"PAID = .F.", u"IIF(PAID, 'a', 'b')"), "-");
    EXPECT_EQ(Range(u"ORDERED > {2024-01-31}", u"DTOS(ORDERED)"), "[\"20240131\" .. open]");
    EXPECT_EQ(Range(u"CUSTOMER LIKE 'Mil%'", u"UPPER(CUSTOMER)"), "\"MIL\"...");
}

TEST(KeyRange, OfJoinedTextsComesFromTheLeadingParts) {
    const auto* key = u"COUNTRY+DTOS(ORDERED)+STR(ID,3)";
    EXPECT_EQ(Range(u"COUNTRY = 'DE'", key), "[\"DE\" .. \"DE~~~~~~~~~~~\"]");
    EXPECT_EQ(Range(u"COUNTRY = 'DE' AND ORDERED = {2024-01-31}", key),
              "[\"DE20240131\" .. \"DE20240131~~~\"]");
    EXPECT_EQ(Range(u"COUNTRY = 'DE' AND ORDERED >= {2024-01-31}", key),
              "[\"DE20240131\" .. \"DE~~~~~~~~~~~\"]");
    EXPECT_EQ(Range(u"COUNTRY = 'DE' AND ORDERED BETWEEN {2024-01-01} AND {2024-01-31}", key),
              "[\"DE20240101\" .. \"DE20240131~~~\"]");
    EXPECT_EQ(Range(u"COUNTRY = 'DE' AND ORDERED = {2024-01-31} AND ID = 7", key),
              "[\"DE20240131  7\" .. \"DE20240131  7\"]");
    EXPECT_EQ(Range(u"COUNTRY >= 'D'", key), "[\"D\" .. open]");
    EXPECT_EQ(Range(u"COUNTRY <= 'D'", key), "[open .. \"D ~~~~~~~~~~~\"]");
    EXPECT_EQ(Range(u"COUNTRY LIKE 'D%'", key), "[\"D\" .. \"D~~~~~~~~~~~~\"]");
    EXPECT_EQ(Range(u"ORDERED = {2024-01-31}", key), "-");
}

TEST(KeyRange, OfJoinedTextsAllowsForPaddingWithNuls) {
    EXPECT_EQ(Range(u"COUNTRY = 'D' AND CUSTOMER = 'M'", u"COUNTRY+LEFT(CUSTOMER,2)"),
              "[\"D0M0\" .. \"D M \"]");
}

TEST(KeyRange, OfJoinedTextsStopsBehindAPartOfVaryingWidth) {
    EXPECT_EQ(Range(u"CUSTOMER = 'AB' AND COUNTRY = 'DE'", u"TRIM(CUSTOMER)+COUNTRY"),
              "[\"AB\" .. \"AB" + std::string(30, '~') + "\"]");
}

/// Whether a key lies within a range, as the bounds are described.
bool IsWithin(const KeyRange& range, const Result& key, std::size_t width) {
    const auto padded = [width](std::string text, char fill) {
        if (text.size() < width) text.resize(width, fill);
        return text;
    };
    if (key.type != Type::Text) {
        const auto order = [&](const Result& bound) {
            const double a =
                key.type == Type::Number ? key.number : key.julianDay + key.milliseconds / 86400000.0;
            const double b =
                bound.type == Type::Number ? bound.number : bound.julianDay + bound.milliseconds / 86400000.0;
            return a < b ? -1 : a > b ? 1 : 0;
        };
        if (range.low && (range.lowIncluded ? order(*range.low) < 0 : order(*range.low) <= 0)) return false;
        return !range.high || (range.highIncluded ? order(*range.high) <= 0 : order(*range.high) < 0);
    }
    const std::string text = padded(key.text, ' ');
    if (range.prefix) return text.starts_with(range.low->text);
    if (range.low) {
        if (text < padded(range.low->text, '\0')) return false;
        if (!range.lowIncluded && text == padded(range.low->text, ' ')) return false;
    }
    if (range.high) {
        if (text > padded(range.high->text, ' ')) return false;
        if (!range.highIncluded && text == padded(range.high->text, ' ')) return false;
    }
    return true;
}

TEST(KeyRange, HoldsTheKeyOfEveryRecordThatMeetsTheCondition) {
    static constexpr const char* kTexts[] = {"", "a", "ab", "b", "A", "a b", "B"};
    static constexpr const char* kDays[] = {"20240131", "20240201", "20231231", "        "};
    static constexpr const char16_t* kKeys[] = {
        u"C",          u"UPPER(C)",           u"D",          u"N",       u"C+E",
        u"TRIM(C)+E",  u"E+DTOS(D)+STR(N,2)", u"UPPER(E)+C", u"DTOS(D)", u"LEFT(C,2)+E",
        u"STR(N,3)+C", u"C+DTOS(D)"};
    static constexpr const char* kTerms[] = {"C = 'a'",
                                             "C > 'a'",
                                             "C <= 'a b'",
                                             "E = 'ab'",
                                             "E >= 'a'",
                                             "E < 'b'",
                                             "D = {2024-01-31}",
                                             "D > {2024-01-01}",
                                             "D <= {2024-01-31}",
                                             "D < {2024-02-01 12:00:00}",
                                             "N = 2",
                                             "N > 1",
                                             "N BETWEEN 1 AND 2",
                                             "C LIKE 'a%'",
                                             "E LIKE 'a%'",
                                             "C IN ('a', 'b')",
                                             "E IN ('ab', 'a b')",
                                             "LEFT(C, 1) = 'a'",
                                             "UPPER(C) = 'A'",
                                             "UPPER(E) LIKE 'A%'",
                                             "DTOS(D) >= '20240131'",
                                             "C BETWEEN 'a' AND 'b'",
                                             "E = 'a'",
                                             "C = ''",
                                             "E < ''"};
    std::mt19937 random(5);
    RecordBuilder builder;
    builder.Add("C", Storage::Character, 4)
        .Add("E", Storage::Character, 3)
        .Add("D", Storage::DateText, 8)
        .Add("N", Storage::NumberText, 2)
        .Finish();
    int hits = 0;
    for (int round = 0; round < 400; ++round) {
        std::string source = kTerms[random() % std::size(kTerms)];
        for (unsigned more = random() % 3; more > 0; --more)
            source += std::string(" AND ") + kTerms[random() % std::size(kTerms)];
        const Program condition = Program::Compile(text::ToUtf16(source), builder.layout);
        const Program key = Program::Compile(kKeys[random() % std::size(kKeys)], builder.layout);
        const auto range = condition.RangeOf(key);
        if (!range) continue;
        for (int i = 0; i < 150; ++i) {
            std::string c = kTexts[random() % std::size(kTexts)];
            std::string e = kTexts[random() % std::size(kTexts)];
            if (random() % 3 == 0) c.resize(4, '\0');
            if (random() % 3 == 0) e.resize(3, '\0');
            builder.Set("C", c).Set("E", e).Set("D", kDays[random() % std::size(kDays)]);
            builder.Set("N", std::to_string(random() % 4));
            if (!condition.Test(builder.row())) continue;
            Result value;
            key.Evaluate(builder.row(), value);
            EXPECT_TRUE(IsWithin(*range, value, key.textWidth())) << source << " for " << key.canonical();
            ++hits;
        }
    }
    EXPECT_GT(hits, 1000);
}

}  // namespace
}  // namespace zu::expression::testing
