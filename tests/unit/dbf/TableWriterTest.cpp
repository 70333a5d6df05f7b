#include "host/technologies/dbf/TableWriter.h"

#include <gtest/gtest.h>

#include "host/technologies/dbf/DbfTable.h"
#include "portable/calendar/Calendar.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbf/ErrorExpectation.h"

namespace zu::dbf {
namespace {

using technologies::Value;

class TableWriterTest : public testing::Test {
protected:
    std::unique_ptr<DbfTable> Open() { return DbfTable::Open(files_, "t.dbf", {}); }
    Value Read(DbfTable& table, std::uint32_t record, std::size_t field) {
        Value value;
        table.ReadValue(record, field, value);
        return value;
    }
    void ExpectRefused(ErrorKind kind, std::string_view part, Format format, FieldDefinition field) {
        files_.Put("t.dbf", {});
        ExpectError(kind, {part, field.name}, [&] { TableWriter(files_, "t.dbf", format, 0x03, {field}); });
        EXPECT_TRUE(files_.Get("t.dbf").empty());  // an old table would still be there
    }

    files::MemoryFiles files_;
};

TEST_F(TableWriterTest, ReadsBackEveryTypeOfVisualFoxPro) {
    TableWriter writer(files_, "t.dbf", Format::VisualFoxPro, 0xC9,
                       {{"C", 'C', 300},
                        {"N", 'N', 10, 3},
                        {"F", 'F', 12, 2},
                        {"D", 'D'},
                        {"L", 'L'},
                        {"M", 'M'},
                        {"I", 'I'},
                        {"B", 'B', 8, 4},
                        {"Y", 'Y'},
                        {"T", 'T'},
                        {"V", 'V', 20},
                        {"Q", 'Q', 5},
                        {"G", 'G'},
                        {"X", 'C', 3, 0, true}});
    writer.SetText(0, u"\u041F\u0440\u0438\u0432\u0435\u0442");
    writer.SetDecimal(1, -123456);
    writer.SetNumber(2, 1.255);
    writer.SetDate(3, {2024, 2, 29});
    writer.SetBoolean(4, true);
    writer.SetMemo(5, std::u16string(1000, u'\u044F'));
    writer.SetInteger(6, -7);
    writer.SetNumber(7, 0.1);
    writer.SetNumber(8, 12.3456);
    writer.SetDateTime(9, 2440588, 3'600'000);
    writer.SetText(10, u"short");
    writer.SetBytes(11, "12345");
    writer.SetMemoBytes(12, std::string_view("\0\1", 2));
    writer.SetNull(13);
    writer.Append();
    writer.Append(true);
    writer.Close();

    const auto table = Open();
    EXPECT_TRUE(table->warnings().empty());
    EXPECT_EQ(table->header().versionByte, 0x32);
    EXPECT_EQ(table->header().tableFlags, 0x02);
    EXPECT_EQ(table->header().headerLength, 32U + 15 * 32 + 264);
    EXPECT_EQ(table->codePage().number(), 1251U);
    ASSERT_EQ(table->RecordCount(), 2U);
    EXPECT_EQ(Read(*table, 1, 0).text, u"\u041F\u0440\u0438\u0432\u0435\u0442");
    EXPECT_EQ(Read(*table, 1, 1).decimal, (technologies::Decimal{123456, 0, 3, true}));
    EXPECT_EQ(Read(*table, 1, 2).number, 1.26);
    EXPECT_EQ(Read(*table, 1, 3).julianDay, calendar::ToJulianDay({2024, 2, 29}));
    EXPECT_TRUE(Read(*table, 1, 4).boolean);
    EXPECT_EQ(Read(*table, 1, 5).text, std::u16string(1000, u'\u044F'));
    EXPECT_EQ(Read(*table, 1, 6).integer, -7);
    EXPECT_EQ(Read(*table, 1, 7).number, 0.1);
    EXPECT_EQ(Read(*table, 1, 8).integer, 123456);
    EXPECT_EQ(Read(*table, 1, 9).milliseconds, 3'600'000);
    EXPECT_EQ(Read(*table, 1, 10).text, u"short");
    EXPECT_EQ(Read(*table, 1, 11).binary.size(), 5U);
    EXPECT_EQ(Read(*table, 1, 12).binary, (std::vector<std::uint8_t>{0, 1}));
    EXPECT_EQ(Read(*table, 1, 13).kind, Value::Kind::Null);
    EXPECT_FALSE(table->IsDeleted(1));
    EXPECT_TRUE(table->IsDeleted(2));
}

TEST_F(TableWriterTest, LeavesFieldsBlankThatWereNotSet) {
    TableWriter writer(files_, "t.dbf", Format::VisualFoxPro, 0x03,
                       {{"C", 'C', 3},
                        {"N", 'N', 5, 1},
                        {"D", 'D'},
                        {"L", 'L'},
                        {"M", 'M'},
                        {"I", 'I'},
                        {"T", 'T'},
                        {"V", 'V', 9},
                        {"X", 'N', 4, 0, true}});
    writer.SetText(0, u"abc");
    writer.SetMemo(4, u"once");
    writer.SetNull(8);
    writer.Append();
    writer.Append();
    writer.Close();
    const auto table = Open();
    EXPECT_EQ(Read(*table, 2, 0).text, u"");
    EXPECT_EQ(Read(*table, 2, 1).decimal, (technologies::Decimal{0, 0, 1, false}));
    EXPECT_EQ(Read(*table, 2, 2).kind, Value::Kind::Null);
    EXPECT_EQ(Read(*table, 2, 3).kind, Value::Kind::Null);
    EXPECT_EQ(Read(*table, 2, 4).text, u"");
    EXPECT_EQ(Read(*table, 2, 5).integer, 0);
    EXPECT_EQ(Read(*table, 2, 6).kind, Value::Kind::Null);
    EXPECT_EQ(Read(*table, 2, 7).text, u"");
    EXPECT_EQ(Read(*table, 2, 8).kind, Value::Kind::Decimal);
}

TEST_F(TableWriterTest, TakesTheNullMarkAwayWithAValue) {
    TableWriter writer(files_, "t.dbf", Format::VisualFoxPro, 0x03, {{"N", 'N', 4, 0, true}});
    writer.SetNull(0);
    writer.SetNumber(0, 3);
    writer.Append();
    writer.Close();
    EXPECT_EQ(Read(*Open(), 1, 0).decimal.low, 3U);
}

TEST_F(TableWriterTest, WritesTablesAndMemosOfDBase3AndFoxPro2) {
    for (const Format format : {Format::DBase3, Format::FoxPro2}) {
        TableWriter writer(files_, "t.dbf", format, 0x01, {{"C", 'C', 3}, {"M", 'M'}}, {2001, 2, 3});
        writer.SetText(0, u"\u00FC");
        writer.SetMemo(1, u"one\u00E4");
        writer.Append();
        writer.SetMemo(1, std::u16string(600, u'x'));
        writer.Append();
        writer.SetMemo(1, u"three");
        writer.Append();
        writer.Close();
        const auto table = Open();
        EXPECT_EQ(table->header().versionByte, format == Format::DBase3 ? 0x83 : 0xF5);
        EXPECT_EQ(table->header().headerLength, 32U + 64 + 1);
        EXPECT_EQ(table->header().lastChange, (calendar::Date{2001, 2, 3}));
        EXPECT_TRUE(table->warnings().empty());
        EXPECT_EQ(Read(*table, 1, 0).text, u"\u00FC");
        EXPECT_EQ(Read(*table, 1, 1).text, u"one\u00E4");
        EXPECT_EQ(Read(*table, 2, 1).text, std::u16string(600, u'x'));
        EXPECT_EQ(Read(*table, 3, 1).text, u"three");
    }
    EXPECT_TRUE(files_.Exists("t.dbt"));
    EXPECT_TRUE(files_.Exists("t.fpt"));
}

TEST_F(TableWriterTest, WritesTheBytesThatOtherProgramsExpect) {
    TableWriter writer(files_, "t.dbf", Format::DBase3, 0x03, {{"AB", 'N', 5, 1}}, {2026, 11, 21});
    writer.SetNumber(0, -2.5);
    writer.Append(true);
    writer.Close();
    const auto bytes = files_.Get("t.dbf");
    std::string expected("\x03\x7E\x0B\x15\x01\0\0\0\x41\0\x06\0", 12);
    expected.resize(29);
    expected += '\x03';
    expected.resize(32);
    expected += std::string("AB\0\0\0\0\0\0\0\0\0N\0\0\0\0\x05\x01", 18);
    expected.resize(64);
    expected += "\x0D* -2.5\x1A";
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), expected);
}

TEST_F(TableWriterTest, PlacesNullFlagsAsVisualFoxProDoes) {
    TableWriter writer(files_, "t.dbf", Format::VisualFoxPro, 0x03,
                       {{"V", 'V', 5, 0, true}, {"I", 'I', 4, 0, true}, {"W", 'V', 3}});
    writer.SetText(0, u"abcde");
    writer.SetNull(1);
    writer.SetText(2, u"x");
    writer.Append();
    writer.Close();
    const auto bytes = files_.Get("t.dbf");
    // Bits: V length, V null, I null, W length; one for I null, one for W not being full.
    EXPECT_EQ(bytes[bytes.size() - 2], std::byte{0x0C});
    EXPECT_EQ(Read(*Open(), 1, 0).text, u"abcde");
    EXPECT_EQ(Read(*Open(), 1, 1).kind, Value::Kind::Null);
    EXPECT_EQ(Read(*Open(), 1, 2).text, u"x");
}

TEST_F(TableWriterTest, GivesEachFieldThatCanBeNullABit) {
    std::vector<FieldDefinition> fields;
    fields.reserve(9);
    for (int i = 0; i < 9; ++i)
        fields.push_back({"F" + std::to_string(i), 'I', 4, 0, true});
    TableWriter writer(files_, "t.dbf", Format::VisualFoxPro, 0x03, fields);
    for (std::size_t i = 0; i < 9; i += 2)
        writer.SetNull(i);
    writer.Append();
    writer.Close();
    const auto table = Open();
    EXPECT_TRUE(table->warnings().empty());
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_EQ(Read(*table, 1, i).kind == Value::Kind::Null, i % 2 == 0) << i;
}

TEST_F(TableWriterTest, LosesNothingSilently) {
    TableWriter writer(
        files_, "t.dbf", Format::VisualFoxPro, 0x03,
        {{"C", 'C', 3}, {"N", 'N', 5, 2}, {"I", 'I'}, {"D", 'D'}, {"L", 'L'}, {"Y", 'Y'}, {"T", 'T'}});
    ExpectError(ErrorKind::Overflow, {"field C", "table t"}, [&] { writer.SetText(0, u"abcd"); });
    ExpectError(ErrorKind::InvalidArgument, {"field C", "position 2", "1252"},
                [&] { writer.SetText(0, u"a\u0416"); });
    ExpectError(ErrorKind::Overflow, {"field N", "width 5"}, [&] { writer.SetNumber(1, 1000); });
    ExpectError(ErrorKind::Overflow, {"field N"}, [&] { writer.SetDecimal(1, 100000); });
    ExpectError(ErrorKind::Overflow, {"field I"}, [&] { writer.SetNumber(2, 3e9); });
    ExpectError(ErrorKind::Overflow, {"field I"}, [&] { writer.SetDecimal(2, 3'000'000'000); });
    ExpectError(ErrorKind::Overflow, {"field D"}, [&] { writer.SetDate(3, {2023, 2, 29}); });
    ExpectError(ErrorKind::Overflow, {"field Y"}, [&] { writer.SetNumber(5, 1e18); });
    ExpectError(ErrorKind::Overflow, {"field T"}, [&] { writer.SetDateTime(6, 2440588, 86'400'000); });
    ExpectError(ErrorKind::TypeMismatch, {"field L", "a number"}, [&] { writer.SetNumber(4, 1); });
    ExpectError(ErrorKind::TypeMismatch, {"field N", "a text"}, [&] { writer.SetText(1, u"1"); });
    ExpectError(ErrorKind::TypeMismatch, {"field C", "a memo"}, [&] { writer.SetMemo(0, u""); });
    writer.Append();
    writer.Close();
    EXPECT_EQ(Read(*Open(), 1, 0).text, u"");
}

TEST_F(TableWriterTest, RefusesAMemoThatDBase3CannotHold) {
    TableWriter writer(files_, "t.dbf", Format::DBase3, 0x03, {{"M", 'M'}});
    ExpectError(ErrorKind::InvalidArgument, {"t.dbt", "1A"}, [&] { writer.SetMemo(0, u"a\u001Ab"); });
}

TEST_F(TableWriterTest, RefusesFieldsThatCannotBe) {
    ExpectRefused(ErrorKind::InvalidArgument, "1 to 10", Format::DBase3, {"", 'C', 3});
    ExpectRefused(ErrorKind::InvalidArgument, "1 to 10", Format::DBase3, {"ELEVENBYTES", 'C', 3});
    ExpectRefused(ErrorKind::InvalidArgument, "begins with", Format::DBase3, {"1A", 'C', 3});
    ExpectRefused(ErrorKind::InvalidArgument, "begins with", Format::DBase3, {"A B", 'C', 3});
    ExpectRefused(ErrorKind::InvalidArgument, "width is 0", Format::DBase3, {"A", 'C', 0});
    ExpectRefused(ErrorKind::InvalidArgument, "width is 21", Format::DBase3, {"A", 'N', 21});
    ExpectRefused(ErrorKind::InvalidArgument, "decimal places", Format::DBase3, {"A", 'N', 5, 4});
    ExpectRefused(ErrorKind::InvalidArgument, "decimal places", Format::DBase3, {"A", 'C', 5, 1});
    ExpectRefused(ErrorKind::InvalidArgument, "65500", Format::DBase3, {"A", 'C', 65535});
    ExpectRefused(ErrorKind::Unsupported, "no type 'I'", Format::DBase3, {"A", 'I'});
    ExpectRefused(ErrorKind::Unsupported, "no type 'V'", Format::FoxPro2, {"A", 'V', 5});
    ExpectRefused(ErrorKind::Unsupported, "no type 'X'", Format::VisualFoxPro, {"A", 'X', 5});
    ExpectRefused(ErrorKind::Unsupported, "null", Format::FoxPro2, {"A", 'C', 5, 0, true});
    ExpectError(ErrorKind::InvalidArgument, {"twice"}, [&] {
        TableWriter(files_, "t.dbf", Format::DBase3, 0, {{"A", 'C', 1}, {"a", 'C', 1}});
    });
    ExpectError(ErrorKind::InvalidArgument, {"1 to 254"},
                [&] { TableWriter(files_, "t.dbf", Format::DBase3, 0, {}); });
}

TEST_F(TableWriterTest, AnnouncesTheIndexItBuilt) {
    TableWriter writer(files_, "t.dbf", Format::FoxPro2, 0x03, {{"C", 'C', 3}});
    for (const char16_t* text : {u"c", u"a", u"b"}) {
        writer.SetText(0, text);
        writer.Append();
    }
    writer.Close({{.name = "C", .key = "C"}});
    const auto table = Open();
    EXPECT_EQ(table->header().tableFlags, 0x01);
    technologies::Selection selection;
    selection.index = table->FindIndex("c");
    ASSERT_TRUE(selection.index);
    EXPECT_EQ(table->Select(selection), (std::vector<std::uint32_t>{2, 3, 1}));
}

TEST_F(TableWriterTest, LeavesATableWithoutAnIndexWhenTheIndexCannotBeBuilt) {
    TableWriter writer(files_, "t.dbf", Format::FoxPro2, 0x03, {{"C", 'C', 3}});
    writer.Append();
    EXPECT_THROW(writer.Close({{.name = "X", .key = "NOSUCHFIELD"}}), Error);
    const auto table = Open();
    EXPECT_EQ(table->header().tableFlags, 0);
    EXPECT_EQ(table->RecordCount(), 1U);
}

TEST_F(TableWriterTest, KeepsOthersOutUntilItIsDone) {
    TableWriter writer(files_, "t.dbf", Format::DBase3, 0x03, {{"C", 'C', 3}});
    ExpectError(ErrorKind::Locked, {"t.dbf"}, [&] { Open(); });
    writer.Close();
    EXPECT_EQ(Open()->RecordCount(), 0U);
}

}  // namespace
}  // namespace zu::dbf
