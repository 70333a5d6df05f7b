#include "portable/textio/CellReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>
#include <string>

#include "portable/calendar/Calendar.h"

namespace zu::textio {
namespace {

constexpr int kDecimal = static_cast<int>(FieldType::Decimal);

class Cells : public ::testing::Test {
protected:
    Cells() { format_.ApplyPreset(kDelimited); }
    std::optional<Cell> Read(FieldType type, std::string_view token) {
        ValueReader values(format_);
        CellReader reader(values);
        Cell cell;
        return reader.Read({static_cast<int>(type), 10}, token, cell) ? std::optional(cell) : std::nullopt;
    }
    std::string Decimal(std::string_view token) {
        const auto cell = Read(FieldType::Decimal, token);
        if (!cell) return "left";
        EXPECT_EQ(cell->kind, Cell::Kind::Decimal);
        return std::to_string(cell->integer) + "/" + std::to_string(cell->scale);
    }
    std::string_view Text(const std::optional<Cell>& cell) {
        return cell && cell->kind == Cell::Kind::Bytes ? std::string_view(cell->bytes, cell->length) : "left";
    }
    ImportFormat format_;
};

TEST_F(Cells, OfDecimalsHoldTheDigits) {
    EXPECT_EQ(Decimal("12.50"), "1250/2");
    EXPECT_EQ(Decimal(" -0.5 "), "-5/1");
    EXPECT_EQ(Decimal("+7."), "7/0");
    EXPECT_EQ(Decimal(".25"), "25/2");
    EXPECT_EQ(Decimal("-0"), "0/0");
    EXPECT_EQ(Decimal("999999999999999"), "999999999999999/0");
    EXPECT_EQ(Decimal("0.00000000000001"), "1/14");
}

TEST_F(Cells, OfBlankDecimalsAreZero) {
    EXPECT_EQ(Decimal(""), "0/0");
    EXPECT_EQ(Decimal("   "), "0/0");
}

TEST_F(Cells, AreNotMadeOfDecimalsThatNeedACloserLook) {
    for (const char* token :
         {"1e3", "1,5", "abc", "1234567890123456", "1.2.3", "-", ".", "1 2", "--1", "&H10", "$5", "\t1"})
        EXPECT_EQ(Decimal(token), "left") << token;
}

TEST_F(Cells, OfDecimalsDenoteTheNumberThatTheReaderOfValuesFinds) {
    std::mt19937 random(20);
    ValueReader values(format_);
    const std::string alphabet = "0123456789..-+ 5";
    int read = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string token;
        for (auto length = random() % 12; length > 0; --length)
            token += alphabet[random() % alphabet.size()];
        const auto cell = Read(FieldType::Decimal, token);
        if (!cell) continue;
        ++read;
        const auto value = values.Read<char>({kDecimal, 10}, token);
        ASSERT_EQ(value.kind, ReadValue<char>::Kind::Double) << token;
        ASSERT_DOUBLE_EQ(static_cast<double>(cell->integer) / std::pow(10.0, cell->scale), value.number)
            << token;
    }
    EXPECT_GT(read, 1'000);
}

TEST_F(Cells, OfTextsAreTheToken) {
    EXPECT_EQ(Text(Read(FieldType::Text, " ab")), " ab");
    EXPECT_EQ(Text(Read(FieldType::LongText, "")), "");
}

TEST_F(Cells, OfBooleansAreTheTokenForTheEngineToJudge) {
    EXPECT_EQ(Text(Read(FieldType::Boolean, "Yes")), "Yes");
}

TEST_F(Cells, OfIntegersAndDoublesHoldTheNumber) {
    const auto integer = Read(FieldType::Integer32, " -12 ");
    ASSERT_TRUE(integer);
    EXPECT_EQ(integer->kind, Cell::Kind::Integer);
    EXPECT_EQ(integer->integer, -12);
    EXPECT_FALSE(Read(FieldType::Integer32, "2147483648"));
    const auto number = Read(FieldType::Double, "1.5e3");
    ASSERT_TRUE(number);
    EXPECT_EQ(number->kind, Cell::Kind::Double);
    EXPECT_EQ(number->number, 1500.0);
    EXPECT_FALSE(Read(FieldType::Double, "1,5"));
}

TEST_F(Cells, OfDatesHoldTheDayAndBlankOnesNothing) {
    const auto day = Read(FieldType::Date, "20240229");
    ASSERT_TRUE(day);
    EXPECT_EQ(day->kind, Cell::Kind::Date);
    EXPECT_EQ(day->integer, calendar::ToJulianDay({2024, 2, 29}));
    EXPECT_EQ(day->length, 0U);
    const auto blank = Read(FieldType::Date, "  ");
    ASSERT_TRUE(blank);
    EXPECT_EQ(blank->kind, Cell::Kind::Null);
    EXPECT_FALSE(Read(FieldType::Date, "20240230"));
}

TEST_F(Cells, OfDigitsAreMadeOfTokensThatStandAsANumberFieldHasThem) {
    for (const char* token :
         {"0", "7", "-7", "   12", "0.5", "-0.50", "12.00", "123456789012345", "1.00000000000000"}) {
        Cell digits;
        ASSERT_TRUE(CellReader::ReadDigits(token, digits)) << token;
        EXPECT_EQ(digits.kind, Cell::Kind::Digits);
        const std::string_view whole(token);
        EXPECT_EQ(std::string_view(digits.bytes, digits.length), whole.substr(whole.find_first_not_of(' ')));
        const auto decimal = Read(FieldType::Decimal, token);
        ASSERT_TRUE(decimal);
        EXPECT_EQ(digits.scale, decimal->scale) << token;
    }
    for (const char* token : {"",
                              " ",
                              "-",
                              ".",
                              "5.",
                              ".5",
                              "-.5",
                              "007",
                              "00",
                              "-0",
                              "-0.00",
                              "+1",
                              "1 ",
                              "- 1",
                              "1e3",
                              "1,5",
                              "1.2.3",
                              "--1",
                              "1234567890123456",
                              "12345678.12345678",
                              "x"}) {
        Cell digits;
        EXPECT_FALSE(CellReader::ReadDigits(token, digits)) << token;
    }
}

TEST_F(Cells, AreNotMadeForTypesThatThePlatformConverts) {
    for (const FieldType type :
         {FieldType::Currency, FieldType::Single, FieldType::Integer16, FieldType::Byte})
        EXPECT_FALSE(Read(type, "1")) << static_cast<int>(type);
}

}  // namespace
}  // namespace zu::textio
