#include "host/expression/Operators.h"

#include <gtest/gtest.h>

#include "portable/error/Error.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(Operator, AddsAndSubtractsByType) {
    EXPECT_EQ(Shown(u"ID + 0.5"), "42.5");
    EXPECT_EQ(Shown(u"COUNTRY + 'x'"), "\"DEx\"");
    EXPECT_EQ(Shown(u"ORDERED + 1"), "2024-02-01");
    EXPECT_EQ(Shown(u"1 + ORDERED"), "2024-02-01");
    EXPECT_EQ(Shown(u"ORDERED - 31"), "2023-12-31");
    EXPECT_EQ(Shown(u"ORDERED - {2024-01-01}"), "30");
    EXPECT_EQ(Shown(u"STAMP - ORDERED"), "0.5732638888888889");
    EXPECT_EQ(Shown(u"STAMP + 0.5"), "2024-02-01 01:45:30.000");
    EXPECT_EQ(Shown(u"STAMP - 1"), "2024-01-30 13:45:30.000");
    EXPECT_EQ(Shown(u"ORDERED + 1.9"), "2024-02-01");
    EXPECT_EQ(Shown(u"ORDERED - 0.5"), "2024-01-31");
}

TEST(Operator, MovesBlanksToTheEndWhenTextsAreSubtracted) {
    EXPECT_EQ(Shown(u"'ab  ' - 'c '"), "\"abc   \"");
    EXPECT_EQ(Shown(u"'ab' - 'c'"), "\"abc\"");
    EXPECT_EQ(Shown(u"LEN(CUSTOMER - COUNTRY)"), "32");
}

TEST(Operator, LeavesTheCalendarAsNull) {
    EXPECT_EQ(Shown(u"{9999-12-31} + 1"), "NULL");
    EXPECT_EQ(Shown(u"{0001-01-01} - 1"), "NULL");
    EXPECT_EQ(Shown(u"ORDERED + 1e300"), "NULL");
    EXPECT_EQ(Shown(u"STAMP - 1e9"), "NULL");
    EXPECT_EQ(Shown(u"{9999-12-31} + 0"), "9999-12-31");
}

TEST(Operator, GivesTheRemainderTheSignOfTheDivisor) {
    EXPECT_EQ(Shown(u"7 % 3"), "1");
    EXPECT_EQ(Shown(u"-7 % 3"), "2");
    EXPECT_EQ(Shown(u"7 % -3"), "-2");
    EXPECT_EQ(Shown(u"-7 % -3"), "-1");
    EXPECT_EQ(Shown(u"6 % 3"), "0");
    EXPECT_EQ(Shown(u"5.5 % 2"), "1.5");
}

TEST(Operator, RaisesToPowers) {
    EXPECT_EQ(Shown(u"2 ^ 3 ^ 2"), "64");
    EXPECT_EQ(Shown(u"2 ** -1"), "0.5");
    EXPECT_EQ(Shown(u"0 ^ 0"), "1");
    EXPECT_EQ(Shown(u"(-8) ^ (1/3)"), "NULL");
    EXPECT_EQ(Shown(u"0 ^ -1"), "NULL");
}

TEST(Operator, FindsTextsInsideOthers) {
    EXPECT_EQ(Shown(u"'ller' $ CUSTOMER"), "TRUE");
    EXPECT_EQ(Shown(u"'LLER' $ CUSTOMER"), "FALSE");
    EXPECT_EQ(Shown(u"'floor' $ NOTE"), "TRUE");
    EXPECT_EQ(Shown(u"'' $ CUSTOMER"), "TRUE");
}

TEST(Operator, StopsAChainOfConditionsWhenItIsDecided) {
    // The memo would be read by the second term.
    class CountingMemos : public MemoReader {
    public:
        bool Read(std::size_t, const std::byte*, std::string& out) override {
            ++reads;
            out = "note";
            return true;
        }
        int reads = 0;
    };
    RecordBuilder builder = SampleRecord();
    CountingMemos memos;
    Row row = builder.row();
    row.memos = &memos;
    Result result;
    Program::Compile(u"ID + 0 = 1 AND NOTE = 'note'", builder.layout).Evaluate(row, result);
    Program::Compile(u"ID + 0 = 42 OR NOTE = 'note'", builder.layout).Evaluate(row, result);
    EXPECT_FALSE(Program::Compile(u"NOTE = 'note' AND ID = 1", builder.layout).Test(row));
    EXPECT_EQ(memos.reads, 0);
    EXPECT_TRUE(Program::Compile(u"NOTE = 'note' AND ID = 42", builder.layout).Test(row));
    EXPECT_EQ(memos.reads, 1);
}

TEST(Operator, RefusesJoinedTextsWithoutBounds) {
    RecordBuilder builder = SampleRecord();
    builder.SetMemo("NOTE", std::string(9 << 20, 'x'));
    const Program program = Program::Compile(u"NOTE + NOTE", builder.layout);
    Result result;
    try {
        program.Evaluate(builder.row(), result);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Overflow);
    }
}

TEST(Operator, ComputesConstantPartsOnce) {
    EXPECT_EQ(Shown(u"LEFT('abc', 1 + 1) + UPPER('x')"), "\"abX\"");
    EXPECT_EQ(Shown(u"ID = 6 * 7"), "TRUE");
    EXPECT_EQ(Shown(u"ID = 21 + 21 AND (1 = 1 OR 1/0 = 1)"), "TRUE");
}

}  // namespace
}  // namespace zu::expression::testing
