#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

#include "ChildProcess.h"
#include "WorkTable.h"
#include "WorkView.h"

namespace zu::test {
namespace {

TEST(FourProcesses, AppendAndChangeOneTableWithoutLosingAnything) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    constexpr LONG kWorkers = 4;
    constexpr LONG kRecords = 60;
    const WorkTable table;
    {
        WorkView view(table.folder());
        ASSERT_TRUE(view.Append(1, 1));
    }
    std::vector<std::unique_ptr<ChildProcess>> workers;
    for (LONG i = 1; i <= kWorkers; ++i)
        workers.push_back(std::make_unique<ChildProcess>(
            L"table_worker.exe",
            L"share \"" + table.folder() + L"\" " + std::to_wstring(i) + L" " + std::to_wstring(kRecords)));
    for (const auto& worker : workers)
        ASSERT_EQ(worker->ReadLine(), "ready");
    std::ofstream(std::filesystem::path(table.folder()) / L"go").close();
    int lost = 0;
    for (const auto& worker : workers) {
        const auto line = worker->ReadLine();
        ASSERT_TRUE(line) << "a worker failed";
        std::istringstream words(*line);
        std::string done;
        LONG count = 0;
        int others = 0;
        words >> done >> count >> others;
        EXPECT_EQ(count, kRecords);
        lost += others;
        EXPECT_EQ(worker->Wait(), 0u);
    }
    std::printf("another process was quicker %d times\n", lost);
    {
        WorkView view(table.folder());
        ASSERT_EQ(view.Count(), 1 + kWorkers * kRecords);
        EXPECT_EQ(view.Counter(0), kWorkers * kCountings) << "each counting must count";
        std::map<LONG, int> found;
        for (LONG i = 1; i < view.Count(); ++i) {
            const WorkRecord record = view.Read(i);
            EXPECT_EQ(record.version, 2) << record.id;
            ++found[record.id];
        }
        for (LONG worker = 1; worker <= kWorkers; ++worker)
            for (LONG i = 1; i <= kRecords; ++i)
                EXPECT_EQ(found[worker * 10'000 + i], 1) << worker << ", " << i;
    }
    EXPECT_EQ(WorkView::Check(table.folder()), std::vector<std::wstring>());
    CoUninitialize();
}

}  // namespace
}  // namespace zu::test
