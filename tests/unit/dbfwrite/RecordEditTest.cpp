#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "host/technologies/dbf/locking/FileLock.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

class RecordEdits : public ::testing::Test {
protected:
    RecordEdits() {
        // What is written shows at once only where files are read, not copied.
        files.AllowMapping(false);
        MakeTable(files);
        table = OpenTable(files);
    }
    void TearDown() override {
        table.reset();
        ExpectSoundIndex(files);
    }
    static ErrorKind KindOf(const std::function<void()>& action, std::string* message = nullptr) {
        try {
            action();
        } catch (const Error& error) {
            if (message) *message = error.what();
            return error.kind();
        }
        ADD_FAILURE() << "nothing was refused";
        return ErrorKind::Internal;
    }

    files::MemoryFiles files;
    std::unique_ptr<DbfTable> table;
};

TEST_F(RecordEdits, AppendsARecordWithEveryField) {
    const auto edit = table->NewRecord();
    edit->Set(kId, Integer(7));
    edit->Set(kName, Text(u"M\u00FCller"));
    edit->Set(kAmount, DecimalValue(123456, 2));
    edit->Set(kBorn, Day(1999, 12, 31));
    edit->Set(kPaid, Truth(true));
    edit->Set(kNote, Text(u"a longer note"));
    edit->Set(kCode, Text(u"X1"));
    EXPECT_EQ(table->RecordCount(), 0U) << "nothing shows before it is saved";
    EXPECT_TRUE(edit->Save());
    EXPECT_EQ(edit->record(), 1U);
    EXPECT_EQ(table->RecordCount(), 1U);
    EXPECT_EQ(ShownRecord(*table, 1), "7|M\u00FCller|1234.56|1999-12-31|True|a longer note|X1");
    EXPECT_EQ(ShownRecord(*OpenTable(files), 1), "7|M\u00FCller|1234.56|1999-12-31|True|a longer note|X1");
}

TEST_F(RecordEdits, ABlankRecordHasBlankFields) {
    EXPECT_TRUE(table->NewRecord()->Save());
    EXPECT_EQ(ShownRecord(*table, 1), "0||0|(null)|(null)||");
}

TEST_F(RecordEdits, ChangesOnlyTheFieldsThatWereSet) {
    Append(*table, 1, u"Anna");
    const auto edit = table->EditRecord(1);
    EXPECT_FALSE(edit->isChanged());
    edit->Set(kAmount, Number(12.345));
    EXPECT_TRUE(edit->isChanged());
    EXPECT_TRUE(edit->Save());
    EXPECT_FALSE(edit->isChanged());
    EXPECT_EQ(ShownRecord(*table, 1), "1|Anna|12.35|(null)|(null)||");
}

TEST_F(RecordEdits, ShowsWhatTheRecordWillHold) {
    Append(*table, 1, u"Anna");
    const auto edit = table->EditRecord(1);
    edit->Set(kNote, Text(u"pending"));
    edit->Set(kName, Text(u"Berta   "));
    technologies::Value value;
    edit->Get(kNote, value);
    EXPECT_EQ(value.text, u"pending");
    edit->Get(kName, value);
    EXPECT_EQ(value.text, u"Berta");
    EXPECT_EQ(Shown(*table, 1, kName), "Anna");
}

TEST_F(RecordEdits, RefusesWhatDoesNotFitAndSaysWhy) {
    Append(*table, 1, u"Anna");
    const auto edit = table->EditRecord(1);
    std::string message;
    EXPECT_EQ(KindOf([&] { edit->Set(kName, Text(u"a name of more than twenty characters")); }, &message),
              ErrorKind::Overflow);
    EXPECT_NE(message.find("NAME"), std::string::npos);
    EXPECT_NE(message.find("people"), std::string::npos);
    EXPECT_EQ(KindOf([&] { edit->Set(kId, Integer(123456789)); }), ErrorKind::Overflow);
    EXPECT_EQ(KindOf([&] { edit->Set(kAmount, DecimalValue(99999999999, 0)); }), ErrorKind::Overflow);
    EXPECT_EQ(KindOf([&] { edit->Set(kAmount, Text(u"twelve")); }), ErrorKind::TypeMismatch);
    EXPECT_EQ(KindOf([&] { edit->Set(kBorn, Text(u"2023-02-30")); }), ErrorKind::TypeMismatch);
    EXPECT_EQ(KindOf([&] { edit->Set(kBorn, Integer(3)); }), ErrorKind::TypeMismatch);
    EXPECT_EQ(KindOf([&] { edit->Set(kPaid, Text(u"perhaps")); }), ErrorKind::TypeMismatch);
    EXPECT_EQ(KindOf([&] { edit->Set(kName, Text(u"\u4E2D")); }), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf([&] { edit->Set(kNote, Text(u"\u4E2D")); }), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf([&] { edit->Set(99, Integer(1)); }), ErrorKind::NotFound);
    EXPECT_FALSE(edit->isChanged());
    EXPECT_EQ(ShownRecord(*table, 1), "1|Anna|0|(null)|(null)||");
}

TEST_F(RecordEdits, TrailingBlanksAreNoReasonToRefuseAText) {
    Append(*table, 1, u"Anna                          ");
    EXPECT_EQ(Shown(*table, 1, kName), "Anna");
}

TEST_F(RecordEdits, ConvertsTextsToWhatTheFieldHolds) {
    const auto edit = table->NewRecord();
    edit->Set(kId, Text(u" 42 "));
    edit->Set(kAmount, Text(u"-1234.5"));
    edit->Set(kBorn, Text(u"20240229"));
    edit->Set(kPaid, Text(u"yes"));
    edit->Set(kCode, Integer(-12));
    edit->Set(kName, Day(2024, 2, 29));
    edit->Set(kNote, Number(0.1));
    EXPECT_TRUE(edit->Save());
    EXPECT_EQ(ShownRecord(*table, 1), "42|2024-02-29|-1234.5|2024-02-29|True|0.1|-12");
}

TEST_F(RecordEdits, BlankTextsEmptyAField) {
    Append(*table, 42, u"Anna");
    const auto edit = table->EditRecord(1);
    for (const auto field : {kId, kName, kAmount, kBorn, kPaid, kNote})
        edit->Set(field, Text(u"  "));
    edit->Set(kCode, NoValue());
    EXPECT_TRUE(edit->Save());
    EXPECT_EQ(Shown(*table, 1, kId), "0");
    EXPECT_EQ(Shown(*table, 1, kBorn), "(null)");
    EXPECT_EQ(Shown(*table, 1, kCode), "");
}

TEST_F(RecordEdits, MarksRecordsDeletedAndTakesTheMarkOff) {
    Append(*table, 1, u"Anna");
    auto edit = table->EditRecord(1);
    edit->SetDeleted(true);
    EXPECT_TRUE(edit->isDeleted());
    EXPECT_TRUE(edit->Save());
    EXPECT_TRUE(table->IsDeleted(1));
    edit->SetDeleted(false);
    EXPECT_TRUE(edit->Save());
    EXPECT_FALSE(table->IsDeleted(1));
}

TEST_F(RecordEdits, TheTagsFollowEveryChange) {
    for (int i = 1; i <= 300; ++i)
        Append(*table, i, i % 2 ? u"odd" : u"even");
    auto edit = table->EditRecord(150);
    edit->Set(kId, Integer(9999));
    edit->Set(kAmount, Integer(5));
    ASSERT_TRUE(edit->Save());
    technologies::KeyCriterion criterion;
    criterion.value = Integer(9999);
    EXPECT_EQ(table->Seek(*table->FindIndex("ID"), {criterion}, 0, true), (std::vector<std::uint32_t>{150}));
    criterion.value = Integer(150);
    EXPECT_TRUE(table->Seek(*table->FindIndex("ID"), {criterion}, 0, true).empty());
    criterion.value = Integer(5);
    EXPECT_EQ(table->Seek(*table->FindIndex("AMOUNT"), {criterion}, 0, true),
              (std::vector<std::uint32_t>{150}));
    edit->SetDeleted(true);
    ASSERT_TRUE(edit->Save());
    EXPECT_TRUE(table->Seek(*table->FindIndex("AMOUNT"), {criterion}, 0, true).empty());
}

TEST_F(RecordEdits, AnotherProcessFindsWhatWasWritten) {
    const auto other = OpenTable(files);
    EXPECT_EQ(other->RecordCount(), 0U);
    for (int i = 1; i <= 500; ++i)
        Append(i % 2 ? *table : *other, i, u"name");
    technologies::KeyCriterion criterion;
    for (const int id : {1, 250, 499, 500}) {
        criterion.value = Integer(id);
        const std::vector<std::uint32_t> expected{static_cast<std::uint32_t>(id)};
        EXPECT_EQ(table->Seek(*table->FindIndex("ID"), {criterion}, 0, true), expected);
        EXPECT_EQ(other->Seek(*other->FindIndex("ID"), {criterion}, 0, true), expected);
    }
}

TEST_F(RecordEdits, AChangeOfAnotherProcessToTheSameFieldIsNotOverwritten) {
    Append(*table, 1, u"Anna");
    const auto other = OpenTable(files);
    const auto mine = table->EditRecord(1);
    const auto theirs = other->EditRecord(1);
    theirs->Set(kName, Text(u"Berta"));
    ASSERT_TRUE(theirs->Save());
    mine->Set(kName, Text(u"Clara"));
    EXPECT_FALSE(mine->Save());
    EXPECT_EQ(Shown(*table, 1, kName), "Berta");
}

TEST_F(RecordEdits, ChangesOfTwoProcessesToDifferentFieldsBothStand) {
    Append(*table, 1, u"Anna");
    const auto other = OpenTable(files);
    const auto mine = table->EditRecord(1);
    const auto theirs = other->EditRecord(1);
    theirs->Set(kName, Text(u"Berta"));
    ASSERT_TRUE(theirs->Save());
    mine->Set(kAmount, Integer(3));
    EXPECT_TRUE(mine->Save());
    EXPECT_EQ(ShownRecord(*table, 1), "1|Berta|3|(null)|(null)||");
}

TEST_F(RecordEdits, ANewMemoTextInTheSamePlaceIsAChangeToo) {
    Append(*table, 1, u"Anna");
    const auto first = table->EditRecord(1);
    first->Set(kNote, Text(u"first text"));
    ASSERT_TRUE(first->Save());
    const auto other = OpenTable(files);
    const auto mine = table->EditRecord(1);
    mine->Set(kNote, Text(u"my text"));
    const auto theirs = other->EditRecord(1);
    theirs->Set(kNote, Text(u"other text"));
    ASSERT_TRUE(theirs->Save());
    EXPECT_FALSE(mine->Save());
    EXPECT_EQ(Shown(*table, 1, kNote), "other text");
}

TEST_F(RecordEdits, AMemoThatFitsIsWrittenOverTheOldOne) {
    Append(*table, 1, u"Anna");
    const auto edit = table->EditRecord(1);
    edit->Set(kNote, Text(u"a text of some length"));
    ASSERT_TRUE(edit->Save());
    const auto size = files.Get("people.fpt").size();
    edit->Set(kNote, Text(u"shorter"));
    ASSERT_TRUE(edit->Save());
    EXPECT_EQ(files.Get("people.fpt").size(), size);
    EXPECT_EQ(Shown(*table, 1, kNote), "shorter");
    edit->Set(kNote, Text(std::u16string(1000, u'x')));
    ASSERT_TRUE(edit->Save());
    EXPECT_GT(files.Get("people.fpt").size(), size);
    edit->Set(kNote, Text(u""));
    ASSERT_TRUE(edit->Save());
    EXPECT_EQ(Shown(*table, 1, kNote), "");
}

TEST_F(RecordEdits, ARecordThatAnotherProgramHasLockedIsLeftAlone) {
    Append(*table, 1, u"Anna");
    technologies::TechnologySettings settings;
    settings.lockWait = 0;
    table = OpenTable(files, settings);
    const auto foreign =
        files.Open(kTablePath, {files::Access::ReadWrite, files::Creation::OpenExisting, false});
    const auto& header = table->header();
    const locking::LockedTable locked{header.versionByte, true, header.headerLength, header.recordLength};
    auto lock = locking::FileLock::TryTake(
        *foreign, locking::RecordLock(locking::LockScheme::FoxPro, locked, 1), files::LockMode::Exclusive);
    ASSERT_TRUE(lock);
    const auto edit = table->EditRecord(1);
    edit->Set(kName, Text(u"Berta"));
    std::string message;
    EXPECT_EQ(KindOf([&] { edit->Save(); }, &message), ErrorKind::Locked);
    EXPECT_NE(message.find("Record 1"), std::string::npos);
    EXPECT_EQ(Shown(*table, 1, kName), "Anna");
    lock.Release();
    EXPECT_TRUE(edit->Save());
}

TEST_F(RecordEdits, AnIndexThatCannotBeKeptUpToDateStopsWriting) {
    Append(*table, 1, u"Anna");
    Append(*table, 2, u"Berta");
    table.reset();
    // Another program has changed a record and left the index as it was.
    auto bytes = files.Get(kTablePath);
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    bytes[text.find("Anna")] = std::byte{'Z'};
    files.Put(kTablePath, bytes);
    table = OpenTable(files);
    std::string message;
    EXPECT_EQ(KindOf([&] { Append(*table, 3, u"Clara"); }, &message), ErrorKind::Unsupported);
    EXPECT_NE(message.find("NAME"), std::string::npos);
    EXPECT_EQ(OpenTable(files)->RecordCount(), 2U);
    technologies::TechnologySettings settings;
    settings.allowStaleIndexes = true;
    EXPECT_EQ(Append(*OpenTable(files, settings), 3, u"Clara"), 3U);
    table.reset();
    MakeTable(files);
    table = OpenTable(files);
}

TEST(RecordEditOfDBase4, IsRefusedBesideAnIndexThatWouldBeLeftBehind) {
    files::MemoryFiles files;
    TableWriter writer(files, "four.dbf", Format::DBase3, 0x03, {{"A", 'C', 5, 0}}, {2024, 1, 1});
    writer.Close();
    auto bytes = files.Get("four.dbf");
    bytes[28] = std::byte{0x01};
    files.Put("four.dbf", bytes);
    files.Put("four.mdx", {});
    const auto table = DbfTable::Open(files, "four.dbf", {});
    EXPECT_FALSE(table->isUpdateable());
    EXPECT_THROW(table->NewRecord(), Error);
    technologies::TechnologySettings settings;
    settings.allowStaleIndexes = true;
    const auto forced = DbfTable::Open(files, "four.dbf", settings);
    EXPECT_TRUE(forced->NewRecord()->Save());
}

}  // namespace
}  // namespace zu::dbf::test
