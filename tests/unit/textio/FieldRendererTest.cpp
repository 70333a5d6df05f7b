#include "portable/textio/FieldRenderer.h"

#include <gtest/gtest.h>

#include <limits>

#include "portable/calendar/Calendar.h"
#include "portable/error/Error.h"

namespace zu::textio {
namespace {

ExportFormat Preset(int preset) {
    ExportFormat format;
    format.ApplyPreset(preset);
    return format;
}

const Encoding& Western() {
    static const Encoding encoding(*text::CodePage::Find(1252));
    return encoding;
}

template <class Char = char>
std::basic_string<Char> Render(const ExportFormat& format, const ExportField& field, const Cell& value) {
    FieldRenderer<Char> renderer(format, {field}, Western());
    TextBuffer<Char> out;
    renderer.Render(0, value, out);
    return std::basic_string<Char>(out.view());
}

const ExportField kInteger16{"I2", 2, 6, 0};
const ExportField kInteger32{"I4", 3, 11, 0};
const ExportField kSingle{"R4", 4, 20, 0};
const ExportField kDouble{"R8", 5, 20, 0};
const ExportField kCurrency{"CY", 6, 21, 4};
const ExportField kDate{"DT", 7, 8, 0};
const ExportField kText{"TX", 8, 5, 0};
const ExportField kBoolean{"BO", 11, 1, 0};
const ExportField kDecimal{"DE", 14, 10, 2};
const ExportField kByte{"BY", 17, 3, 0};
const ExportField kLongText{"LT", 100, 10, 0};

Cell Text(std::u16string_view text) {
    return Cell::OfCharacters(text);
}
Cell Currency(std::int64_t units) {
    return Cell::OfInteger(units, Cell::Kind::Currency);
}
Cell Day(int year, int month, int day) {
    return Cell::OfInteger(calendar::ToJulianDay({year, month, day}), Cell::Kind::Date);
}

TEST(FieldRenderer, FixedPadsIntegersOnTheLeft) {
    EXPECT_EQ(Render(Preset(kFixed), kInteger32, Cell::OfInteger(-42)), "        -42");
    EXPECT_EQ(Render(Preset(kFixed), kInteger16, Cell::OfInteger(-32768)), "-32768");
    EXPECT_EQ(Render(Preset(kFixed), kInteger32, Cell::OfInteger(-2147483648LL)), "-2147483648");
}

TEST(FieldRenderer, FixedWritesDoublesWithTheirDecimals) {
    EXPECT_EQ(Render(Preset(kFixed), kDouble, Cell::OfNumber(3.14159)), "           3.1415900");
    EXPECT_EQ(Render(Preset(kFixed), kSingle, Cell::OfNumber(-0.5, Cell::Kind::Single)),
              "          -0.5000000");
}

TEST(FieldRenderer, FixedKeepsTheRightmostCharactersOfNumbersThatAreTooWide) {
    ExportFormat format = Preset(kFixed);
    format.SetLengthOfDouble(8);
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-12345.5)), ".5000000");
    EXPECT_EQ(Render(Preset(kFixed), kInteger16, Cell::OfInteger(-1234567)), "234567");
    format.plainOptions().signPosition = 1;
    format.SetLengthOfDouble(3);
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-1.25)), "00-");
}

TEST(FieldRenderer, CutsNumbersThatAreTooWideWithoutPaddingToo) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().numbersPadded = false;
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(1234567)), "234567");
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(12)), "12");
}

TEST(FieldRenderer, ParenthesesStandAroundNegativeNumbersOnly) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().signPosition = 2;
    format.plainOptions().positiveSymbol = u"+";
    EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(-5)), "(5)");
    EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(5)), "5");
}

TEST(FieldRenderer, SignsStandOnTheRightWhenTheFormatSaysSo) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().signPosition = 1;
    EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(-5)), "5-");
    format.plainOptions().positiveSymbol = u" CR";
    EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(5)), "5 CR");
}

TEST(FieldRenderer, TakesUnknownSignPositionsForLeft) {
    for (const int position : {0, 3, -1, 99}) {
        ExportFormat format = Preset(kDelimited);
        format.plainOptions().signPosition = position;
        format.plainOptions().positiveSymbol = u"+";
        EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(-5)), "-5");
        EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(5)), "+5");
    }
}

TEST(FieldRenderer, CountsZeroAndMinusZeroAsPositive) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().positiveSymbol = u"+";
    EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(0)), "+0");
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-0.0)), "+0");
}

TEST(FieldRenderer, SignsNegativeNumbersThatAreRoundedToZero) {
    ExportFormat format = Preset(kFixed);
    format.SetDecimalsForDouble(1);
    format.SetLengthOfDouble(5);
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-0.01)), " -0.0");
}

TEST(FieldRenderer, CurrencyHasSignsOfItsOwnInFixedLines) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().currencySignPosition = 2;
    format.SetLengthOfCurrency(12);
    EXPECT_EQ(Render(format, kCurrency, Currency(-12345)), "    (1.2345)");
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-1)), "          -1.0000000");
    format.plainOptions().currencyPrecision = 2;
    EXPECT_EQ(Render(format, kCurrency, Currency(12350)), "        1.24");
}

TEST(FieldRenderer, CurrencyHasTheSignsOfNumbersInDelimitedLines) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().currencySignPosition = 2;
    format.plainOptions().currencyPrecision = 1;
    EXPECT_EQ(Render(format, kCurrency, Currency(-12345)), "-1.2345");
}

TEST(FieldRenderer, NeverWritesTheCurrencySymbol) {
    for (const int preset : {kDelimited, kFixed}) {
        ExportFormat format = Preset(preset);
        const std::string without = Render(format, kCurrency, Currency(10000));
        format.plainOptions().currencySymbol = u"$";
        format.plainOptions().currencySymbolPosition = 1;
        EXPECT_EQ(Render(format, kCurrency, Currency(10000)), without);
    }
}

TEST(FieldRenderer, NumbersTrimmedChangesNothing) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().numbersTrimmed = true;
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(7)), "     7");
}

TEST(FieldRenderer, OmitsTheDecimalPoint) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().omitDecimalPoint = true;
    format.plainOptions().numbersPadded = false;
    format.SetDecimalsForDouble(2);
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(12.5)), "1250");
    ExportFormat delimited = Preset(kDelimited);
    delimited.plainOptions().omitDecimalPoint = true;
    EXPECT_EQ(Render(delimited, kDouble, Cell::OfNumber(-12.5)), "-125");
}

TEST(FieldRenderer, OmitsPointsBeforeSignsAreAdded) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().omitDecimalPoint = true;
    format.plainOptions().negativeSymbol = u".";
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-1.5)), ".15");
}

TEST(FieldRenderer, ZeroDecimalsLeaveATrailingPoint) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().numbersPadded = false;
    format.SetDecimalsForDouble(0);
    format.SetDecimalsForSingle(0);
    format.plainOptions().currencyPrecision = -3;
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(2.5)), "3.");
    EXPECT_EQ(Render(format, kSingle, Cell::OfNumber(2, Cell::Kind::Single)), "2.");
    EXPECT_EQ(Render(format, kCurrency, Currency(20000)), "2.");
}

TEST(FieldRenderer, FixedWritesDecimalsWithTheirPlaces) {
    EXPECT_EQ(Render(Preset(kFixed), kDecimal, Cell::OfDecimal(-1250, 2)), "    -12.50");
    EXPECT_EQ(Render(Preset(kFixed), {"DE", 14, 6, 0}, Cell::OfDecimal(125, 1)), "    13");
    EXPECT_EQ(Render(Preset(kFixed), {"DE", 14, 6, -1}, Cell::OfDecimal(125, 1)), "    13");
    EXPECT_EQ(Render(Preset(kFixed), {"DE", 14, 0, 2}, Cell::OfDecimal(125, 1)), "");
    EXPECT_EQ(Render(Preset(kFixed), {"DE", 14, -1, 2}, Cell::OfDecimal(125, 1)), "12.50");
}

TEST(FieldRenderer, DelimitedWritesTheShortestNumbers) {
    EXPECT_EQ(Render(Preset(kDelimited), kDecimal, Cell::OfDecimal(-1250, 2)), "-12.5");
    EXPECT_EQ(Render(Preset(kDelimited), kDouble, Cell::OfNumber(0.1)), "0.1");
    EXPECT_EQ(Render(Preset(kDelimited), kInteger16, Cell::OfInteger(-1)), "-1");
    EXPECT_EQ(
        Render(Preset(kDelimited), kSingle, Cell::OfNumber(static_cast<double>(0.7F), Cell::Kind::Single)),
        "0.7");
}

TEST(FieldRenderer, QuotesNumbersAfterFitting) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().numbersQuoted = true;
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(-5)), "\"    -5\"");
    format.plainOptions().negativeSymbol = u"\"";
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(-5)), "\"    \"\"5\"");
    ExportFormat delimited = Preset(kDelimited);
    delimited.plainOptions().numbersQuoted = true;
    EXPECT_EQ(Render(delimited, kDecimal, Cell::OfDecimal(15, 1)), "\"1.5\"");
}

TEST(FieldRenderer, PadsNumbersWithTheirPadCharacter) {
    ExportFormat format = Preset(kFixed);
    format.SetNumberPad(u"*");
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(-5)), "****-5");
    format.SetNumberPad(u"");
    EXPECT_EQ(Render(format, kInteger16, Cell::OfInteger(-5)), "-5");
}

TEST(FieldRenderer, BytesHaveNeitherSignsNorQuotes) {
    ExportFormat format = Preset(kFixed);
    format.plainOptions().positiveSymbol = u"+";
    format.plainOptions().numbersQuoted = true;
    EXPECT_EQ(Render(format, kByte, Cell::OfInteger(7)), "  7");
    EXPECT_EQ(Render(format, kByte, Cell::OfInteger(1234)), "234");
    ExportFormat delimited = Preset(kDelimited);
    delimited.plainOptions().positiveSymbol = u"+";
    delimited.plainOptions().numbersQuoted = true;
    EXPECT_EQ(Render(delimited, kByte, Cell::OfInteger(1234)), "1234");
}

TEST(FieldRenderer, WritesDatesUnderTheMask) {
    EXPECT_EQ(Render(Preset(kDelimited), kDate, Day(2024, 1, 31)), "20240131");
    ExportFormat format = Preset(kFixed);
    format.SetDateMask(u"dd-mmm-yyyy \u20AC");
    EXPECT_EQ(Render(format, kDate, Day(2024, 1, 31)), "31-Jan-2024 \x80");
}

TEST(FieldRenderer, LeavesMissingDatesEmptyAndKeepsTheirPlaceInFixedLines) {
    EXPECT_EQ(Render(Preset(kDelimited), kDate, Cell()), "");
    EXPECT_EQ(Render(Preset(kFixed), kDate, Cell()), "        ");
}

TEST(FieldRenderer, WritesTruthValues) {
    EXPECT_EQ(Render(Preset(kDelimited), kBoolean, Cell::OfBoolean(true)), "T");
    EXPECT_EQ(Render(Preset(kFixed), kBoolean, Cell::OfBoolean(false)), "F");
    EXPECT_EQ(Render(Preset(kFixed), kBoolean, Cell()), "F");
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().trueValue = u"yes, \"really\"";
    EXPECT_EQ(Render(format, kBoolean, Cell::OfBoolean(true)), "yes, \"really\"");
}

TEST(FieldRenderer, DoublesQuotesInsideQuotedTexts) {
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"ab\"c")), "\"ab\"\"c\"");
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"\"\"")), "\"\"\"\"\"\"");
    ExportFormat format = Preset(kDelimited);
    format.SetQuote(u"'");
    EXPECT_EQ(Render(format, kText, Text(u"a'\"b")), "'a''\"b'");
    format.SetQuote(u"");
    EXPECT_EQ(Render(format, kText, Text(u"a'\"b")), "a'\"b");
}

TEST(FieldRenderer, DelimitedCutsTextsToTheFieldAlthoughItDoesNotPad) {
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"abcdefg")), "\"abcde\"");
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"abc")), "\"abc\"");
}

TEST(FieldRenderer, CountsWidthsBeforeQuoting) {
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"\"\"\"\"\"\"")), "\"\"\"\"\"\"\"\"\"\"\"\"");
}

TEST(FieldRenderer, TrimsTextsOnTheRightOnly) {
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"  a  ")), "\"  a\"");
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"     ")), "\"\"");
    EXPECT_EQ(Render(Preset(kDelimited), kText, Text(u"a\t ")), "\"a\t\"");
}

TEST(FieldRenderer, FixedPadsTextsOnTheRight) {
    EXPECT_EQ(Render(Preset(kFixed), kText, Text(u"ab")), "ab   ");
    EXPECT_EQ(Render(Preset(kFixed), kText, Text(u"abcdefg")), "abcde");
    EXPECT_EQ(Render(Preset(kFixed), kText, Text(u"")), "     ");
    ExportFormat format = Preset(kFixed);
    format.SetStringPad(u"_");
    format.plainOptions().stringsQuoted = true;
    EXPECT_EQ(Render(format, kText, Text(u"ab")), "\"ab___\"");
}

TEST(FieldRenderer, CutsLongTextsTo255Characters) {
    const std::u16string longText(300, u'x');
    EXPECT_EQ(Render(Preset(kDelimited), kLongText, Text(longText)), "\"" + std::string(255, 'x') + "\"");
    EXPECT_EQ(Render(Preset(kFixed), kLongText, Text(u"a")), "a" + std::string(254, ' '));
}

TEST(FieldRenderer, WritesTextsOfAnyLengthWhenTheSizeIsNegative) {
    EXPECT_EQ(Render(Preset(kDelimited), {"TX", 8, -1, 0}, Text(u"abcdefgh")), "\"abcdefgh\"");
    EXPECT_EQ(Render(Preset(kDelimited), {"TX", 8, 0, 0}, Text(u"abc")), "\"\"");
}

TEST(FieldRenderer, WithoutPresetIsFixedWithTextsOnTheRightAndNoMinus) {
    ExportFormat format = Preset(0);
    EXPECT_EQ(Render(format, kInteger32, Cell::OfInteger(-5)), "5");
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(-2.5)), "2.5000000");
    EXPECT_EQ(Render(format, kDate, Day(2024, 1, 31)), "2024.01.31");
    EXPECT_EQ(Render(format, kBoolean, Cell::OfBoolean(true)), "");
    EXPECT_EQ(Render(format, kText, Text(u"ab")), "ab");
    format.plainOptions().stringsPadded = true;
    format.SetStringPad(u".");
    EXPECT_EQ(Render(format, kText, Text(u"ab")), "...ab");
    format.plainOptions().stringsQuoted = true;
    EXPECT_EQ(Render(format, kText, Text(u"ab")), "\"...ab\"");
}

TEST(FieldRenderer, RefusesNullInNumbersAndTextsByTheFieldsName) {
    for (const int preset : {0, kDelimited, kFixed}) {
        for (const ExportField& field :
             {kInteger16, kInteger32, kSingle, kDouble, kCurrency, kText, kDecimal, kByte, kLongText}) {
            try {
                Render(Preset(preset), field, Cell());
                FAIL() << field.name;
            } catch (const Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::TypeMismatch);
                EXPECT_NE(std::string(error.what()).find(field.name), std::string::npos);
            }
        }
    }
}

TEST(FieldRenderer, RefusesValuesOfTheWrongKind) {
    EXPECT_THROW(Render(Preset(kFixed), kInteger16, Text(u"5")), Error);
    EXPECT_THROW(Render(Preset(kFixed), kText, Cell::OfInteger(5)), Error);
    EXPECT_THROW(Render(Preset(kFixed), kDate, Text(u"x")), Error);
    EXPECT_THROW(Render(Preset(kFixed), kBoolean, Cell::OfInteger(1)), Error);
}

TEST(FieldRenderer, WritesOtherTypesAsTheirText) {
    for (const int preset : {0, kDelimited, kFixed})
        EXPECT_EQ(Render(Preset(preset), {"XX", 12, 2, 0}, Text(u" a\"bc ")), " a\"bc ");
}

TEST(FieldRenderer, WritesQuestionMarksForMissingCharactersAndCountsThem) {
    FieldRenderer<char> renderer(Preset(kDelimited), {kText}, Western());
    TextBuffer<char> out;
    renderer.Render(0, Text(u"a\u0416\u20AC"), out);
    EXPECT_EQ(out.view(), "\"a?\x80\"");
    EXPECT_EQ(renderer.missingCharacters(), 1U);
}

TEST(FieldRenderer, TakesBytesOfTheFilesCodePageAsTheyAre) {
    EXPECT_EQ(Render(Preset(kDelimited), kText, Cell::OfBytes("Z\xFCrich")), "\"Z\xFCric\"");
}

TEST(FieldRenderer, WritesTheSameInWideCharacters) {
    EXPECT_EQ(Render<char16_t>(Preset(kDelimited), kText, Text(u"a\u0416\"")), u"\"a\u0416\"\"\"");
    EXPECT_EQ(Render<char16_t>(Preset(kDelimited), kText, Cell::OfBytes("Z\xFCrich")), u"\"Z\u00FCric\"");
    EXPECT_EQ(Render<char16_t>(Preset(kFixed), kInteger16, Cell::OfInteger(-42)), u"   -42");
    EXPECT_EQ(Render<char16_t>(Preset(kFixed), kDate, Day(2024, 1, 31)), u"20240131");
}

TEST(FieldRenderer, RefusesWidthsThatWouldFillTheMemory) {
    ExportFormat format = Preset(kFixed);
    format.SetLengthOfDouble(std::numeric_limits<int>::max());
    EXPECT_THROW(Render(format, kDouble, Cell::OfNumber(1)), Error);
    format.SetLengthOfDouble(1024 * 1024);
    EXPECT_EQ(Render(format, kDouble, Cell::OfNumber(1)).size(), 1024U * 1024U);
    format.plainOptions().currencyPrecision = std::numeric_limits<int>::max();
    EXPECT_THROW(Render(format, kCurrency, Currency(1)), Error);
}

TEST(FieldRenderer, PutsTheSeparatorBetweenFieldsOnly) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().separator = u" | ";
    FieldRenderer<char> renderer(format, {kInteger32, kText, kBoolean}, Western());
    TextBuffer<char> out;
    const Cell cells[] = {Cell::OfInteger(1), Text(u"a"), Cell::OfBoolean(true)};
    renderer.RenderLine(cells, out);
    EXPECT_EQ(out.view(), "1 | \"a\" | T\r\n");
}

TEST(FieldRenderer, KeepsTheFieldsBeforeOneThatFails) {
    FieldRenderer<char> renderer(Preset(kDelimited), {kInteger32, kText, kBoolean}, Western());
    TextBuffer<char> out;
    const Cell cells[] = {Cell::OfInteger(1), Cell(), Cell::OfBoolean(true)};
    EXPECT_THROW(renderer.RenderLine(cells, out), Error);
    EXPECT_EQ(out.view(), "1");
}

TEST(FieldRenderer, WritesAnEmptyLineForARecordWithoutFields) {
    FieldRenderer<char> renderer(Preset(kDelimited), {}, Western());
    TextBuffer<char> out;
    renderer.RenderLine(nullptr, out);
    EXPECT_EQ(out.view(), "\r\n");
}

}  // namespace
}  // namespace zu::textio
