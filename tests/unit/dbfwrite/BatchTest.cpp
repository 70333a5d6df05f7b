#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;

technologies::TechnologySettings Impatient() {
    technologies::TechnologySettings settings;
    settings.lockWait = 0;
    return settings;
}

void AppendFull(technologies::Table& table, int number) {
    const auto edit = table.NewRecord();
    edit->Set(kId, Integer(number));
    edit->Set(kName, Text(number % 2 ? u"odd" : u"even"));
    edit->Set(kAmount, Integer(number * 37 % 101));
    edit->Set(kBorn, Day(2024, 1, 1 + number % 28));
    if (number % 3 == 0) edit->Set(kNote, Text(std::u16string(static_cast<std::size_t>(number % 400), u'n')));
    edit->Set(kCode, Text(number % 5 ? u"A" : u"B"));
    edit->SetDeleted(number % 7 == 0);
    ASSERT_TRUE(edit->Save());
}

std::vector<std::uint32_t> ByTag(technologies::Table& table, std::string_view tag) {
    technologies::Selection selection;
    selection.index = table.FindIndex(tag);
    selection.includeDeleted = true;
    return table.Select(selection);
}

void Abandon(technologies::Batch& batch) {
    try {
        batch.Finish();
    } catch (const Error& error) {
        EXPECT_FALSE(std::string(error.what()).empty());
    }
}

class Batches : public ::testing::TestWithParam<Format> {
protected:
    Batches() {
        memory.AllowMapping(false);
        MakeTable(memory, GetParam());
    }
    void ExpectSound() {
        const auto report = maintenance::CheckTable(memory, kTablePath, {}, nullptr);
        EXPECT_TRUE(report.findings.empty()) << report.findings.front();
    }
    files::MemoryFiles memory;
};

TEST_P(Batches, LeaveTheTableThatSingleRecordsLeave) {
    files::MemoryFiles single;
    single.AllowMapping(false);
    MakeTable(single, GetParam());
    {
        const auto table = OpenTable(single);
        for (int i = 1; i <= 700; ++i)
            AppendFull(*table, i);
        const auto gathered = OpenTable(memory);
        const auto batch = gathered->BeginBatch();
        for (int i = 1; i <= 700; ++i)
            AppendFull(*gathered, i);
        batch->Finish();
    }
    EXPECT_EQ(memory.Get(kTablePath), single.Get(kTablePath));
    const auto first = OpenTable(memory);
    const auto second = OpenTable(single);
    for (const char* tag : {"ID", "NAME", "NAMEDATE", "AMOUNT", "CODE"})
        EXPECT_EQ(ByTag(*first, tag), ByTag(*second, tag)) << tag;
    ExpectSoundIndex(memory);
}

TEST_P(Batches, AddToATableThatHasRecords) {
    {
        const auto table = OpenTable(memory);
        for (int i = 1; i <= 300; ++i)
            AppendFull(*table, 1000 - i * 3);
        const auto batch = table->BeginBatch();
        for (int i = 1; i <= 300; ++i)
            AppendFull(*table, i * 3 + 1);
    }
    EXPECT_EQ(OpenTable(memory)->RecordCount(), 600U);
    ExpectSound();
}

TEST_P(Batches, LetTheirOwnTableFindEveryRecordAtOnce) {
    const auto table = OpenTable(memory);
    const auto batch = table->BeginBatch();
    for (int i = 1; i <= 40; ++i) {
        AppendFull(*table, i);
        ASSERT_EQ(table->RecordCount(), static_cast<std::uint32_t>(i));
        if (i % 10 != 0) continue;
        technologies::KeyCriterion criterion;
        criterion.value = Integer(i - 3);
        EXPECT_EQ(table->Seek(*table->FindIndex("ID"), {criterion}, 0, true).size(), 1U);
        EXPECT_EQ(ByTag(*table, "NAME").size(), static_cast<std::size_t>(i));
    }
}

TEST_P(Batches, LetAllTablesOfTheirThreadReadEveryRecordWithOrWithoutTheIndex) {
    const auto table = OpenTable(memory);
    const auto other = OpenTable(memory);
    const auto batch = table->BeginBatch();
    for (int i = 1; i <= 40; ++i) {
        AppendFull(*table, i);
        technologies::Selection selection;
        selection.condition = u"ID > 0";
        selection.includeDeleted = true;
        ASSERT_EQ(other->Select(selection).size(), static_cast<std::size_t>(i));
        selection.condition = u"ID = " + std::u16string(1, static_cast<char16_t>(u'0' + i % 10));
        ASSERT_EQ(other->Select(selection).size(), i % 10 != 0 && i >= i % 10 ? 1U : 0U) << i;
    }
}

TEST_P(Batches, KeepOtherWritersOutUntilARunEnds) {
    const auto table = OpenTable(memory);
    const auto other = OpenTable(memory, Impatient());
    const auto batch = table->BeginBatch();
    AppendFull(*table, 1);
    try {
        AppendFull(*other, 2);
        ADD_FAILURE() << "two changes at once";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Locked);
    }
    batch->Finish();
    AppendFull(*other, 2);
    AppendFull(*table, 3);
    EXPECT_EQ(table->RecordCount(), 3U);
    ExpectSoundIndex(memory);
}

TEST_P(Batches, EndARunForAChangeOfAnotherRecord) {
    const auto table = OpenTable(memory);
    const auto early = table->NewRecord();
    early->Set(kId, Integer(500));
    const auto batch = table->BeginBatch();
    for (int i = 1; i <= 20; ++i) {
        AppendFull(*table, i);
        if (i % 4 != 0) continue;
        const auto edit = table->EditRecord(static_cast<std::uint32_t>(i - 1));
        edit->Set(kName, Text(u"changed"));
        EXPECT_TRUE(edit->Save());
    }
    EXPECT_TRUE(early->Save());
    EXPECT_EQ(early->record(), 21U);
    batch->Finish();
    ExpectSoundIndex(memory);
}

TEST_P(Batches, MayLieInsideEachOther) {
    const auto table = OpenTable(memory);
    {
        const auto outer = table->BeginBatch();
        AppendFull(*table, 1);
        table->BeginBatch()->Finish();
        AppendFull(*table, 2);
    }
    AppendFull(*OpenTable(memory, Impatient()), 3);
    ExpectSoundIndex(memory);
}

TEST_P(Batches, RefuseEqualKeysRecordByRecord) {
    TableWriter writer(memory, "one.dbf", Format::FoxPro2, 0x03, {{"A", 'C', 5, 0, false}}, {2024, 1, 1});
    writer.Close({{"ONE", "A", "", false, true, false}});
    const auto table = DbfTable::Open(memory, "one.dbf", {});
    const auto batch = table->BeginBatch();
    const auto add = [&] {
        const auto edit = table->NewRecord();
        edit->Set(0, Text(u"x"));
        edit->Save();
    };
    add();
    EXPECT_THROW(add(), Error);
    EXPECT_EQ(table->RecordCount(), 1U);
}

TEST_P(Batches, LetTheirOwnTableReadEveryValueAtOnce) {
    const auto table = OpenTable(memory);
    const auto batch = table->BeginBatch();
    for (int i = 1; i <= 12; ++i) {
        AppendFull(*table, i);
        const auto record = static_cast<std::uint32_t>(i);
        EXPECT_EQ(Shown(*table, record, kId), std::to_string(i));
        EXPECT_EQ(table->IsDeleted(record), i % 7 == 0);
        technologies::Value note;
        table->ReadValue(record, kNote, note);
        EXPECT_EQ(note.text.size(), i % 3 == 0 ? static_cast<std::size_t>(i) : 0U);
    }
}

TEST_P(Batches, NumberTheirRecordsInTheOrderInWhichTheyAreSaved) {
    const auto table = OpenTable(memory);
    AppendFull(*table, 1);
    const auto batch = table->BeginBatch();
    for (std::uint32_t number = 2; number <= 30; ++number) {
        const auto edit = table->NewRecord();
        edit->Set(kId, Integer(static_cast<int>(number)));
        ASSERT_TRUE(edit->Save());
        EXPECT_EQ(edit->record(), number);
    }
    batch->Finish();
    for (std::uint32_t number = 1; number <= 30; ++number)
        EXPECT_EQ(Shown(*table, number, kId), std::to_string(number));
}

TEST_P(Batches, GoOnBehindWhatOthersAddBetweenTwoRuns) {
    {
        const auto table = OpenTable(memory);
        const auto other = OpenTable(memory, Impatient());
        const auto batch = table->BeginBatch();
        for (int i = 1; i <= 20; ++i) {
            if (i % 5 != 0) {
                AppendFull(*table, i);
                continue;
            }
            ByTag(*table, "ID");  // the run ends
            AppendFull(*other, i);
        }
        batch->Finish();
        ASSERT_EQ(table->RecordCount(), 20U);
        for (std::uint32_t number = 1; number <= 20; ++number)
            EXPECT_EQ(Shown(*table, number, kId), std::to_string(number));
    }
    ExpectSound();
}

TEST_P(Batches, WriteManyRecordsAtOnce) {
    FaultyFiles files(memory);
    const auto table = OpenTable(files);
    const auto batch = table->BeginBatch();
    files.Heal();  // counts from here
    for (int i = 1; i <= 60; ++i) {
        const auto edit = table->NewRecord();
        edit->Set(kId, Integer(i));
        ASSERT_TRUE(edit->Save());
    }
    EXPECT_LE(files.steps(), 3U) << "the journal only";
    batch->Finish();
    EXPECT_EQ(OpenTable(memory)->RecordCount(), 60U);
}

TEST_P(Batches, EndRunsByThemselvesSoThatOthersSeeManyRecordsBeforeTheEnd) {
    constexpr std::uint32_t kRecords = 33'000;
    const auto table = OpenTable(memory);
    const auto reader = OpenTable(memory);
    const auto batch = table->BeginBatch();
    for (std::uint32_t i = 1; i <= kRecords; ++i)
        Append(*table, i, u"many");
    // What the header counts has its keys; the run that goes on has neither.
    const std::uint32_t seen = DbfHeader::Read(*memory.Open(kTablePath, {})).recordCount;
    EXPECT_GT(seen, 0U);
    EXPECT_LT(seen, kRecords);
    batch->Finish();
    EXPECT_EQ(reader->RecordCount(), kRecords);
    for (const std::uint32_t id : {1U, seen, seen + 1, kRecords})
        EXPECT_EQ(SeekId(*reader, id), (std::vector<std::uint32_t>{id}));
    ExpectSoundIndex(memory);
}

TEST_P(Batches, CountTheirRecordsInTheHeaderWhenTheyEnd) {
    const auto table = OpenTable(memory);
    const auto batch = table->BeginBatch();
    AppendFull(*table, 1);
    batch->Finish();
    EXPECT_EQ(std::to_integer<int>(memory.Get(kTablePath).at(4)), 1);
}

TEST_P(Batches, OfAProcessThatDiedAreCompletedByTheNextWriterWhoHasTheTableOpen) {
    const auto survivor = OpenTable(memory);
    AppendFull(*survivor, 1);
    FaultyFiles files(memory);
    {
        const auto table = OpenTable(files);
        const auto batch = table->BeginBatch();
        for (int i = 2; i <= 9; ++i)
            AppendFull(*table, i);
        EXPECT_EQ(table->RecordCount(), 9U);  // which lets them be written
        files.FailAt(1, FaultyFiles::Fault::Crash);
    }
    AppendFull(*survivor, 10);
    EXPECT_EQ(survivor->RecordCount(), 10U);
    EXPECT_EQ(ByTag(*survivor, "ID").size(), 10U);
    ExpectSoundIndex(memory);
}

TEST_P(Batches, LoseWithTheProcessOnlyWhatWasNotWrittenYet) {
    FaultyFiles files(memory);
    {
        const auto table = OpenTable(files);
        const auto batch = table->BeginBatch();
        AppendFull(*table, 1);
        ByTag(*table, "ID");  // the run ends
        AppendFull(*table, 2);
        files.FailAt(1, FaultyFiles::Fault::Crash);
    }
    const auto survivor = OpenTable(memory);
    EXPECT_EQ(survivor->RecordCount(), 1U);
    AppendFull(*survivor, 2);
    ExpectSoundIndex(memory);
}

TEST_P(Batches, TakeNoMoreOnceRecordsCouldNotBeWritten) {
    FaultyFiles files(memory);
    auto table = OpenTable(files);
    auto batch = table->BeginBatch();
    for (int i = 1; i <= 4; ++i)
        AppendFull(*table, i);
    EXPECT_EQ(table->RecordCount(), 4U);
    for (int i = 5; i <= 9; ++i) {
        const auto edit = table->NewRecord();
        edit->Set(kId, Integer(i));
        ASSERT_TRUE(edit->Save());
    }
    files.FailAt(1, FaultyFiles::Fault::Filled);
    EXPECT_EQ(table->RecordCount(), 4U);
    files.Heal();
    const auto further = [&] { table->NewRecord()->Save(); };
    for (int i = 0; i < 2; ++i) {
        try {
            further();
            ADD_FAILURE() << "a batch that has lost records took another one";
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::DiskFull);
        }
    }
    try {
        batch->Finish();
        ADD_FAILURE() << "lost records went unmentioned";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::DiskFull);
    }
    EXPECT_EQ(batch->lost(), 5U);
    EXPECT_EQ(table->RecordCount(), 4U);
    AppendFull(*table, 5);
    batch = table->BeginBatch();
    AppendFull(*table, 6);
    batch->Finish();
    EXPECT_EQ(batch->lost(), 0U);
    EXPECT_EQ(Shown(*table, 6, kId), "6");
    batch.reset();
    table.reset();
    ExpectSound();
}

struct FaultCase {
    FaultyFiles::Fault fault;
    const char* name;
};

class FaultyBatches : public ::testing::TestWithParam<FaultCase> {
protected:
    bool survives() const {
        return GetParam().fault != FaultyFiles::Fault::Crash && GetParam().fault != FaultyFiles::Fault::Torn;
    }
};

// Every write of two batches goes wrong once. Now and then the table is read, which lets records be written.
TEST_P(FaultyBatches, LoseNoWrittenRecordAndNoKeyAndTellOfTheOthers) {
    constexpr int kRecords = 24;
    std::size_t faults = 0;
    for (std::size_t step = 1; step < 300; ++step) {
        files::MemoryFiles memory;
        memory.AllowMapping(false);
        MakeTable(memory);
        FaultyFiles files(memory);
        int confirmed = 0;
        int ended = 0;
        int tried = 0;
        bool failed = false;
        {
            const auto table = OpenTable(files);
            AppendFull(*table, ++confirmed);
            files.FailAt(step, GetParam().fault);
            for (int run = 0; run < 2 && !failed; ++run) {
                std::unique_ptr<technologies::Batch> batch;
                ended = confirmed;
                try {
                    batch = table->BeginBatch();
                    while (confirmed < kRecords / 2 * (run + 1)) {
                        tried = confirmed + 1;
                        AppendFull(*table, tried);
                        confirmed = tried;
                        if (confirmed % 5 == 0) table->RecordCount();
                    }
                    batch->Finish();
                } catch (const Error&) {
                    failed = true;
                    ++faults;
                }
                if (!failed) continue;
                Abandon(*batch);
                confirmed -= static_cast<int>(batch->lost());
            }
        }
        const auto table = OpenTable(memory);
        const std::uint32_t count = table->RecordCount();
        ASSERT_GE(confirmed, ended) << "step " << step;
        ASSERT_GE(count, static_cast<std::uint32_t>(confirmed)) << "step " << step;
        ASSERT_LE(count, static_cast<std::uint32_t>(survives() ? confirmed : tried)) << "step " << step;
        for (std::uint32_t record = 1; record <= count; ++record)
            ASSERT_EQ(Shown(*table, record, kId), std::to_string(record)) << "step " << step;
        ASSERT_EQ(ByTag(*table, "ID").size(), count) << "step " << step;
        EXPECT_TRUE(table->warnings().empty()) << "step " << step << ": " << table->warnings().front();
        ExpectSoundIndex(memory);
        AppendFull(*table, static_cast<int>(count + 1));
        ExpectSoundIndex(memory);
        ASSERT_FALSE(HasFailure()) << "step " << step;
        if (!failed && !files.fired()) break;
    }
    EXPECT_GT(faults, 10U);
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyBatches,
                         ::testing::Values(FaultCase{FaultyFiles::Fault::Refuse, "WriteError"},
                                           FaultCase{FaultyFiles::Fault::Full, "FullDisk"},
                                           FaultCase{FaultyFiles::Fault::Filled, "DiskFilledByAWrite"},
                                           FaultCase{FaultyFiles::Fault::Crash, "EndOfTheProcess"},
                                           FaultCase{FaultyFiles::Fault::Torn, "EndInTheMiddleOfAWrite"}),
                         [](const auto& instance) { return std::string(instance.param.name); });

INSTANTIATE_TEST_SUITE_P(Formats, Batches,
                         ::testing::Values(Format::DBase3, Format::FoxPro2, Format::VisualFoxPro),
                         [](const auto& instance) {
                             return instance.param == Format::DBase3    ? "DBase3"
                                    : instance.param == Format::FoxPro2 ? "FoxPro2"
                                                                        : "VisualFoxPro";
                         });

}  // namespace
}  // namespace zu::dbf::test
