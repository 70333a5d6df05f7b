#include "host/technologies/dbf/DbfTechnology.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "portable/text/CodePage.h"
#include "tests/unit/dbf/ErrorExpectation.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

using technologies::Value;

class DbfTechnologyTest : public testing::Test {
protected:
    DbfTechnologyTest() : technology_(files_, {.dataFolder = "data", .codePage = 1252}) {}

    Value DescendText(std::u16string text) {
        Value value;
        value.kind = Value::Kind::Text;
        value.text = std::move(text);
        return technology_.Descend(value);
    }
    Value DescendNumber(Value::Kind kind, std::int64_t integer, double number = 0) {
        Value value;
        value.kind = kind;
        value.integer = integer;
        value.number = number;
        return technology_.Descend(value);
    }

    files::MemoryFiles files_;
    DbfTechnology technology_;
};

TEST_F(DbfTechnologyTest, OpensTablesByName) {
    TableImage().Field("C", 'C', 1).Record("x").PutInto(files_, "data/orders.dbf");
    EXPECT_EQ(technology_.name(), "DBF");
    EXPECT_EQ(technology_.OpenTable("", "Orders")->RecordCount(), 1U);
    EXPECT_EQ(technology_.OpenTable("orders", "")->name(), "orders");
    ExpectError(ErrorKind::NotFound, {"nothing"}, [&] { technology_.OpenTable("", "nothing"); });
    ExpectError(ErrorKind::InvalidArgument, {"leads out"}, [&] { technology_.OpenTable("", "../x"); });
}

TEST_F(DbfTechnologyTest, ComplementsEachByteOfATextSoThatItSortsInReverse) {
    EXPECT_EQ(DescendText(u"A").text, u"\u00BE");
    EXPECT_EQ(DescendText(u"").text, u"");
    EXPECT_EQ(DescendText(u" ").text, u"\u00DF");
}

TEST_F(DbfTechnologyTest, GivesEveryTextBackWhenItDescendsTwice) {
    std::u16string all;
    for (unsigned byte = 1; byte < 255; ++byte)
        text::CodePage::Default().Decode(std::string(1, static_cast<char>(byte)), all);
    EXPECT_EQ(DescendText(DescendText(all).text).text, all);
}

TEST_F(DbfTechnologyTest, RefusesTextsThatTheCodePageLacks) {
    ExpectError(ErrorKind::InvalidArgument, {"position 2", "1252"}, [&] { DescendText(u"a\u0416"); });
}

TEST_F(DbfTechnologyTest, NegatesNumbersAndLogicals) {
    EXPECT_EQ(DescendNumber(Value::Kind::Integer, 5).integer, -5);
    EXPECT_EQ(DescendNumber(Value::Kind::Currency, -5).integer, 5);
    EXPECT_EQ(DescendNumber(Value::Kind::Double, 0, 2.5).number, -2.5);
    EXPECT_FALSE(std::signbit(DescendNumber(Value::Kind::Double, 0, 0).number));
    Value least = DescendNumber(Value::Kind::Integer, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(least.kind, Value::Kind::Double);
    EXPECT_EQ(least.number, 9223372036854775808.0);
    Value decimal;
    decimal.kind = Value::Kind::Decimal;
    decimal.decimal = {125, 0, 2, false};
    EXPECT_TRUE(technology_.Descend(decimal).decimal.negative);
    decimal.decimal = {0, 0, 2, false};
    EXPECT_FALSE(technology_.Descend(decimal).decimal.negative);
    Value logical;
    logical.kind = Value::Kind::Boolean;
    logical.boolean = true;
    EXPECT_FALSE(technology_.Descend(logical).boolean);
}

TEST_F(DbfTechnologyTest, TurnsDatesIntoNumbersThatSortInReverse) {
    Value date;
    date.kind = Value::Kind::DateTime;
    date.julianDay = 2440588;
    EXPECT_EQ(technology_.Descend(date).kind, Value::Kind::Integer);
    EXPECT_EQ(technology_.Descend(date).integer, 5231808 - 2440588);
    date.milliseconds = 43'200'000;
    EXPECT_EQ(technology_.Descend(date).kind, Value::Kind::Double);
    EXPECT_EQ(technology_.Descend(date).number, 5231808 - 2440588.5);
}

TEST_F(DbfTechnologyTest, KeepsNull) {
    EXPECT_EQ(technology_.Descend({}).kind, Value::Kind::Null);
}

TEST_F(DbfTechnologyTest, ComplementsBytes) {
    Value value;
    value.kind = Value::Kind::Binary;
    value.binary = {0x00, 0xF0};
    EXPECT_EQ(technology_.Descend(value).binary, (std::vector<std::uint8_t>{0xFF, 0x0F}));
}

}  // namespace
}  // namespace zu::dbf
