#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/transaction/ChangeMark.h"
#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "tests/unit/dbfwrite/FolderFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;
using technologies::KeyCriterion;
using transaction::ChangeMark;
using Records = std::vector<std::uint32_t>;

constexpr std::uint32_t kRecords = 300;
constexpr const char* kIndexPath = "people.cdx";

/// A table in real files, kept open by a reader while another process writes to it.
class UnlockedReaders : public ::testing::Test {
protected:
    UnlockedReaders() {
        MakeTable(first_);
        const auto table = OpenTable(first_);
        for (std::uint32_t i = 1; i <= kRecords; ++i) {
            const std::string digits = std::to_string(1000 + i);
            Append(*table, i, u"name " + std::u16string(digits.begin(), digits.end()));
        }
    }

    std::unique_ptr<DbfTable> OpenReader() {
        technologies::TechnologySettings settings;
        settings.lockWait = 0;
        return OpenTable(first_, settings);
    }

    static Records SeekName(DbfTable& table, std::u16string_view begin) {
        KeyCriterion criterion;
        criterion.value = Text(begin);
        criterion.exact = false;
        return table.Seek(*table.FindIndex("NAME"), {criterion}, 0, true);
    }

    static void GiveId(DbfTable& table, std::uint32_t record, std::int64_t id) {
        const auto edit = table.EditRecord(record);
        edit->Set(kId, Integer(id));
        ASSERT_TRUE(edit->Save());
    }

    enum class Counted { No, Yes };
    /// What a program does that knows of no index.
    void AddWithoutIndex(Counted counted) {
        const auto file = second_.Open(kTablePath, {files::Access::ReadWrite});
        const DbfHeader header = DbfHeader::Read(*file);
        std::vector<std::byte> record(header.recordLength + 1U, std::byte{' '});
        record.back() = std::byte{kEndOfFile};
        file->WriteAt(header.headerLength + std::uint64_t{kRecords} * header.recordLength, record);
        if (counted == Counted::No) return;
        std::array<std::byte, 4> count{};
        StoreLittle(count.data(), kRecords + 1);
        file->WriteAt(header::kRecordCount, count);
    }

    std::byte Mark() {
        std::array<std::byte, 1> byte{};
        first_.Open(kIndexPath, {})->ReadAt(ChangeMark::kOffset, byte);
        return byte[0];
    }
    void PutMark(std::byte value) {
        first_.Open(kIndexPath, {files::Access::ReadWrite})->WriteAt(ChangeMark::kOffset, std::array{value});
    }

    FolderFiles first_;
    FolderFiles second_{first_};
    FaultyFiles others_{second_};
};

TEST_F(UnlockedReaders, AskForNoLockAndLookForNoJournal) {
    const auto writer = OpenTable(second_);
    GiveId(*writer, 5, 5);  // its journal is there
    const auto reader = OpenReader();
    const std::size_t before = first_.calls();
    std::size_t careful = 0;
    for (std::uint32_t i = 1; i <= kRecords; ++i) {
        const std::size_t calls = first_.calls();
        EXPECT_EQ(SeekId(*reader, i, 1), (Records{i}));
        EXPECT_EQ(SeekName(*reader, u"name 1" + std::u16string(3, u'0')).size(), 0U);
        if (first_.calls() != calls) ++careful;
    }
    // Those whose key begins a page cannot do without.
    EXPECT_LT(careful, kRecords / 10) << first_.calls() - before;
}

TEST_F(UnlockedReaders, SeeWhatAnotherProcessHasConfirmedAtOnce) {
    const auto reader = OpenReader();
    const auto writer = OpenTable(second_);
    for (std::uint32_t record = 1; record <= kRecords; record += 7) {
        const std::int64_t id = 5000 + std::int64_t{record};
        GiveId(*writer, record, id);
        EXPECT_EQ(SeekId(*reader, id), (Records{record}));
        EXPECT_TRUE(SeekId(*reader, record).empty());
    }
    const std::uint32_t added = Append(*writer, 9000, u"latecomer");
    EXPECT_EQ(SeekId(*reader, 9000), (Records{added}));
    EXPECT_EQ(SeekName(*reader, u"LATE"), (Records{added}));
}

TEST_F(UnlockedReaders, FindEqualKeysAndBeginningsOfKeysWhole) {
    const auto writer = OpenTable(second_);
    for (const std::uint32_t record : {40U, 41U, 200U})
        GiveId(*writer, record, 77'777);
    const auto reader = OpenReader();
    EXPECT_EQ(SeekId(*reader, 77'777), (Records{40, 41, 200}));
    EXPECT_EQ(SeekId(*reader, 77'777, 2), (Records{40, 41}));
    EXPECT_EQ(SeekName(*reader, u"name 104").size(), 10U);
    EXPECT_EQ(SeekName(*reader, u"name").size(), kRecords);
}

TEST_F(UnlockedReaders, NeverReadHalfAChange) {
    const auto writer = OpenTable(others_);
    const auto reader = OpenReader();
    std::size_t locked = 0;
    std::size_t answered = 0;
    others_.Watch([&] {
        for (const std::uint32_t record : {2U, 149U, kRecords - 1}) {
            try {
                EXPECT_EQ(SeekId(*reader, record), (Records{record}));
                ++answered;
            } catch (const Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::Locked) << error.what();
                ++locked;
            }
        }
    });
    for (std::uint32_t record = 1; record <= kRecords; record += 3) {
        GiveId(*writer, record, std::int64_t{record} + 100'000);
        EXPECT_EQ(SeekId(*reader, 149), (Records{149}));  // has seen the change from here on
    }
    others_.Watch(nullptr);
    EXPECT_GT(locked, 0U);
    EXPECT_GT(answered, 300U);
}

TEST_F(UnlockedReaders, ReadRightBesideAProgramThatSetsNoMark) {
    second_.FilterWrites([](const std::string& path, std::uint64_t offset, std::vector<std::byte>& bytes) {
        if (path != kIndexPath || offset > ChangeMark::kOffset) return true;
        if (offset == ChangeMark::kOffset) return false;
        if (bytes.size() > ChangeMark::kOffset) bytes[ChangeMark::kOffset] = ChangeMark::kClear;
        return true;
    });
    const auto writer = OpenTable(others_);
    const auto reader = OpenReader();
    std::size_t answered = 0;
    std::uint32_t changing = 0;
    others_.Watch([&] {
        for (const std::uint32_t record : {2U, 149U, kRecords - 1, changing}) {
            if (record == 0) continue;
            try {
                const Records found = SeekId(*reader, record);
                EXPECT_TRUE(found == Records{record} || (record == changing && found.empty())) << record;
                ++answered;
            } catch (const Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::Locked) << error.what();
            }
        }
    });
    for (changing = 1; changing <= kRecords; changing += 3) {
        GiveId(*writer, changing, std::int64_t{changing} + 100'000);
        EXPECT_EQ(SeekId(*reader, 149), (Records{149}));
    }
    others_.Watch(nullptr);
    EXPECT_GT(answered, 1000U);
}

TEST_F(UnlockedReaders, UndoWhatAProcessThatDiedMeanwhileHasLeft) {
    const auto reader = OpenReader();
    for (const auto fault : {FaultyFiles::Fault::Crash, FaultyFiles::Fault::Torn}) {
        for (std::size_t step = 1; step < 30; ++step) {
            const std::int64_t id =
                (fault == FaultyFiles::Fault::Crash ? 200'000 : 300'000) + static_cast<std::int64_t>(step);
            DieWhileMoving(others_, step, fault, 150, id);
            const auto found = SeekId(*reader, id);
            // What a reader has seen stays.
            const bool isSaved = Shown(*OpenTable(first_), 150, kId) == std::to_string(id);
            EXPECT_EQ(found.size(), isSaved ? 1U : 0U) << "ended at step " << step;
            for (const std::uint32_t record : {1U, 149U, 151U, kRecords})
                EXPECT_EQ(SeekId(*reader, record), (Records{record})) << "step " << step;
            ExpectSoundIndex(first_);
        }
    }
}

TEST_F(UnlockedReaders, CompleteTheBatchOfAProcessThatDied) {
    const auto reader = OpenReader();
    {
        const auto writer = OpenTable(others_);
        const auto batch = writer->BeginBatch();
        for (std::uint32_t i = 1; i <= 20; ++i)
            Append(*writer, 8000 + std::int64_t{i}, u"from a batch");
        EXPECT_EQ(writer->RecordCount(), kRecords + 20);  // which lets them be written
        others_.FailAt(1, FaultyFiles::Fault::Crash);
    }
    others_.Heal();
    EXPECT_EQ(SeekId(*reader, 8007), (Records{kRecords + 7}));
    ExpectSoundIndex(first_);
    EXPECT_EQ(Mark(), ChangeMark::kClear);
}

TEST_F(UnlockedReaders, NoticeRecordsThatWereAddedWithoutTheIndexAtOnce) {
    const auto reader = OpenReader();
    EXPECT_EQ(SeekId(*reader, 149), (Records{149}));
    AddWithoutIndex(Counted::Yes);
    EXPECT_THROW(SeekId(*reader, 149), Error) << "the index is not up to date";
    EXPECT_EQ(reader->RecordCount(), kRecords + 1);
}

TEST_F(UnlockedReaders, NoticeRecordsThatNobodyCountedWithinAMillisecond) {
    const auto reader = OpenReader();
    EXPECT_EQ(SeekId(*reader, 149), (Records{149}));
    AddWithoutIndex(Counted::No);
    const auto added = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - added <= std::chrono::milliseconds(1)) {
    }
    EXPECT_THROW(SeekId(*reader, 149), Error) << "the index is not up to date";
    EXPECT_EQ(reader->RecordCount(), kRecords + 1);
}

TEST_F(UnlockedReaders, FindTheMarkClearAfterEachChange) {
    const auto writer = OpenTable(second_);
    GiveId(*writer, 9, 4711);
    EXPECT_EQ(Mark(), ChangeMark::kClear);
    {
        const auto batch = writer->BeginBatch();
        Append(*writer, 8000, u"from a batch");
        EXPECT_EQ(Mark(), ChangeMark::kSet);
        batch->Finish();
    }
    EXPECT_EQ(Mark(), ChangeMark::kClear);
}

TEST_F(UnlockedReaders, AreCarefulWhereAMarkWasLeftUntilTheNextChange) {
    PutMark(ChangeMark::kSet);
    const auto reader = OpenReader();
    const std::size_t before = first_.calls();
    EXPECT_EQ(SeekId(*reader, 149), (Records{149}));
    EXPECT_GT(first_.calls(), before);
    GiveId(*OpenTable(second_), 9, 4711);
    EXPECT_EQ(Mark(), ChangeMark::kClear);
}

TEST_F(UnlockedReaders, LeaveWhatAnotherProgramKeepsInThePlaceOfTheMark) {
    constexpr std::byte kForeign{0x41};
    PutMark(kForeign);
    const auto reader = OpenReader();
    GiveId(*OpenTable(second_), 9, 4711);
    EXPECT_EQ(Mark(), kForeign);
    const std::size_t before = first_.calls();
    EXPECT_EQ(SeekId(*reader, 4711), (Records{9}));
    EXPECT_GT(first_.calls(), before);
}

TEST_F(UnlockedReaders, GoOnWhenTheMarkCannotBeCleared) {
    const auto writer = OpenTable(second_);
    second_.FilterWrites(
        [](const std::string& path, std::uint64_t offset, const std::vector<std::byte>& bytes) {
            if (path == kIndexPath && offset == ChangeMark::kOffset && bytes.front() == ChangeMark::kClear)
                throw Error(ErrorKind::IoFailure, "not now");
            return true;
        });
    GiveId(*writer, 9, 4711);
    EXPECT_EQ(SeekId(*OpenReader(), 4711), (Records{9}));
    second_.FilterWrites(nullptr);
    GiveId(*writer, 9, 9);
    EXPECT_EQ(Mark(), ChangeMark::kClear);
}

}  // namespace
}  // namespace zu::dbf::test
