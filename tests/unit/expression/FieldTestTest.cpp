#include "host/expression/FieldTest.h"

#include <gtest/gtest.h>

#include "host/expression/Interval.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::size_t FieldOf(const RecordLayout& layout, std::string_view name) {
    for (std::size_t i = 0; i < layout.fields.size(); ++i) {
        if (layout.fields[i].name == name) return i;
    }
    return 0;
}

Slot NumberSlot(double value) {
    Register slot;
    slot.SetNumber(value);
    return slot;
}

ScaledConstant Scaled(double value, std::string_view digits, unsigned decimals) {
    return ScaleConstant(value, digits, decimals).value_or(ScaledConstant{-999, false});
}

TEST(FieldTest, ExistsForTheStoragesThatConditionsUseMost) {
    RecordBuilder builder = SampleRecord();
    const Slot number = NumberSlot(5);
    Register day;
    day.SetDate(2460341);
    Register text;
    text.SetText("abc");
    for (const auto* name : {"ID", "AMOUNT", "QTY", "PRICE", "RATIO"}) {
        EXPECT_NE(
            MakeComparison(builder.layout, FieldOf(builder.layout, name), Operator::Less, {number, nullptr}),
            nullptr);
    }
    for (const auto* name : {"ORDERED", "STAMP"}) {
        EXPECT_NE(
            MakeComparison(builder.layout, FieldOf(builder.layout, name), Operator::Less, {day, nullptr}),
            nullptr);
    }
    EXPECT_NE(
        MakeComparison(builder.layout, FieldOf(builder.layout, "CUSTOMER"), Operator::Equal, {text, nullptr}),
        nullptr);
    EXPECT_EQ(
        MakeComparison(builder.layout, FieldOf(builder.layout, "NOTE"), Operator::Equal, {text, nullptr}),
        nullptr);
}

TEST(FieldTest, DoesNotExistForNull) {
    RecordBuilder builder = SampleRecord();
    Register null;
    null.SetNull(Type::Number);
    EXPECT_EQ(MakeComparison(builder.layout, 0, Operator::Equal, {null, nullptr}), nullptr);
}

TEST(FieldTest, AnswersNullForFieldsThatAreNull) {
    RecordBuilder builder = SampleRecord();
    Register text;
    text.SetText("abc");
    const auto test = MakeComparison(builder.layout, FieldOf(builder.layout, "REGION"), Operator::NotEqual,
                                     {text, nullptr});
    EXPECT_EQ(test->Test(builder.row().record), Truth::Null);
    builder.SetNull("REGION", false);
    EXPECT_EQ(test->Test(builder.row().record), Truth::True);
    Register day;
    day.SetDate(2460341);
    const auto shipped = MakeComparison(builder.layout, FieldOf(builder.layout, "SHIPPED"),
                                        Operator::NotEqual, {day, nullptr});
    EXPECT_EQ(shipped->Test(builder.row().record), Truth::Null);
}

TEST(FieldTest, ScalesConstantsToTheUnitsOfTheField) {
    EXPECT_EQ(Scaled(1.5, "1.5", 2).floor, 150);
    EXPECT_TRUE(Scaled(1.5, "1.5", 2).isExact);
    EXPECT_EQ(Scaled(1.005, "1.005", 2).floor, 100);
    EXPECT_FALSE(Scaled(1.005, "1.005", 2).isExact);
    EXPECT_EQ(Scaled(-1.005, "-1.005", 2).floor, -101);
    EXPECT_FALSE(Scaled(-1.005, "-1.005", 2).isExact);
    EXPECT_EQ(Scaled(0.1, "", 4).floor, 1000);
    EXPECT_TRUE(Scaled(-2.50, "-2.50", 0).isExact == false);
    EXPECT_EQ(Scaled(-2.50, "-2.50", 0).floor, -3);
    EXPECT_EQ(Scaled(1e3, "1e3", 1).floor, 10000);
}

TEST(FieldTest, TakesConstantsBeyondAllFieldsForTheNextNumberBeyond) {
    const std::int64_t beyond = Scaled(1e300, "", 2).floor;
    EXPECT_TRUE(beyond == -999 || beyond > 999999999999999999);
    EXPECT_GT(Scaled(1e25, "10000000000000000000000000", 2).floor, 999999999999999999);
    EXPECT_LT(Scaled(-1e25, "-10000000000000000000000000", 2).floor, -999999999999999999);
    EXPECT_FALSE(Scaled(0.1, "0.1000000000000000000000001", 2).isExact);
    EXPECT_EQ(Scaled(0.1, "0.1000000000000000000000001", 2).floor, 10);
}

TEST(FieldTest, MakesAnIntervalOfEveryOperator) {
    const ScaledConstant exact{150, true};
    const ScaledConstant between{150, false};
    EXPECT_TRUE(IntervalOf(Operator::Equal, exact).Contains(150));
    EXPECT_FALSE(IntervalOf(Operator::Equal, between).Contains(150));
    EXPECT_FALSE(IntervalOf(Operator::NotEqual, exact).Contains(150));
    EXPECT_TRUE(IntervalOf(Operator::NotEqual, between).Contains(150));
    EXPECT_FALSE(IntervalOf(Operator::Less, exact).Contains(150));
    EXPECT_TRUE(IntervalOf(Operator::Less, between).Contains(150));
    EXPECT_TRUE(IntervalOf(Operator::LessEqual, exact).Contains(150));
    EXPECT_FALSE(IntervalOf(Operator::LessEqual, between).Contains(151));
    EXPECT_FALSE(IntervalOf(Operator::Greater, exact).Contains(150));
    EXPECT_TRUE(IntervalOf(Operator::Greater, between).Contains(151));
    EXPECT_TRUE(IntervalOf(Operator::GreaterEqual, exact).Contains(150));
    EXPECT_FALSE(IntervalOf(Operator::GreaterEqual, between).Contains(150));
}

TEST(FieldTest, TakesTextsPaddedWithNulsForEqual) {
    RecordBuilder builder;
    builder.Add("C", Storage::Character, 6).Finish();
    const Program program = Program::Compile(u"C = 'abc'", builder.layout);
    const auto holds = [&](std::string_view bytes) { return program.Test(builder.Set("C", bytes).row()); };
    EXPECT_TRUE(holds("abc"));
    EXPECT_TRUE(holds(std::string_view("abc\0\0\0", 6)));
    EXPECT_TRUE(holds(std::string_view("abc \0\0", 6)));
    EXPECT_FALSE(holds(std::string_view("abcd\0\0", 6)));
    EXPECT_FALSE(holds(std::string_view("ab\0\0\0\0", 6)));
    EXPECT_FALSE(holds("abcdef"));
}

TEST(FieldTest, ComparesNumbersInOddFormsAsNumbers) {
    RecordBuilder builder;
    builder.Add("N", Storage::NumberText, 8, 2).Finish();
    const Program program = Program::Compile(u"N = 1.5 AND N BETWEEN 1.5 AND 1.6 AND N <> 2", builder.layout);
    const auto holds = [&](std::string_view bytes) { return program.Test(builder.Set("N", bytes).row()); };
    for (const auto* bytes :
         {"    1.50", "1.5", "   1.5  ", "    1,50", "  1.5e+0", "00001.50", "   +1.50", "  1.5000"}) {
        EXPECT_TRUE(holds(bytes)) << bytes;
    }
    for (const auto* bytes : {"    1.51", "   -1.50", "********", "        ", "    1.5x"})
        EXPECT_FALSE(holds(bytes)) << bytes;
}

TEST(FieldTest, WorksForFieldsWhoseDefinitionIsOdd) {
    RecordBuilder builder;
    builder.Add("A", Storage::NumberText, 2, 5)
        .Add("B", Storage::NumberText, 30)
        .Add("D", Storage::DateText, 6);
    builder.Add("E", Storage::NumberText, 1).Finish();
    builder.Set("A", ".5").Set("B", "123456789012345678901234567890").Set("D", "202401").Set("E", "7");
    const auto holds = [&](std::u16string_view source) {
        return Program::Compile(source, builder.layout).Test(builder.row());
    };
    EXPECT_TRUE(holds(u"A = 0.5"));
    EXPECT_TRUE(holds(u"B > 1e29"));
    EXPECT_FALSE(holds(u"D = {2024-01-31}"));
    EXPECT_TRUE(holds(u"D IS NULL"));
    EXPECT_TRUE(holds(u"E = 7"));
}

}  // namespace
}  // namespace zu::expression::testing
