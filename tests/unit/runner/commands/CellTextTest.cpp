#include "runner/commands/CellText.h"

#include <gtest/gtest.h>

#include <limits>

#include "com/Variant.h"

namespace zu::runner::commands {
namespace {

VARIANT Decimal(std::uint64_t low, std::uint32_t high, std::uint8_t scale, bool negative) {
    VARIANT value{};
    value.decVal.Lo64 = low;
    value.decVal.Hi32 = high;
    value.decVal.scale = scale;
    value.decVal.sign = negative ? DECIMAL_NEG : 0;
    value.vt = VT_DECIMAL;
    return value;
}

VARIANT Currency(std::int64_t units) {
    VARIANT value{};
    value.vt = VT_CY;
    value.cyVal.int64 = units;
    return value;
}

VARIANT Date(double date) {
    VARIANT value{};
    value.vt = VT_DATE;
    value.date = date;
    return value;
}

TEST(CellText, KeepsAllDigitsOfDecimals) {
    EXPECT_EQ(CellText(Decimal(1250, 0, 2, false)), L"12.50");
    EXPECT_EQ(CellText(Decimal(5, 0, 3, true)), L"-0.005");
    EXPECT_EQ(CellText(Decimal(0, 0, 2, true)), L"0.00") << "no zero below zero";
    EXPECT_EQ(CellText(Decimal(0xFFFFFFFFFFFFFFFF, 0xFFFFFFFF, 0, false)), L"79228162514264337593543950335");
    EXPECT_EQ(CellText(Decimal(0xFFFFFFFFFFFFFFFF, 0xFFFFFFFF, 28, true)),
              L"-7.9228162514264337593543950335");
}

TEST(CellText, KeepsAllDigitsOfCurrency) {
    EXPECT_EQ(CellText(Currency(12345)), L"1.2345");
    EXPECT_EQ(CellText(Currency(-5)), L"-0.0005");
    EXPECT_EQ(CellText(Currency(std::numeric_limits<std::int64_t>::min())), L"-922337203685477.5808");
}

TEST(CellText, WritesDoublesInTheirShortestForm) {
    EXPECT_EQ(CellText(com::Variant(0.1)), L"0.1");
    EXPECT_EQ(CellText(com::Variant(-2.0)), L"-2");
    EXPECT_EQ(CellText(com::Variant(1e300)), L"1e+300");
}

TEST(CellText, WritesDatesSoThatTheySort) {
    EXPECT_EQ(CellText(Date(46347)), L"2026-11-21");
    EXPECT_EQ(CellText(Date(46347.5)), L"2026-11-21T12:00:00");
    EXPECT_EQ(CellText(Date(46347 + 1.25 / 86400)), L"2026-11-21T00:00:01.250");
    EXPECT_EQ(CellText(Date(-1.25)), L"1899-12-29T06:00:00");
}

TEST(CellText, WritesTruthTextsAndBytes) {
    EXPECT_EQ(CellText(com::Variant(true)), L"true");
    EXPECT_EQ(CellText(com::Variant(L"a b")), L"a b");
    SAFEARRAYBOUND bounds{3, 0};
    VARIANT bytes{};
    bytes.vt = VT_ARRAY | VT_UI1;
    bytes.parray = SafeArrayCreate(VT_UI1, 1, &bounds);
    const com::Variant owner = com::Variant::Adopt(bytes);
    LONG index = 1;
    std::uint8_t byte = 0xAF;
    SafeArrayPutElement(bytes.parray, &index, &byte);
    EXPECT_EQ(CellText(owner), L"00af00");
    EXPECT_EQ(CellJson(owner), L"\"00af00\"");
}

TEST(CellText, AnswersNothingForNull) {
    EXPECT_EQ(CellText(com::Variant::Null()), std::nullopt);
    EXPECT_EQ(CellText(com::Variant()), std::nullopt);
}

TEST(CellText, JsonHasNumbersAsNumbersAndNullAsNull) {
    EXPECT_EQ(CellJson(Decimal(1250, 0, 2, false)), L"12.50");
    EXPECT_EQ(CellJson(com::Variant(LONG{-7})), L"-7");
    EXPECT_EQ(CellJson(com::Variant(false)), L"false");
    EXPECT_EQ(CellJson(com::Variant::Null()), L"null");
    EXPECT_EQ(CellJson(Date(46347)), L"\"2026-11-21\"");
    EXPECT_EQ(CellJson(com::Variant(std::numeric_limits<double>::infinity())), L"null");
    EXPECT_EQ(CellJson(com::Variant(std::numeric_limits<double>::quiet_NaN())), L"null");
}

TEST(CellText, JsonStringsEscapeWhatJsonForbids) {
    EXPECT_EQ(JsonString(L"a\"b\\c/"), L"\"a\\\"b\\\\c/\"");
    EXPECT_EQ(JsonString(L"\n\r\t\x01"), L"\"\\n\\r\\t\\u0001\"");
    EXPECT_EQ(JsonString(L"\u00E9\xD83D\xDE00"), L"\"\u00E9\xD83D\xDE00\"");
    EXPECT_EQ(JsonString(L"\xD83Dx\xDE00"), L"\"\\ud83dx\\ude00\"") << "halves have no UTF-8";
}

}  // namespace
}  // namespace zu::runner::commands
