#include "host/engine/Log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "TemporaryFolder.h"

namespace zu::host {
namespace {

TEST(Log, WritesLinesWithTimeThreadAndLevel) {
    const test::TemporaryFolder folder;
    Log log;
    ASSERT_TRUE(log.Open(folder.path() + L"\\log.txt", LogLevel::Info));
    log.Write(LogLevel::Error, L"B\u00E4r\r\nfound");
    const std::string line = folder.Read(L"log.txt");
    EXPECT_TRUE(line.ends_with(" error B\xC3\xA4r  found\r\n")) << line;
    EXPECT_EQ(line.substr(4, 1) + line.substr(10, 1) + line.substr(19, 1), "- .");
}

TEST(Log, LeavesOutWhatIsAboveItsLevel) {
    const test::TemporaryFolder folder;
    Log log;
    log.Open(folder.path() + L"\\log.txt", LogLevel::Warning);
    EXPECT_TRUE(log.Takes(LogLevel::Warning));
    EXPECT_FALSE(log.Takes(LogLevel::Info));
    log.Write(LogLevel::Debug, L"detail");
    EXPECT_EQ(folder.Read(L"log.txt"), "");
}

TEST(Log, IsSilentWhenSwitchedOffOrWithoutAFile) {
    const test::TemporaryFolder folder;
    Log log;
    log.Write(LogLevel::Error, L"nowhere");
    log.Open(folder.path() + L"\\log.txt", LogLevel::Off);
    log.Write(LogLevel::Error, L"nowhere");
    EXPECT_EQ(folder.Read(L"log.txt"), "");
}

TEST(Log, AppendsToWhatIsThere) {
    const test::TemporaryFolder folder;
    const std::wstring file = folder.Write(L"log.txt", "before\r\n");
    Log log;
    log.Open(file, LogLevel::Info);
    log.Write(LogLevel::Info, L"after");
    EXPECT_TRUE(folder.Read(L"log.txt").starts_with("before\r\n"));
    EXPECT_TRUE(folder.Read(L"log.txt").ends_with("info after\r\n"));
}

TEST(Log, AFileThatCannotBeOpenedIsSaidAndHarmsNobody) {
    Log log;
    EXPECT_FALSE(log.Open(L"C:\\no such folder\\log.txt", LogLevel::Info));
    log.Write(LogLevel::Error, L"lost");
}

TEST(Log, LinesOfSeveralThreadsStayWhole) {
    const test::TemporaryFolder folder;
    Log log;
    log.Open(folder.path() + L"\\log.txt", LogLevel::Info);
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&log] {
            for (int n = 0; n < 200; ++n)
                log.Write(LogLevel::Info, L"0123456789012345678901234567890123456789");
        });
    for (std::thread& thread : threads)
        thread.join();
    const std::string content = folder.Read(L"log.txt");
    std::size_t lines = 0;
    for (std::size_t at = 0;
         (at = content.find("info 0123456789012345678901234567890123456789\r\n", at)) != std::string::npos;
         ++at)
        ++lines;
    EXPECT_EQ(lines, 800u);
    EXPECT_EQ(static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n')), 800u);
}

}  // namespace
}  // namespace zu::host
