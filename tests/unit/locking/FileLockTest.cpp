#include "host/technologies/dbf/locking/FileLock.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"

namespace zu::dbf::locking {
namespace {

constexpr LockRanges kPair{{LockRange{10, 1}, LockRange{20, 1}}, 2};
constexpr LockRanges kSecond{{LockRange{20, 1}, LockRange{}}, 1};
constexpr LockRanges kFirst{{LockRange{10, 1}, LockRange{}}, 1};

class FileLockTest : public ::testing::Test {
protected:
    FileLockTest() {
        memory.Put("t.dbf", {});
        const files::OpenOptions options{files::Access::ReadWrite, files::Creation::OpenExisting, false};
        one = memory.Open("t.dbf", options);
        other = memory.Open("t.dbf", options);
    }
    files::MemoryFiles memory;
    std::unique_ptr<files::File> one, other;
};

TEST_F(FileLockTest, KeepsOthersOutUntilItIsReleased) {
    auto lock = FileLock::TryTake(*one, kPair, files::LockMode::Exclusive);
    ASSERT_TRUE(lock);
    EXPECT_FALSE(FileLock::TryTake(*other, kSecond, files::LockMode::Exclusive));
    lock.Release();
    EXPECT_FALSE(lock);
    EXPECT_TRUE(FileLock::TryTake(*other, kSecond, files::LockMode::Exclusive));
}

TEST_F(FileLockTest, TakesAllRangesOrNone) {
    const auto held = FileLock::TryTake(*other, kSecond, files::LockMode::Exclusive);
    ASSERT_TRUE(held);
    EXPECT_FALSE(FileLock::TryTake(*one, kPair, files::LockMode::Exclusive));
    EXPECT_TRUE(FileLock::TryTake(*other, kFirst, files::LockMode::Exclusive));
}

TEST_F(FileLockTest, SaysWhatIsHeldWhenTheWaitIsOver) {
    const auto held = FileLock::TryTake(*other, kFirst, files::LockMode::Exclusive);
    ASSERT_TRUE(held);
    try {
        FileLock::Take(*one, kFirst, files::LockMode::Exclusive, LockWait{0}, "Record 12 of t.dbf");
        FAIL() << "the lock of another program was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Locked);
        EXPECT_NE(std::string(error.what()).find("Record 12 of t.dbf"), std::string::npos);
    }
}

TEST_F(FileLockTest, MovesToItsNewOwner) {
    auto lock = FileLock::TryTake(*one, kFirst, files::LockMode::Exclusive);
    {
        const FileLock owner = std::move(lock);
        EXPECT_FALSE(FileLock::TryTake(*other, kFirst, files::LockMode::Exclusive));
    }
    EXPECT_TRUE(FileLock::TryTake(*other, kFirst, files::LockMode::Exclusive));
}

TEST_F(FileLockTest, RetriesUntilTheLockIsFree) {
    auto held = FileLock::TryTake(*other, kFirst, files::LockMode::Exclusive);
    int attempts = 0;
    EXPECT_TRUE(RetryUntil(LockWait{60000}, [&] {
        if (++attempts == 3) held.Release();
        return static_cast<bool>(FileLock::TryTake(*one, kFirst, files::LockMode::Exclusive));
    }));
    EXPECT_EQ(attempts, 3);
}

}  // namespace
}  // namespace zu::dbf::locking
