#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;
using technologies::KeyCriterion;

constexpr std::uint32_t kRecords = 300;

/// A table that another process, which can be stopped and watched, writes to while it is read.
class Readers : public ::testing::Test {
protected:
    Readers() : others_(memory_) {
        memory_.AllowMapping(false);
        MakeTable(memory_);
        const auto table = OpenTable(memory_);
        for (std::uint32_t i = 1; i <= kRecords; ++i)
            Append(*table, i, u"name " + Digits(i));
    }

    static std::u16string Digits(std::uint32_t number) {
        const std::string text = std::to_string(1000 + number);
        return {text.begin(), text.end()};
    }

    static std::unique_ptr<DbfTable> OpenReader(files::FileSystem& files) {
        technologies::TechnologySettings settings;
        settings.lockWait = 0;
        return OpenTable(files, settings);
    }

    /// Gives a third of the records other ids, so that keys leave and enter pages all over the tree.
    static void Renumber(DbfTable& table) {
        for (std::uint32_t record = 1; record <= kRecords; record += 3) {
            const auto edit = table.EditRecord(record);
            edit->Set(kId, Integer(std::int64_t{record} + 100'000));
            ASSERT_TRUE(edit->Save());
        }
    }

    files::MemoryFiles memory_;
    FaultyFiles others_;
};

TEST_F(Readers, WaitForTheIndexInsteadOfReadingHalfAChange) {
    const auto writer = OpenTable(others_);
    const auto reader = OpenReader(memory_);
    std::size_t locked = 0;
    std::size_t answered = 0;
    others_.Watch([&] {
        for (const std::uint32_t record : {2U, 149U, kRecords - 1}) {
            try {
                EXPECT_EQ(SeekId(*reader, record), (std::vector<std::uint32_t>{record}));
                ++answered;
            } catch (const Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::Locked) << error.what();
                ++locked;
            }
        }
    });
    Renumber(*writer);
    others_.Watch(nullptr);
    EXPECT_GT(locked, 0U);
    EXPECT_GT(answered + locked, 1000U);
    EXPECT_EQ(SeekId(*reader, 100'001), (std::vector<std::uint32_t>{1}));
    EXPECT_TRUE(SeekId(*reader, 1).empty());
}

TEST_F(Readers, SelectByAnIndexWaitsTheSameWay) {
    const auto writer = OpenTable(others_);
    const auto reader = OpenReader(memory_);
    std::size_t locked = 0;
    others_.Watch([&] {
        technologies::Selection selection;
        selection.condition = u"ID = 149";
        try {
            EXPECT_EQ(reader->Select(selection), (std::vector<std::uint32_t>{149}));
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Locked) << error.what();
            ++locked;
        }
    });
    Renumber(*writer);
    others_.Watch(nullptr);
    EXPECT_GT(locked, 0U);
}

TEST_F(Readers, UndoWhatAProcessThatDiedMeanwhileHasLeft) {
    const auto reader = OpenReader(memory_);
    for (std::size_t step = 1; step < 40; ++step) {
        const std::int64_t id = 200'000 + static_cast<std::int64_t>(step);
        DieWhileMoving(others_, step, FaultyFiles::Fault::Torn, 150, id);
        // The table says what the key is now; the tag must say the same.
        const auto found = SeekId(*reader, id);
        const bool isSaved = Shown(*OpenTable(memory_), 150, kId) == std::to_string(id);
        EXPECT_EQ(found.size(), isSaved ? 1U : 0U) << "ended at step " << step;
        for (const std::uint32_t record : {1U, 149U, 151U, kRecords})
            EXPECT_EQ(SeekId(*reader, record), (std::vector<std::uint32_t>{record})) << "step " << step;
        ExpectSoundIndex(memory_);
    }
}

}  // namespace
}  // namespace zu::dbf::test
