#include "host/expression/FieldReader.h"

#include <gtest/gtest.h>

#include <cmath>

#include "host/expression/DateText.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::string Read(RecordBuilder& builder, std::size_t field = 0) {
    Register value;
    ReadField(builder.layout, field, builder.row(), value);
    Result result;
    result.type = value.type;
    result.isNull = value.isNull;
    result.isEmpty = value.isEmpty;
    result.boolean = value.boolean;
    result.number = value.number;
    result.julianDay = value.julianDay;
    result.milliseconds = value.milliseconds;
    result.text = value.text;
    return ShownResult(result);
}

std::string ReadBytes(Storage storage, std::string_view bytes, std::uint8_t decimals = 0) {
    RecordBuilder builder;
    builder.Add("F", storage, static_cast<std::uint32_t>(bytes.size()), decimals).Finish();
    builder.Set("F", bytes);
    return Read(builder);
}

TEST(FieldReader, ReadsDigitsInEveryForm) {
    EXPECT_EQ(ReadBytes(Storage::NumberText, "   42"), "42");
    EXPECT_EQ(ReadBytes(Storage::NumberText, "-1.50", 2), "-1.5");
    EXPECT_EQ(ReadBytes(Storage::NumberText, "1.5e+2"), "150");
    EXPECT_EQ(ReadBytes(Storage::NumberText, " 1,5 "), "1.5");
    EXPECT_EQ(ReadBytes(Storage::NumberText, "42   "), "42");
    EXPECT_EQ(ReadBytes(Storage::NumberText, "     "), "0");
    EXPECT_EQ(ReadBytes(Storage::NumberText, "*****"), "0");
    EXPECT_EQ(ReadBytes(Storage::NumberText, std::string_view("\0\0\0", 3)), "0");
}

TEST(FieldReader, ReadsDaysThatExist) {
    EXPECT_EQ(ReadBytes(Storage::DateText, "20240229"), "2024-02-29");
    EXPECT_EQ(ReadBytes(Storage::DateText, "00010101"), "0001-01-01");
    EXPECT_EQ(ReadBytes(Storage::DateText, "99991231"), "9999-12-31");
    for (const auto* bytes :
         {"        ", "00000000", "20230229", "20241301", "2024 131", "2024-1-1", "0       ", " 9991231"}) {
        EXPECT_EQ(ReadBytes(Storage::DateText, bytes), "EMPTY") << bytes;
    }
}

TEST(FieldReader, ReadsLogicalsInTheirLetters) {
    for (const auto* bytes : {"T", "t", "Y", "y"})
        EXPECT_EQ(ReadBytes(Storage::LogicalText, bytes), "TRUE");
    for (const auto* bytes : {"F", "f", "N", "n"})
        EXPECT_EQ(ReadBytes(Storage::LogicalText, bytes), "FALSE");
    for (const auto* bytes : {" ", "?", "x"})
        EXPECT_EQ(ReadBytes(Storage::LogicalText, bytes), "EMPTY");
}

TEST(FieldReader, ReadsBinaryNumbers) {
    RecordBuilder builder;
    builder.Add("I", Storage::Integer32, 4)
        .Add("Y", Storage::Currency, 8)
        .Add("B", Storage::Double, 8)
        .Finish();
    builder.SetInteger("I", -5).SetInteger("Y", -12345).SetDouble("B", -0.125);
    EXPECT_EQ(Read(builder, 0), "-5");
    EXPECT_EQ(Read(builder, 1), "-1.2345");
    EXPECT_EQ(Read(builder, 2), "-0.125");
    builder.SetInteger("I", INT32_MIN).SetDouble("B", NAN);
    EXPECT_EQ(Read(builder, 0), "-2147483648");
    EXPECT_EQ(Read(builder, 2), "NULL");
}

std::string ReadMoment(std::int32_t day, std::int32_t milliseconds) {
    RecordBuilder builder;
    builder.Add("T", Storage::DateTime, 8).Finish();
    builder.SetMoment("T", day, milliseconds);
    return Read(builder);
}

TEST(FieldReader, PutsMomentsRightThatMissASecondByOneMillisecond) {
    EXPECT_EQ(ReadMoment(2460341, 1000), "2024-01-31 00:00:01.000");
    EXPECT_EQ(ReadMoment(2460341, 999), "2024-01-31 00:00:01.000");
    EXPECT_EQ(ReadMoment(2460341, 1001), "2024-01-31 00:00:01.000");
    EXPECT_EQ(ReadMoment(2460341, 1500), "2024-01-31 00:00:01.500");
    EXPECT_EQ(ReadMoment(2460341, kDayMilliseconds - 1), "2024-02-01 00:00:00.000");
}

TEST(FieldReader, TakesMomentsWithoutADayAsEmpty) {
    EXPECT_EQ(ReadMoment(0, 0), "EMPTY");
    EXPECT_EQ(ReadMoment(0, 43200000), "EMPTY");
    EXPECT_EQ(ReadMoment(-1, 0), "EMPTY");
    EXPECT_EQ(ReadMoment(INT32_MAX, INT32_MAX), "EMPTY");
    EXPECT_EQ(ReadMoment(kLastDay, kDayMilliseconds - 1), "EMPTY");
}

TEST(FieldReader, KeepsTimesWithinTheDay) {
    EXPECT_EQ(ReadMoment(2460341, -5), "2024-01-31 00:00:00.000");
    EXPECT_EQ(ReadMoment(2460341, INT32_MAX), "2024-02-01 00:00:00.000");
}

TEST(FieldReader, CutsVaryingTextsAtTheirLength) {
    RecordBuilder builder;
    builder.Add("V", Storage::Varchar, 6).Variable().Finish();
    builder.Set("V", "abcdef");
    EXPECT_EQ(Read(builder), "\"abcdef\"");
    builder.SetVariableLength("V", 3);
    EXPECT_EQ(Read(builder), "\"abc\"");
    builder.SetVariableLength("V", 0);
    EXPECT_EQ(Read(builder), "\"\"");
    builder.SetVariableLength("V", 200);
    EXPECT_EQ(Read(builder), "\"abcde\"");
}

TEST(FieldReader, LetsTheNullBitWin) {
    RecordBuilder builder;
    builder.Add("A", Storage::Integer32, 4)
        .Nullable()
        .Add("V", Storage::Varchar, 4)
        .Variable()
        .Nullable()
        .Finish();
    builder.SetInteger("A", 5).Set("V", "text").SetNull("V");
    EXPECT_EQ(Read(builder, 0), "5");
    EXPECT_EQ(Read(builder, 1), "NULL");
    builder.SetNull("A").SetNull("V", false);
    EXPECT_EQ(Read(builder, 0), "NULL");
    EXPECT_EQ(Read(builder, 1), "\"text\"");
}

TEST(FieldReader, FindsNullBitsBeyondTheFirstByte) {
    RecordBuilder builder;
    for (int i = 0; i < 10; ++i)
        builder.Add("F" + std::to_string(i), Storage::LogicalText, 1).Nullable();
    builder.Finish();
    builder.SetNull("F9");
    EXPECT_EQ(Read(builder, 9), "NULL");
    EXPECT_EQ(Read(builder, 8), "EMPTY");
}

TEST(FieldReader, FetchesMemosAndTakesMissingOnesAsEmpty) {
    RecordBuilder builder;
    builder.Add("M", Storage::Memo, 10).Finish();
    EXPECT_EQ(Read(builder), "\"\"");
    builder.SetMemo("M", "a note");
    EXPECT_EQ(Read(builder), "\"a note\"");
    Row row = builder.row();
    row.memos = nullptr;
    Register value;
    ReadField(builder.layout, 0, row, value);
    EXPECT_EQ(value.text, "");
}

TEST(FieldReader, TellsBlankFieldsFromZeros) {
    RecordBuilder builder = SampleRecord();
    Register scratch;
    const auto isBlank = [&](const char* name) {
        for (std::size_t i = 0; i < builder.layout.fields.size(); ++i) {
            if (builder.layout.fields[i].name == name)
                return IsBlankField(builder.layout, i, builder.row(), scratch);
        }
        return false;
    };
    EXPECT_TRUE(isBlank("DISCOUNT"));
    EXPECT_TRUE(isBlank("SHIPPED"));
    EXPECT_TRUE(isBlank("CHECKED"));
    EXPECT_FALSE(isBlank("ID"));
    EXPECT_FALSE(isBlank("QTY"));
    EXPECT_FALSE(isBlank("REGION")) << "NULL is not blank";
}

}  // namespace
}  // namespace zu::expression::testing
