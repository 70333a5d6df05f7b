#include "portable/files/MemoryFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "portable/error/Error.h"

namespace zu::files {
namespace {

std::span<const std::byte> Bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

ErrorKind KindOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.kind();
    }
    ADD_FAILURE() << "no error";
    return ErrorKind::Internal;
}

TEST(MemoryFiles, SharesContentAmongHandles) {
    MemoryFiles files;
    auto writer = files.Open("a", {Access::ReadWrite, Creation::CreateNew});
    auto reader = files.Open("a", {});
    writer->WriteAt(2, Bytes("xy"));
    std::byte bytes[8];
    EXPECT_EQ(reader->ReadAt(0, bytes), 4U);
    EXPECT_EQ(bytes[0], std::byte{0});
    EXPECT_EQ(bytes[3], std::byte{'y'});
    EXPECT_EQ(reader->ReadAt(4, bytes), 0U);
    EXPECT_EQ(reader->ReadAt(1ULL << 40, bytes), 0U);
    writer->Truncate(1);
    EXPECT_EQ(reader->Size(), 1U);
}

TEST(MemoryFiles, RefusesAsARealFileSystemDoes) {
    MemoryFiles files;
    files.Put("f/a", Bytes("1"));
    EXPECT_EQ(KindOf([&] { files.Open("f/b", {}); }), ErrorKind::NotFound);
    EXPECT_EQ(KindOf([&] {
                  files.Open("f/a", {Access::ReadWrite, Creation::CreateNew});
              }),
              ErrorKind::AlreadyExists);
    EXPECT_EQ(KindOf([&] { files.Open("f/a", {})->WriteAt(0, Bytes("x")); }), ErrorKind::AccessDenied);
    EXPECT_EQ(KindOf([&] { files.Remove("f/b"); }), ErrorKind::NotFound);
    EXPECT_EQ(KindOf([&] { files.List("g"); }), ErrorKind::NotFound);
    auto exclusive = files.Open("f/a", {Access::Read, Creation::OpenExisting, true});
    EXPECT_EQ(KindOf([&] { files.Open("f/a", {}); }), ErrorKind::Locked);
    exclusive.reset();
    auto shared = files.Open("f/a", {});
    EXPECT_EQ(KindOf([&] {
                  files.Open("f/a", {Access::Read, Creation::OpenExisting, true});
              }),
              ErrorKind::Locked);
}

TEST(MemoryFiles, ListsTheFilesOfAFolder) {
    MemoryFiles files;
    files.Put("f/a", Bytes("1"));
    files.Put("f/b", Bytes("1"));
    files.Put("f/g/c", Bytes("1"));
    auto names = files.List("f");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(files.IsFolder("f/g"));
    EXPECT_FALSE(files.IsFolder("f/a"));
}

TEST(MemoryFiles, ReplacesInOneStep) {
    MemoryFiles files;
    files.Put("a", Bytes("new"));
    files.Put("b", Bytes("old"));
    files.Replace("a", "b");
    EXPECT_FALSE(files.Exists("a"));
    EXPECT_EQ(files.Get("b").size(), 3U);
    EXPECT_EQ(files.Get("b")[0], std::byte{'n'});
}

TEST(MemoryFiles, ExcludesLocksOfOtherHandles) {
    MemoryFiles files;
    files.Put("a", Bytes("1"));
    auto one = files.Open("a", {});
    auto two = files.Open("a", {});
    EXPECT_TRUE(one->TryLock(10, 5, LockMode::Exclusive));
    EXPECT_FALSE(two->TryLock(14, 1, LockMode::Shared));
    EXPECT_TRUE(two->TryLock(15, 1, LockMode::Exclusive));
    one->Unlock(10, 5);
    EXPECT_TRUE(two->TryLock(14, 1, LockMode::Shared));
    EXPECT_TRUE(one->TryLock(14, 1, LockMode::Shared));
    EXPECT_FALSE(one->TryLock(14, 1, LockMode::Exclusive));
    two.reset();
    EXPECT_TRUE(one->TryLock(14, 1, LockMode::Exclusive));
}

TEST(MemoryFiles, MapsUnlessToldNotTo) {
    MemoryFiles files;
    files.Put("a", Bytes("abc"));
    files.Put("empty", {});
    const auto mapping = files.Open("a", {})->Map();
    ASSERT_NE(mapping, nullptr);
    EXPECT_EQ(mapping->bytes().size(), 3U);
    EXPECT_EQ(files.Open("empty", {})->Map(), nullptr);
    files.AllowMapping(false);
    EXPECT_EQ(files.Open("a", {})->Map(), nullptr);
}

}  // namespace
}  // namespace zu::files
