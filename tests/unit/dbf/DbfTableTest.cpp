#include "host/technologies/dbf/DbfTable.h"

#include <gtest/gtest.h>

#include "host/technologies/dbf/TableWriter.h"
#include "tests/unit/dbf/ErrorExpectation.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

using technologies::Selection;
using technologies::Value;
using Records = std::vector<std::uint32_t>;

class DbfTableTest : public testing::Test {
protected:
    std::unique_ptr<DbfTable> Open(const std::string& path = "t.dbf") {
        return DbfTable::Open(files_, path, settings_);
    }
    Records Select(DbfTable& table, std::u16string condition, std::uint32_t limit = 0, bool deleted = false,
                   std::string_view index = {}) {
        Selection selection;
        selection.condition = std::move(condition);
        selection.maxRecords = limit;
        selection.includeDeleted = deleted;
        if (!index.empty()) {
            selection.index = table.FindIndex(index);
            EXPECT_TRUE(selection.index) << index;
        }
        return table.Select(selection);
    }
    /// Records 1 to `count`: N is the number, GROUP its last digit, every tenth record is deleted.
    void WriteNumbers(int count, const std::vector<cdx::TagDefinition>& tags = {}) {
        WriteNumbers(files_, count, tags);
    }
    static void WriteNumbers(files::FileSystem& files, int count,
                             const std::vector<cdx::TagDefinition>& tags) {
        TableWriter table(files, "t.dbf", Format::FoxPro2, 0x03, {{"N", 'N', 8}, {"GROUP", 'C', 3}});
        for (int i = 1; i <= count; ++i) {
            table.SetNumber(0, i);
            table.SetText(1, std::u16string{u'G', static_cast<char16_t>(u'0' + i % 10)});
            table.Append(i % 10 == 0);
        }
        table.Close(tags);
    }

    /// Puts more records into the file while it is open, as another process would.
    void GrowTo(int count) {
        files::MemoryFiles elsewhere;
        WriteNumbers(elsewhere, count, {});
        files_.Put("t.dbf", elsewhere.Get("t.dbf"));
    }

    files::MemoryFiles files_;
    technologies::TechnologySettings settings_;
};

TEST_F(DbfTableTest, ReadsFieldsAndRecords) {
    WriteNumbers(12);
    const auto table = Open();
    EXPECT_EQ(table->name(), "t");
    ASSERT_EQ(table->fields().size(), 2U);
    EXPECT_EQ(table->fields()[1].name, "GROUP");
    EXPECT_EQ(table->RecordCount(), 12U);
    Value value;
    table->ReadValue(12, 1, value);
    EXPECT_EQ(value.text, u"G2");
    EXPECT_TRUE(table->IsDeleted(10));
    EXPECT_FALSE(table->IsDeleted(11));
    EXPECT_TRUE(table->warnings().empty());
}

TEST_F(DbfTableTest, NamesRecordsAndFieldsThatDoNotExist) {
    WriteNumbers(3);
    const auto table = Open();
    Value value;
    ExpectError(ErrorKind::NotFound, {"no record 4", "3 records"}, [&] { table->ReadValue(4, 0, value); });
    ExpectError(ErrorKind::NotFound, {"no record 0"}, [&] { table->IsDeleted(0); });
    ExpectError(ErrorKind::NotFound, {"no field number 2"}, [&] { table->ReadValue(1, 2, value); });
}

TEST_F(DbfTableTest, SelectsAllRecordsForABlankCondition) {
    WriteNumbers(12);
    const auto table = Open();
    EXPECT_EQ(Select(*table, u""), (Records{1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12}));
    EXPECT_EQ(Select(*table, u"   "), Select(*table, u""));
    EXPECT_EQ(Select(*table, u"", 0, true).size(), 12U);
    EXPECT_EQ(Select(*table, u"", 10, false).back(), 11U);
    EXPECT_EQ(Select(*table, u"", 4, true), (Records{1, 2, 3, 4}));
}

TEST_F(DbfTableTest, KeepsDeletedRecordsWhenTheSettingSaysSo) {
    WriteNumbers(10);
    settings_.showDeleted = true;
    EXPECT_EQ(Select(*Open(), u"").size(), 10U);
    EXPECT_EQ(Select(*Open(), u"N >= 9"), (Records{9, 10}));
}

TEST_F(DbfTableTest, SelectsByCondition) {
    WriteNumbers(1000);
    const auto table = Open();
    EXPECT_EQ(Select(*table, u"N > 995"), (Records{996, 997, 998, 999}));
    EXPECT_EQ(Select(*table, u"N > 995", 0, true).size(), 5U);
    EXPECT_EQ(Select(*table, u"GROUP = 'G3' AND N < 30"), (Records{3, 13, 23}));
    EXPECT_EQ(Select(*table, u"GROUP = 'G3'", 2), (Records{3, 13}));
    EXPECT_TRUE(Select(*table, u"N < 0").empty());
}

TEST_F(DbfTableTest, SelectsFromManyRecordsAsFromFew) {
    // Enough of them for two threads.
    constexpr int kCount = 200'003;
    WriteNumbers(kCount);
    Records expected;
    for (std::uint32_t number = 3; number <= kCount; number += 10)
        expected.push_back(number);
    const auto table = Open();
    EXPECT_EQ(Select(*table, u"GROUP = 'G3'"), expected);
    EXPECT_EQ(Select(*table, u"GROUP = 'G3'", 5), (Records{3, 13, 23, 33, 43}));
    EXPECT_TRUE(Select(*table, u"N < 0").empty());
}

TEST_F(DbfTableTest, SelectsAcrossBlocksWithoutAMapping) {
    WriteNumbers(200'000);
    files_.AllowMapping(false);
    const auto table = Open();
    EXPECT_EQ(Select(*table, u"N >= 87381 AND N <= 87384"), (Records{87381, 87382, 87383, 87384}));
    EXPECT_EQ(Select(*table, u"").size(), 180'000U);
    EXPECT_EQ(Select(*table, u"GROUP = 'G3'").size(), 20'000U);
    EXPECT_EQ(Select(*table, u"GROUP = 'G3'", 15'000).size(), 15'000U);
}

TEST_F(DbfTableTest, ReportsAFaultyConditionWithItsPosition) {
    WriteNumbers(3);
    const auto table = Open();
    try {
        Select(*table, u"N > (1");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Syntax);
        EXPECT_TRUE(error.position());
    }
    EXPECT_THROW(Select(*table, u"NOSUCHFIELD = 1"), Error);
}

class DbfTableOrderTest : public DbfTableTest, public testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(Access, DbfTableOrderTest, testing::Bool(),
                         [](const auto& mapped) { return mapped.param ? "Mapped" : "Read"; });

TEST_P(DbfTableOrderTest, WalksAnIndex) {
    WriteNumbers(
        30, {{.name = "GRP", .key = "GROUP+STR(N,8)"}, {.name = "DOWN", .key = "N", .descending = true}});
    files_.AllowMapping(GetParam());
    const auto table = Open();
    EXPECT_TRUE(table->warnings().empty());
    const Records up = Select(*table, u"", 0, true, "GRP");
    ASSERT_EQ(up.size(), 30U);
    EXPECT_EQ(up[0], 10U);
    EXPECT_EQ(up[1], 20U);
    EXPECT_EQ(up[3], 1U);
    EXPECT_EQ(Select(*table, u"", 4, false, "DOWN"), (Records{29, 28, 27, 26}));
    EXPECT_EQ(Select(*table, u"", 2, false, "grp"), (Records{1, 11}));
}

TEST_P(DbfTableOrderTest, OrdersTheMatchesOfACondition) {
    WriteNumbers(20'000, {{.name = "DOWN", .key = "N", .descending = true}, {.name = "GRP", .key = "GROUP"}});
    files_.AllowMapping(GetParam());
    const auto table = Open();
    // Without a limit, with a limit that is reached at once, late (after the tests along the index), and
    // never.
    EXPECT_EQ(Select(*table, u"SUBSTR(GROUP,2,1) = '3' AND N < 40", 0, false, "DOWN"),
              (Records{33, 23, 13, 3}));
    EXPECT_EQ(Select(*table, u"SUBSTR(GROUP,2,1) = '3'", 2, false, "DOWN"), (Records{19993, 19983}));
    EXPECT_EQ(Select(*table, u"SUBSTR(GROUP,2,1) = '3' AND MOD(N,10000) < 40", 3, false, "DOWN"),
              (Records{10033, 10023, 10013}));
    const Records late = Select(
        *table, u"SUBSTR(GROUP,2,1) = '3' AND (MOD(N,19990) = 3 OR MOD(N,10000) = 13)", 3, false, "DOWN");
    EXPECT_EQ(late, (Records{19993, 10013, 13}));
    EXPECT_EQ(Select(*table, u"SUBSTR(GROUP,2,1) = '3' AND N < 10", 3, false, "DOWN"), (Records{3}));
    EXPECT_TRUE(Select(*table, u"SUBSTR(GROUP,2,1) = 'X'", 3, false, "DOWN").empty());
    // Deleted records stay out of the matches, or in.
    EXPECT_TRUE(Select(*table, u"SUBSTR(GROUP,2,1) = '0'", 0, false, "DOWN").empty());
    EXPECT_EQ(Select(*table, u"SUBSTR(GROUP,2,1) = '0'", 2, true, "DOWN"), (Records{20000, 19990}));
}

TEST_P(DbfTableOrderTest, GivesTheSameMatchesWithAndWithoutATag) {
    WriteNumbers(5000);
    files_.AllowMapping(GetParam());
    const std::u16string conditions[] = {u"N = 77",       u"N > 10 AND N < 20",
                                         u"GROUP = 'G5'", u"N >= 4990 AND GROUP = 'G1'",
                                         u"N = 10",       u"N = -1"};
    std::vector<Records> scanned;
    for (const auto& condition : conditions)
        scanned.push_back(Select(*Open(), condition));
    WriteNumbers(5000, {{.name = "N", .key = "N"}, {.name = "GRP", .key = "GROUP"}});
    const auto table = Open();
    ASSERT_EQ(table->indexes().size(), 2U);
    for (std::size_t i = 0; i < std::size(conditions); ++i)
        EXPECT_EQ(Select(*table, conditions[i]), scanned[i]);
    EXPECT_EQ(Select(*table, u"N > 4000 AND N < 4004", 0, false, "N"), (Records{4001, 4002, 4003}));
    EXPECT_EQ(Select(*table, u"GROUP = 'G5'", 3), (Records{5, 15, 25}));
}

TEST_F(DbfTableTest, SeeksKeys) {
    WriteNumbers(100, {{.name = "N", .key = "N"}, {.name = "GRP", .key = "GROUP"}});
    const auto table = Open();
    technologies::KeyCriterion criterion;
    criterion.value.kind = Value::Kind::Double;
    criterion.value.number = 42;
    const auto byNumber = table->FindIndex("N");
    ASSERT_TRUE(byNumber);
    EXPECT_EQ(table->Seek(*byNumber, {criterion}, 0, false), (Records{42}));
    criterion.value.number = 40;
    EXPECT_TRUE(table->Seek(*byNumber, {criterion}, 0, false).empty());  // deleted
    EXPECT_EQ(table->Seek(*byNumber, {criterion}, 0, true), (Records{40}));
    criterion.value.kind = Value::Kind::Text;
    criterion.value.text = u"G7";
    EXPECT_EQ(table->Seek(*table->FindIndex("GRP"), {criterion}, 3, false), (Records{7, 17, 27}));
    ExpectError(ErrorKind::NotFound, {"no index number 9"}, [&] { table->Seek(9, {}, 0, false); });
}

TEST_F(DbfTableTest, NamesIndexesThatDoNotExist) {
    WriteNumbers(3);
    const auto table = Open();
    EXPECT_FALSE(table->FindIndex("N"));
    EXPECT_FALSE(table->DefaultIndex());
    EXPECT_TRUE(table->indexes().empty());
    Selection selection;
    selection.index = 0;
    ExpectError(ErrorKind::NotFound, {"no index number 0", "0 indexes"}, [&] { table->Select(selection); });
}

TEST_F(DbfTableTest, DoesNotUseAStaleIndex) {
    WriteNumbers(50, {{.name = "N", .key = "N"}});
    const auto index = files_.Get("t.cdx");
    WriteNumbers(60, {{.name = "N", .key = "N"}});
    files_.Put("t.cdx", index);  // as if another program had appended without it
    const auto table = Open();
    EXPECT_FALSE(table->warnings().empty());
    EXPECT_EQ(Select(*table, u"N = 55"), (Records{55}));
    Selection selection;
    selection.index = 0;
    ExpectError(ErrorKind::Unsupported, {"index N", "cannot be used"}, [&] { table->Select(selection); });
}

TEST_F(DbfTableTest, SeesRecordsThatAnotherProcessAppends) {
    WriteNumbers(5);
    const auto table = Open();
    EXPECT_EQ(table->RecordCount(), 5U);
    GrowTo(8);
    EXPECT_EQ(Select(*table, u"N > 3").size(), 5U);
    EXPECT_EQ(table->RecordCount(), 8U);
    GrowTo(9);
    Value value;
    table->ReadValue(9, 0, value);  // a record that was not there at the last look
    EXPECT_EQ(value.decimal.low, 9U);
}

TEST_F(DbfTableTest, OpensWithoutItsMemoFile) {
    TableImage image(0x30);
    image.Field("M", 'M', 4)
        .Field("N", 'I', 4)
        .Record(Little(8, 4) + Little(1, 4))
        .Record(Little(0, 4) + Little(2, 4));
    image.PutInto(files_, "t.dbf");
    const auto table = Open();
    EXPECT_TRUE(Mentions(table->warnings(), "memo file is missing"));
    Value value;
    table->ReadValue(1, 0, value);
    EXPECT_EQ(value.kind, Value::Kind::Null);
    table->ReadValue(2, 0, value);
    EXPECT_EQ(value.kind, Value::Kind::Text);
    EXPECT_EQ(value.text, u"");
    table->ReadValue(2, 1, value);
    EXPECT_EQ(value.integer, 2);
}

TEST_F(DbfTableTest, ReadsADamagedMemoAsNullAndWarnsOnce) {
    TableImage image(0x30);
    image.Field("M", 'M', 4).Record(Little(7777, 4)).Record(Little(8888, 4));
    image.PutInto(files_, "t.dbf");
    Put(files_, "t.fpt", std::string(6, '\0') + Big(64, 2) + std::string(504, '\0'));
    const auto table = Open();
    Value value;
    table->ReadValue(1, 0, value);
    EXPECT_EQ(value.kind, Value::Kind::Null);
    table->ReadValue(2, 0, value);
    ASSERT_EQ(table->warnings().size(), 1U);
    EXPECT_TRUE(Mentions(table->warnings(), "7777"));
}

TEST_F(DbfTableTest, FindsCompanionFilesInAnyCase) {
    TableImage image(0x30);
    image.Field("M", 'M', 4).Record(Little(8, 4));
    image.PutInto(files_, "f/ORDERS.DBF");
    Put(files_, "f/Orders.Fpt",
        std::string(6, '\0') + Big(64, 2) + std::string(504, '\0') + Big(1, 4) + Big(2, 4) + "hi");
    Value value;
    Open("f/ORDERS.DBF")->ReadValue(1, 0, value);
    EXPECT_EQ(value.text, u"hi");
}

TEST_F(DbfTableTest, TakesTheCharacterSetOfASideFile) {
    TableImage image;
    image.Field("C", 'C', 2).Mark(0x03).Record("\xC3\xA4").PutInto(files_, "t.dbf");
    Value value;
    Open()->ReadValue(1, 0, value);
    EXPECT_EQ(value.text, u"\u00C3\u00A4");
    Put(files_, "t.cpg", "UTF-8\r\n");
    Open()->ReadValue(1, 0, value);
    EXPECT_EQ(value.text, u"\u00E4");
    EXPECT_EQ(Open()->codePage().number(), 65001U);
}

TEST_F(DbfTableTest, WarnsOfIndexesItCannotUse) {
    TableImage image(0x30);
    image.Field("C", 'C', 2).Flags(1).Record("ab").PutInto(files_, "t.dbf");
    EXPECT_TRUE(Mentions(Open()->warnings(), "missing"));
    Put(files_, "t.cdx", "no index");
    EXPECT_FALSE(Open()->warnings().empty());
    EXPECT_EQ(Select(*Open(), u"C = 'ab'"), (Records{1}));

    image.Flags(0).PutInto(files_, "t.dbf");
    EXPECT_TRUE(Mentions(Open()->warnings(), "does not announce"));

    TableImage dBase(0x8B);
    dBase.Field("C", 'C', 2).Flags(1).Record("ab").PutInto(files_, "d.dbf");
    Put(files_, "d.mdx", "x");
    EXPECT_TRUE(Mentions(Open("d.dbf")->warnings(), ".mdx"));
}

TEST_F(DbfTableTest, ReadsAllRecordsWhenTheIndexFileIsLocked) {
    WriteNumbers(30, {{.name = "N", .key = "N"}});
    const auto lock = files_.Open("t.cdx", {files::Access::Read, files::Creation::OpenExisting, true});
    const auto table = Open();
    EXPECT_TRUE(Mentions(table->warnings(), "denies sharing"));
    EXPECT_EQ(Select(*table, u"N = 7"), (Records{7}));
}

TEST_F(DbfTableTest, WarnsOfAWrongRecordCount) {
    TableImage image;
    image.Field("C", 'C', 2).Record("ab").StatedCount(9).PutInto(files_, "t.dbf");
    EXPECT_TRUE(Mentions(Open()->warnings(), "counts 9 records, but the file holds only 1"));
    image.Record("cd").StatedCount(1).PutInto(files_, "t.dbf");
    EXPECT_TRUE(Mentions(Open()->warnings(), "counts 1 records, but the file holds 2"));
}

TEST_F(DbfTableTest, RefusesALockedTable) {
    WriteNumbers(3);
    const auto lock = files_.Open("t.dbf", {files::Access::Read, files::Creation::OpenExisting, true});
    ExpectError(ErrorKind::Locked, {"t.dbf"}, [&] { Open(); });
}

TEST_F(DbfTableTest, RefusesAMissingTable) {
    ExpectError(ErrorKind::NotFound, {"t.dbf"}, [&] { Open(); });
}

TEST_F(DbfTableTest, ReadsBlankNumbersAsNullWhenTheSettingSaysSo) {
    TableImage image;
    image.Field("N", 'N', 4).Record("    ").PutInto(files_, "t.dbf");
    settings_.blankNumbersAreNull = true;
    Value value;
    Open()->ReadValue(1, 0, value);
    EXPECT_EQ(value.kind, Value::Kind::Null);
}

TEST_F(DbfTableTest, TellsPeopleItsFormatItsCodePageAndItsFiles) {
    WriteNumbers(3, {cdx::TagDefinition{.name = "N", .key = "N"}});
    const auto table = Open();
    std::string told;
    for (const technologies::TableFact& fact : table->Facts())
        if (fact.name != "Last change") told += fact.name + "=" + fact.value + ";";
    const auto size = [&](const char* path) { return std::to_string(files_.Open(path, {})->Size()); };
    EXPECT_EQ(told, "Format=dBASE III;Code page=1252;Table file=t.dbf;Table size=" + size("t.dbf") +
                        ";Index file=t.cdx;Index size=" + size("t.cdx") + ";");
}

}  // namespace
}  // namespace zu::dbf
