#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <random>
#include <sstream>

#include "ChildProcess.h"
#include "WorkTable.h"
#include "WorkView.h"

namespace zu::test {
namespace {

int RoundsFromEnvironment() {
    const char* rounds = std::getenv("ZU_KILL_ROUNDS");
    return rounds ? std::atoi(rounds) : 30;
}

/// What the workers have said, and what must therefore be in the table.
class Ledger {
public:
    /// The record that a line speaks of as it will be.
    struct Change {
        std::string kind;
        WorkRecord to;
    };

    void Hear(const std::string& line) {
        std::istringstream words(line);
        std::string stage;
        Change change;
        words >> stage >> change.kind >> change.to.id >> change.to.version;
        ASSERT_FALSE(words.fail()) << line;
        if (stage == "begin") {
            begun_ = change;
            return;
        }
        ASSERT_EQ(stage, "done") << line;
        Apply(change);
        begun_.reset();
        ++confirmed_;
    }

    /// The table holds what was confirmed. The change that was begun last may be there or not; what is there
    /// counts from now on.
    void Compare(WorkView& view) {
        ASSERT_GE(view.Count(), static_cast<LONG>(records_.size()));
        if (begun_ && IsThere(view, *begun_)) Apply(*begun_);
        begun_.reset();
        ASSERT_EQ(view.Count(), static_cast<LONG>(records_.size()));
        for (std::size_t i = 0; i < records_.size(); ++i) {
            const WorkRecord found = view.Read(static_cast<LONG>(i));
            EXPECT_EQ(found.id, records_[i].id);
            EXPECT_EQ(found.version, records_[i].version) << "record " << i + 1;
            EXPECT_EQ(found.deleted, records_[i].deleted) << "record " << i + 1;
        }
    }
    int confirmed() const { return confirmed_; }

private:
    void Apply(const Change& change) {
        const auto index = static_cast<std::size_t>(change.to.id) - 1;
        if (change.kind == "append") {
            ASSERT_EQ(index, records_.size());
            records_.push_back(change.to);
            return;
        }
        ASSERT_LT(index, records_.size());
        records_[index].version = change.to.version;
        if (change.kind == "delete") records_[index].deleted = true;
        if (change.kind == "undelete") records_[index].deleted = false;
    }
    static bool IsThere(WorkView& view, const Change& change) {
        if (view.Count() < change.to.id) return false;
        const WorkRecord found = view.Read(change.to.id - 1);
        if (change.kind == "delete") return found.deleted;
        if (change.kind == "undelete") return !found.deleted;
        return found.version == change.to.version;
    }

    std::vector<WorkRecord> records_;
    std::optional<Change> begun_;
    int confirmed_ = 0;
};

/// Lets a worker change the table and ends it in the middle of something.
void RunAndKill(const std::wstring& folder, std::mt19937& random, Ledger& ledger) {
    ChildProcess worker(L"table_worker.exe", L"change \"" + folder + L"\" " + std::to_wstring(random()));
    const unsigned lines = 20 + random() % 200;
    for (unsigned i = 0; i < lines; ++i) {
        const auto line = worker.ReadLine();
        ASSERT_TRUE(line) << "the worker ended by itself";
        ledger.Hear(*line);
        if (testing::Test::HasFatalFailure()) return;
    }
    // Not only at the moment at which a line was said.
    for (unsigned turns = random() % 20'000; turns > 0; --turns)
        YieldProcessor();
    worker.Kill();
    while (const auto line = worker.ReadLine())
        ledger.Hear(*line);
}

TEST(KilledProcess, LeavesASoundTableWithEverythingThatWasConfirmed) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const WorkTable table;
    const int rounds = RoundsFromEnvironment();
    std::random_device source;
    const unsigned seed = source();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Ledger ledger;
    for (int round = 1; round <= rounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        RunAndKill(table.folder(), random, ledger);
        {
            WorkView view(table.folder());
            ledger.Compare(view);
        }
        EXPECT_EQ(WorkView::Check(table.folder()), std::vector<std::wstring>());
    }
    std::printf("%d rounds, %d changes were confirmed\n", rounds, ledger.confirmed());
    CoUninitialize();
}

}  // namespace
}  // namespace zu::test
