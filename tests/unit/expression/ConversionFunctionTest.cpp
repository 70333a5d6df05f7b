#include <gtest/gtest.h>

#include "host/expression/TruthText.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(ConversionFunction, WritesNumbersAsKeysHaveThem) {
    EXPECT_EQ(Shown(u"STR(42)"), "\"        42\"");
    EXPECT_EQ(Shown(u"STR(42.5)"), "\"        43\"");
    EXPECT_EQ(Shown(u"STR(-42, 5)"), "\"  -42\"");
    EXPECT_EQ(Shown(u"STR(3.14159, 8, 3)"), "\"   3.142\"");
    EXPECT_EQ(Shown(u"STR(12345, 3)"), "\"***\"");
    EXPECT_EQ(Shown(u"STR(DISCOUNT, 4)"), "\"   0\"");
    EXPECT_EQ(Shown(u"STRZERO(-42, 5)"), "\"-0042\"");
}

TEST(ConversionFunction, ReadsTheNumberATextBeginsWith) {
    EXPECT_EQ(Shown(u"VAL('  -12.5e3 kg')"), "-12.5");
    EXPECT_EQ(Shown(u"VAL('kg')"), "0");
    EXPECT_EQ(Shown(u"VAL('')"), "0");
    EXPECT_EQ(Shown(u"VAL('.5')"), "0.5");
    EXPECT_EQ(Shown(u"VAL('-')"), "0");
    EXPECT_EQ(Shown(u"VAL('1.2.3')"), "1.2");
}

TEST(ConversionFunction, WritesNumbersAsBytesThatSort) {
    EXPECT_EQ(Value(u"BINTOC(0)").text, std::string("\x80\0\0\0", 4));
    EXPECT_EQ(Value(u"BINTOC(-1)").text, "\x7F\xFF\xFF\xFF");
    EXPECT_EQ(Value(u"BINTOC(1, 2)").text, std::string("\x80\x01", 2));
    EXPECT_EQ(Value(u"BINTOC(-128, 1)").text, std::string("\0", 1));
    EXPECT_EQ(Shown(u"BINTOC(128, 1)"), "NULL");
    EXPECT_EQ(Shown(u"BINTOC(1, 3)"), "NULL");
}

TEST(ConversionFunction, WritesDates) {
    EXPECT_EQ(Shown(u"DTOS(ORDERED)"), "\"20240131\"");
    EXPECT_EQ(Shown(u"DTOS({})"), "\"        \"");
    EXPECT_EQ(Shown(u"DTOS(NULL)"), "NULL");
    EXPECT_EQ(Shown(u"DTOC(SHIPPED)"), "\"  /  /    \"");
    EXPECT_EQ(Shown(u"DTOC(SHIPPED, 1)"), "\"        \"");
    EXPECT_EQ(Shown(u"TTOC(STAMP)"), "\"01/31/2024 13:45:30\"");
    EXPECT_EQ(Shown(u"TTOC(SHIPPED, 1)"), "\"              \"");
}

TEST(ConversionFunction, ReadsDates) {
    EXPECT_EQ(Shown(u"CTOD('31.01.2024')"), "2024-01-31");
    EXPECT_EQ(Shown(u"CTOD('no date')"), "EMPTY");
    EXPECT_EQ(Shown(u"CTOD(DTOC(SHIPPED))"), "EMPTY");
    EXPECT_EQ(Shown(u"CTOT('2024-01-31 01:02:03')"), "2024-01-31 01:02:03.000");
    EXPECT_EQ(Shown(u"STOD('20240131')"), "2024-01-31");
    EXPECT_EQ(Shown(u"STOD('2024013')"), "EMPTY");
    EXPECT_EQ(Shown(u"STOD('')"), "EMPTY");
    EXPECT_EQ(Shown(u"STOD(DTOS(ORDERED)) = ORDERED"), "TRUE");
}

TEST(ConversionFunction, TurnsAnythingIntoAText) {
    EXPECT_EQ(Shown(u"CSTR(0.1)"), "\"0.1\"");
    EXPECT_EQ(Shown(u"CSTR(PAID)"), "\"TRUE\"");
    EXPECT_EQ(Shown(u"CSTR(ORDERED)"), "\"01/31/2024\"");
    EXPECT_EQ(Shown(u"CSTR(STAMP)"), "\"01/31/2024 13:45:30\"");
    EXPECT_EQ(Shown(u"CSTR(SHIPPED)"), "\"\"");
    EXPECT_EQ(Shown(u"CSTR(NULL)"), "NULL");
    EXPECT_EQ(Shown(u"TRANSFORM(5, '@L 999')"), "\"005\"");
    EXPECT_EQ(Shown(u"TRANSFORM(5, '  ')"), "\"5\"");
    EXPECT_EQ(Shown(u"TRANSFORM(SHIPPED)"), "\"\"");
}

TEST(ConversionFunction, TurnsTextsIntoValuesOrNull) {
    EXPECT_EQ(Shown(u"CDBL(' 1.5 ')"), "1.5");
    EXPECT_EQ(Shown(u"CDBL('1.5x')"), "NULL");
    EXPECT_EQ(Shown(u"CDBL('')"), "NULL");
    EXPECT_EQ(Shown(u"CDBL(.T.)"), "1");
    EXPECT_EQ(Shown(u"CDBL(ORDERED)"), "NULL");
    EXPECT_EQ(Shown(u"CDATE('2024-01-31')"), "2024-01-31");
    EXPECT_EQ(Shown(u"CDATE('x')"), "NULL");
    EXPECT_EQ(Shown(u"CDATE('')"), "NULL");
    EXPECT_EQ(Shown(u"CDATE(STAMP)"), "2024-01-31");
    EXPECT_EQ(Shown(u"CDATE(5)"), "NULL");
    EXPECT_EQ(Shown(u"CBOOL(2)"), "TRUE");
    EXPECT_EQ(Shown(u"CBOOL('no')"), "FALSE");
    EXPECT_EQ(Shown(u"CBOOL('x')"), "NULL");
    EXPECT_EQ(Shown(u"CBOOL(ORDERED)"), "TRUE");
}

TEST(ConversionFunction, ReadsTruthFromTexts) {
    for (const auto* text : {"T", "true", "y", "Yes", ".T.", ".y.", "ON", " on ", "1", "-0.5"}) {
        EXPECT_EQ(TruthOfText(text), true) << text;
    }
    for (const auto* text : {"F", "false", "n", "No", ".F.", ".n.", "OFF", "0", "0.00", "", "   "}) {
        EXPECT_EQ(TruthOfText(text), false) << text;
    }
    for (const auto* text : {"x", "truee", "10x", "."})
        EXPECT_EQ(TruthOfText(text), std::nullopt) << text;
}

}  // namespace
}  // namespace zu::expression::testing
