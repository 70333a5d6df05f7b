#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "host/technologies/dbf/locking/LockScheme.h"
#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/FolderFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;
using technologies::MarkOutcome;
using Records = std::vector<std::uint32_t>;

constexpr std::uint32_t kRecords = 60;

/// All records with a number, from the last one.
Records FromTheLast(std::uint32_t count) {
    Records records(count);
    std::iota(records.begin(), records.end(), 1U);
    std::reverse(records.begin(), records.end());
    return records;
}

void Fill(files::FileSystem& files) {
    MakeTable(files);
    const auto table = OpenTable(files);
    for (std::uint32_t i = 1; i <= kRecords; ++i) {
        const auto edit = table->NewRecord();
        edit->Set(kId, Integer(i));
        edit->Set(kAmount, Number(i % 4));
        edit->SetDeleted(i % 5 == 0);
        ASSERT_TRUE(edit->Save());
    }
}

class MarkRecords : public ::testing::Test {
protected:
    MarkRecords() {
        memory_.AllowMapping(false);
        Fill(memory_);
    }
    Records Deleted() {
        Records deleted;
        const auto table = OpenTable(memory_);
        for (std::uint32_t i = 1; i <= table->RecordCount(); ++i)
            if (table->IsDeleted(i)) deleted.push_back(i);
        return deleted;
    }

    files::MemoryFiles memory_;
};

TEST_F(MarkRecords, AsOneByOne) {
    files::MemoryFiles single;
    single.AllowMapping(false);
    Fill(single);
    for (const bool deleted : {true, false}) {
        MarkOutcome outcome;
        MarkOutcome singly;
        OpenTable(memory_)->MarkRecords(FromTheLast(40), deleted, outcome);
        const auto table = OpenTable(single);
        for (const std::uint32_t record : FromTheLast(40))
            table->MarkRecords({&record, 1}, deleted, singly);
        EXPECT_EQ(outcome.handled, 40U);
        EXPECT_EQ(outcome.changed, deleted ? 32U : 40U);
        EXPECT_EQ(outcome.changed, singly.changed);
        EXPECT_EQ(memory_.Get(kTablePath), single.Get(kTablePath));
        ExpectSoundIndex(memory_);
    }
}

TEST_F(MarkRecords, CountsARecordThatIsNamedTwiceOnce) {
    const Records records{7, 8, 9, 7, 8, 9, 11};
    MarkOutcome outcome;
    OpenTable(memory_)->MarkRecords(records, true, outcome);
    EXPECT_EQ(outcome.handled, records.size());
    EXPECT_EQ(outcome.changed, 4U);
    ExpectSoundIndex(memory_);
}

TEST_F(MarkRecords, StopsAtARecordThatAnotherProgramHolds) {
    technologies::TechnologySettings settings;
    settings.lockWait = 0;
    const auto table = OpenTable(memory_, settings);
    const auto other = memory_.Open(kTablePath, {files::Access::ReadWrite});
    const auto lock = locking::RecordLock(
        locking::LockScheme::FoxPro,
        {table->header().versionByte, true, table->header().headerLength, table->header().recordLength}, 31);
    ASSERT_TRUE(other->TryLock(lock.ranges[0].offset, 1, files::LockMode::Exclusive));
    MarkOutcome outcome;
    try {
        table->MarkRecords(FromTheLast(kRecords), true, outcome);
        FAIL() << "record 31 is held";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Locked);
        EXPECT_NE(std::string(error.what()).find("31"), std::string::npos) << error.what();
    }
    EXPECT_EQ(outcome.handled, kRecords - 31);
    EXPECT_EQ(Deleted().front(), 5U);
    EXPECT_FALSE(table->IsDeleted(31));
    EXPECT_TRUE(table->IsDeleted(32));
    ExpectSoundIndex(memory_);
}

TEST_F(MarkRecords, StopsAtARecordThatIsNotThere) {
    Records records = FromTheLast(20);
    records[12] = kRecords + 5;
    MarkOutcome outcome;
    const auto table = OpenTable(memory_);
    EXPECT_THROW(table->MarkRecords(records, true, outcome), Error);
    EXPECT_EQ(outcome.handled, 12U);
    EXPECT_TRUE(table->IsDeleted(9));
    EXPECT_FALSE(table->IsDeleted(7));
    ExpectSoundIndex(memory_);
}

TEST_F(MarkRecords, LeavesAllOrNothingOfABlockWhenTheProcessDies) {
    const Records before = Deleted();
    const Records wanted = [] {
        Records all = FromTheLast(40);
        std::reverse(all.begin(), all.end());
        for (std::uint32_t record = 45; record <= kRecords; record += 5)
            all.push_back(record);
        return all;
    }();
    std::size_t steps = 0;
    for (bool through = false; !through; ++steps) {
        FaultyFiles files(memory_);
        {
            const auto table = OpenTable(files);
            files.FailAt(steps + 1, steps % 2 == 0 ? FaultyFiles::Fault::Crash : FaultyFiles::Fault::Torn);
            MarkOutcome outcome;
            try {
                table->MarkRecords(FromTheLast(40), true, outcome);
                through = true;
            } catch (const Error&) {
                // It has died on the way.
            }
        }
        const Records now = Deleted();
        EXPECT_TRUE(now == before || now == wanted) << "ended at step " << steps;
        ExpectSoundIndex(memory_);
        if (now == before) continue;
        MarkOutcome back;
        OpenTable(memory_)->MarkRecords(FromTheLast(40), false, back);
        back = {};
        const Records fifths{5, 10, 15, 20, 25, 30, 35, 40};
        OpenTable(memory_)->MarkRecords(fifths, true, back);
        ASSERT_EQ(Deleted(), before);
    }
    EXPECT_GT(steps, 30U);
}

TEST(MarkManyRecords, TakesLocksForBlocksNotForRecords) {
    FolderFiles files;
    Fill(files);
    const auto table = OpenTable(files);
    MarkOutcome outcome;
    const Records few{1};
    table->MarkRecords(few, true, outcome);  // opens what is needed for writing
    const std::size_t before = files.calls();
    table->MarkRecords(FromTheLast(kRecords), true, outcome);
    EXPECT_LE(files.calls() - before, 4U);
    EXPECT_EQ(outcome.changed, kRecords - kRecords / 5);
}

}  // namespace
}  // namespace zu::dbf::test
