#include "host/technologies/dbf/transaction/Journal.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"

namespace zu::dbf::transaction {
namespace {

using files::FaultyFiles;

std::vector<std::byte> Bytes(const std::string& text) {
    std::vector<std::byte> bytes;
    for (const char c : text)
        bytes.push_back(static_cast<std::byte>(c));
    return bytes;
}

// A table of three files in memory, and processes that open it.
class JournalTest : public ::testing::TestWithParam<Durability> {
protected:
    static constexpr const char* kTable = "t.dbf";
    static constexpr const char* kMemo = "t.fpt";
    static constexpr const char* kIndex = "t.cdx";
    static constexpr const char* kJournal = "t.zuj";

    void SetUp() override {
        memory.Put(kTable, Bytes("table: 0123456789"));
        memory.Put(kMemo, Bytes("memo: 0123456789"));
        memory.Put(kIndex, Bytes("index: 0123456789"));
    }

    struct Process {
        Process(files::FileSystem& system, Durability durability)
            : table(system.Open(kTable, kOptions)),
              memo(system.Open(kMemo, kOptions)),
              index(system.Open(kIndex, kOptions)),
              journal(system, kJournal, *table, durability) {
            parts[Part::Table] = table.get();
            parts[Part::Memo] = memo.get();
            parts[Part::Index] = index.get();
        }
        static constexpr files::OpenOptions kOptions{files::Access::ReadWrite, files::Creation::OpenExisting,
                                                     false};
        std::unique_ptr<files::File> table, memo, index;
        Journal journal;
        PartFiles parts;
    };

    std::string State() const {
        std::string state;
        for (const char* name : {kTable, kMemo, kIndex}) {
            const auto bytes = memory.Get(name);
            state += std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()) + "|";
        }
        return state;
    }

    std::string StateAfterChange() {
        {
            Process process(system, GetParam());
            EXPECT_TRUE(process.journal.TryEnter());
            process.journal.Commit(Change(), process.parts);
        }
        std::string state = State();
        SetUp();
        return state;
    }

    static ChangeSet Change() {
        ChangeSet change;
        change.Write(Part::Table, 7, Bytes("abc"));
        change.Write(Part::Table, 15, Bytes("appended record"));
        change.Write(Part::Memo, 40, Bytes("far behind the end"));
        change.Write(Part::Index, 7, Bytes("KEY"));
        change.Write(Part::Index, 12, Bytes("."));
        return change;
    }

    files::MemoryFiles memory;
    FaultyFiles system{memory};
};

TEST_P(JournalTest, WritesTheWholeChange) {
    Process process(system, GetParam());
    ASSERT_TRUE(process.journal.TryEnter());
    process.journal.Commit(Change(), process.parts);
    EXPECT_FALSE(process.journal.IsHot());
    process.journal.Leave();
    EXPECT_EQ(State(), "table: abc34567appended record|memo: 0123456789" + std::string(24, '\0') +
                           "far behind the end|index: KEY34.6789|");
}

TEST_P(JournalTest, WritesEachPieceToItsPlaceWhetherItTouchesOthersOrNot) {
    ChangeSet change;
    change.Write(Part::Index, 0, Bytes("aa"));
    change.Write(Part::Index, 2, Bytes("bb"));  // touches the first
    change.Write(Part::Index, 6, Bytes("dd"));  // leaves a gap
    change.Write(Part::Index, 4, Bytes("cc"));  // lies before it in the file alone
    change.Write(Part::Memo, 2, Bytes("M"));    // between two of the index in the set
    change.Write(Part::Index, 8, Bytes("ee"));
    change.Write(Part::Index, 10, Bytes("ff"));
    change.Write(Part::Index, 2, Bytes("BB"));  // again
    Process process(system, GetParam());
    ASSERT_TRUE(process.journal.TryEnter());
    process.journal.Commit(change, process.parts);
    process.journal.Leave();
    EXPECT_EQ(State(), "table: 0123456789|meMo: 0123456789|aaBBccddeeff56789|");
}

TEST_P(JournalTest, AfterACrashAtAnyWriteTheNextProcessFindsAllOrNothing) {
    const std::string before = State();
    const std::string after = StateAfterChange();
    for (const auto fault : {FaultyFiles::Fault::Crash, FaultyFiles::Fault::Torn}) {
        std::size_t finished = 0;
        for (std::size_t step = 1; finished == 0; ++step) {
            ASSERT_LT(step, 100U);
            SetUp();
            {
                Process dying(system, GetParam());
                ASSERT_TRUE(dying.journal.TryEnter());
                system.FailAt(step, fault);
                try {
                    dying.journal.Commit(Change(), dying.parts);
                    finished = step;
                } catch (const Error&) {
                    EXPECT_TRUE(system.fired());
                }
            }
            system.Heal();
            Process next(system, GetParam());
            ASSERT_TRUE(next.journal.TryEnter());
            next.journal.Recover(next.parts);
            EXPECT_FALSE(next.journal.IsHot());
            // A change that was complete when the process died may stand, though nobody heard of it.
            EXPECT_TRUE(State() == before || State() == after) << "crash at step " << step << ": " << State();
            if (finished) {
                EXPECT_EQ(State(), after);
            }
            if (step <= 5) {
                EXPECT_EQ(State(), before) << "crash at step " << step;
            }
        }
        EXPECT_GT(finished, 6U);
    }
}

TEST_P(JournalTest, ACrashDuringRecoveryLeavesTheRestToTheNextProcess) {
    const std::string before = State();
    for (std::size_t step = 1;; ++step) {
        ASSERT_LT(step, 100U);
        SetUp();
        {
            Process dying(system, GetParam());
            ASSERT_TRUE(dying.journal.TryEnter());
            system.FailAt(GetParam() == Durability::PowerCut ? 7 : 6, FaultyFiles::Fault::Crash);
            EXPECT_THROW(dying.journal.Commit(Change(), dying.parts), Error);
        }
        bool recovered = false;
        system.Heal();
        {
            Process second(system, GetParam());
            ASSERT_TRUE(second.journal.TryEnter());
            ASSERT_TRUE(second.journal.IsHot());
            system.FailAt(step, FaultyFiles::Fault::Torn);
            try {
                recovered = second.journal.Recover(second.parts).undone;
            } catch (const Error&) {
                EXPECT_TRUE(system.fired());
            }
        }
        system.Heal();
        Process third(system, GetParam());
        ASSERT_TRUE(third.journal.TryEnter());
        third.journal.Recover(third.parts);
        EXPECT_EQ(State(), before) << "second crash at step " << step;
        if (recovered) break;
    }
}

TEST_P(JournalTest, AWriteThatFailsIsTakenBackAtOnce) {
    const std::string before = State();
    for (std::size_t step = 1;; ++step) {
        ASSERT_LT(step, 100U);
        SetUp();
        Process process(system, GetParam());
        ASSERT_TRUE(process.journal.TryEnter());
        system.FailAt(step, FaultyFiles::Fault::Refuse, ErrorKind::IoFailure);
        try {
            process.journal.Commit(Change(), process.parts);
            break;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::IoFailure);
        }
        EXPECT_EQ(State(), before) << "failure at step " << step;
        EXPECT_FALSE(process.journal.IsHot());
        system.Heal();
        process.journal.Commit(Change(), process.parts);
        EXPECT_NE(State(), before);
    }
}

TEST_P(JournalTest, AFullDiskChangesNothing) {
    const std::string before = State();
    Process process(system, GetParam());
    ASSERT_TRUE(process.journal.TryEnter());
    std::size_t refused = 0;
    for (std::size_t step = 1; step < 12; ++step) {
        SetUp();
        system.FailAt(step, FaultyFiles::Fault::Full);
        try {
            process.journal.Commit(Change(), process.parts);
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::DiskFull);
            EXPECT_EQ(State(), before) << "full at step " << step;
            ++refused;
        }
        system.Heal();
    }
    EXPECT_GT(refused, 3U);
}

TEST_P(JournalTest, LetsOneProcessChangeTheTableAtATime) {
    Process first(system, GetParam());
    auto second = std::make_unique<Process>(system, GetParam());
    ASSERT_TRUE(first.journal.TryEnter());
    EXPECT_FALSE(second->journal.TryEnter());
    first.journal.Leave();
    EXPECT_TRUE(second->journal.TryEnter());
    EXPECT_FALSE(first.journal.TryEnter());
    second.reset();
    EXPECT_TRUE(first.journal.TryEnter());
}

TEST_P(JournalTest, TheLastToCloseTheTableRemovesTheJournal) {
    auto first = std::make_unique<Process>(system, GetParam());
    auto second = std::make_unique<Process>(system, GetParam());
    EXPECT_FALSE(memory.Exists(kJournal)) << "a table that is only read has no journal";
    for (Process* process : {first.get(), second.get()}) {
        ASSERT_TRUE(process->journal.TryEnter());
        process->journal.Commit(Change(), process->parts);
        process->journal.Leave();
    }
    EXPECT_TRUE(memory.Exists(kJournal));
    first.reset();
    EXPECT_TRUE(memory.Exists(kJournal));
    second.reset();
    EXPECT_FALSE(memory.Exists(kJournal));
}

TEST_P(JournalTest, OnlyTheHolderOfTheGateWrites) {
    Process process(system, GetParam());
    ASSERT_TRUE(process.journal.TryEnter());
    process.journal.Leave();
    const std::string before = State();
    EXPECT_THROW(process.journal.Commit(Change(), process.parts), Error);
    EXPECT_EQ(State(), before);
}

TEST_P(JournalTest, ADamagedJournalUndoesNothing) {
    std::vector<std::byte> hot;
    {
        Process dying(system, GetParam());
        ASSERT_TRUE(dying.journal.TryEnter());
        system.FailAt(GetParam() == Durability::PowerCut ? 7 : 6, FaultyFiles::Fault::Crash);
        EXPECT_THROW(dying.journal.Commit(Change(), dying.parts), Error);
        system.Heal();
        hot = memory.Get(kJournal);
    }
    const std::string torn = State();
    for (std::size_t i = 8; i < hot.size(); i += 5) {
        auto damaged = hot;
        damaged[i] ^= std::byte{0x41};
        memory.Put(kJournal, damaged);
        Process process(system, GetParam());
        ASSERT_TRUE(process.journal.TryEnter());
        EXPECT_FALSE(process.journal.Recover(process.parts).undone) << "byte " << i;
        EXPECT_EQ(State(), torn) << "byte " << i;
        EXPECT_FALSE(process.journal.IsHot()) << "byte " << i;
    }
    for (std::size_t length = 0; length < hot.size(); ++length) {
        memory.Put(kJournal, std::span(hot).first(length));
        Process process(system, GetParam());
        ASSERT_TRUE(process.journal.TryEnter());
        EXPECT_FALSE(process.journal.Recover(process.parts).undone) << length << " bytes";
        EXPECT_EQ(State(), torn);
    }
}

TEST_P(JournalTest, RefusesToUndoWhatItCannotUndoWhole) {
    {
        Process dying(system, GetParam());
        ASSERT_TRUE(dying.journal.TryEnter());
        system.FailAt(GetParam() == Durability::PowerCut ? 7 : 6, FaultyFiles::Fault::Crash);
        EXPECT_THROW(dying.journal.Commit(Change(), dying.parts), Error);
        system.Heal();
    }
    const std::string torn = State();
    Process process(system, GetParam());
    process.parts[Part::Memo] = nullptr;
    ASSERT_TRUE(process.journal.TryEnter());
    EXPECT_THROW(process.journal.Recover(process.parts), Error);
    EXPECT_EQ(State(), torn);
    EXPECT_TRUE(process.journal.IsHot());
}

TEST_P(JournalTest, ALargeChangeDoesNotLeaveALargeJournal) {
    memory.Put(kTable, std::vector<std::byte>(3U << 20));
    Process process(system, GetParam());
    ASSERT_TRUE(process.journal.TryEnter());
    ChangeSet change;
    change.Write(Part::Table, 0, std::vector<std::byte>(2U << 20, std::byte{7}));
    process.journal.Commit(change, process.parts);
    EXPECT_LT(memory.Get(kJournal).size(), 1U << 20);
}

INSTANTIATE_TEST_SUITE_P(Durability, JournalTest,
                         ::testing::Values(Durability::Process, Durability::PowerCut),
                         [](const auto& instance) {
                             return instance.param == Durability::Process ? "Process" : "PowerCut";
                         });

}  // namespace
}  // namespace zu::dbf::transaction
