// One record with a field of every type, under formats as clients set them up, byte for byte.

#include <gtest/gtest.h>

#include "portable/calendar/Calendar.h"
#include "portable/textio/FieldRenderer.h"

namespace zu::textio {
namespace {

std::string Line(const ExportFormat& format) {
    static const Encoding encoding(*text::CodePage::Find(1252));
    FieldRenderer<char> renderer(format,
                                 {{"SMALL", 2, 6, 0},
                                  {"WHOLE", 3, 11, 0},
                                  {"RATE", 4, 20, 0},
                                  {"RATIO", 5, 20, 0},
                                  {"PRICE", 6, 21, 4},
                                  {"BORN", 7, 8, 0},
                                  {"NAME", 8, 8, 0},
                                  {"PAID", 11, 1, 0},
                                  {"AMOUNT", 14, 9, 2},
                                  {"AGE", 17, 3, 0}},
                                 encoding);
    const Cell cells[] = {Cell::OfInteger(-7),
                          Cell::OfInteger(1234567),
                          Cell::OfNumber(static_cast<double>(0.1F), Cell::Kind::Single),
                          Cell::OfNumber(-2.5),
                          Cell::OfInteger(-199900, Cell::Kind::Currency),
                          Cell::OfInteger(calendar::ToJulianDay({1999, 12, 31}), Cell::Kind::Date),
                          Cell::OfCharacters(u"M\u00FCl\"ler"),
                          Cell::OfBoolean(true),
                          Cell::OfDecimal(-12345, 2),
                          Cell::OfInteger(42)};
    TextBuffer<char> out;
    renderer.RenderLine(cells, out);
    return std::string(out.view());
}

ExportFormat Preset(int preset) {
    ExportFormat format;
    format.ApplyPreset(preset);
    return format;
}

TEST(GoldenLine, Delimited) {
    EXPECT_EQ(Line(Preset(kDelimited)),
              "-7,1234567,0.1,-2.5,-19.99,19991231,\"M\xFCl\"\"ler\",T,-123.45,42\r\n");
}

TEST(GoldenLine, Fixed) {
    EXPECT_EQ(Line(Preset(kFixed)),
              "    -7"
              "    1234567"
              "           0.1000000"
              "          -2.5000000"
              "             -19.9900"
              "19991231"
              "M\xFCl\"ler "
              "T"
              "  -123.45"
              " 42\r\n");
}

TEST(GoldenLine, WithoutPreset) {
    EXPECT_EQ(Line(Preset(0)), "712345670.10000002.500000019.99001999.12.31M\xFCl\"ler123.4542\r\n");
}

TEST(GoldenLine, TabsEuropeanDatesAndSignsBehind) {
    ExportFormat format = Preset(kDelimited);
    format.plainOptions().separator = u"\t";
    format.plainOptions().stringsQuoted = false;
    format.plainOptions().signPosition = 1;
    format.plainOptions().trueValue = u"ja";
    format.SetDateForm(1);
    format.SetDateSeparator(u".");
    EXPECT_EQ(Line(format), "7-\t1234567\t0.1\t2.5-\t19.99-\t31.12.1999\tM\xFCl\"ler\tja\t123.45-\t42\r\n");
}

TEST(GoldenLine, FixedWithZerosInFrontAndNoPoint) {
    ExportFormat format = Preset(kFixed);
    format.SetNumberPad(u"0");
    format.SetStringPad(u"_");
    format.plainOptions().omitDecimalPoint = true;
    format.plainOptions().signPosition = 1;
    format.plainOptions().currencySignPosition = 2;
    format.plainOptions().positiveSymbol = u"+";
    format.SetLengthOfSingle(9);
    format.SetDecimalsForSingle(3);
    format.SetLengthOfDouble(6);
    format.SetDecimalsForDouble(1);
    format.SetLengthOfCurrency(10);
    format.plainOptions().currencyPrecision = 2;
    EXPECT_EQ(Line(format),
              "00007-"
              "0001234567+"
              "00000100+"
              "00025-"
              "0000(1999)"
              "19991231"
              "M\xFCl\"ler_"
              "T"
              "00012345-"
              "042\r\n");
}

}  // namespace
}  // namespace zu::textio
