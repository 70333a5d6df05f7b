#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "portable/error/Error.h"
#include "portable/files/File.h"
#include "portable/files/Path.h"

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

/// The form of an absolute path that Windows takes also when it is long.
std::filesystem::path AnyLength(const std::filesystem::path& path) {
#ifdef _WIN32
    return L"\\\\?\\" + std::filesystem::absolute(path).wstring();
#else
    return path;
#endif
}

/// A folder of its own for each test.
class SystemFilesTest : public testing::Test {
protected:
    SystemFilesTest() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() / (std::string("zu-files-") + test->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~SystemFilesTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::string Path(const std::string& name) const {
        return Join(reinterpret_cast<const char*>(folder_.u8string().c_str()), name);
    }
    void Write(const std::string& path, std::string_view text) const {
        SystemFiles().Open(path, {Access::ReadWrite, Creation::CreateAlways})->WriteAt(0, Bytes(text));
    }

    std::filesystem::path folder_;
};

TEST_F(SystemFilesTest, WritesReadsAndResizes) {
    auto file = SystemFiles().Open(Path("a"), {Access::ReadWrite, Creation::CreateNew});
    file->WriteAt(3, Bytes("xyz"));
    file->Flush();
    EXPECT_EQ(file->Size(), 6U);
    std::byte bytes[10];
    EXPECT_EQ(file->ReadAt(2, bytes), 4U);
    EXPECT_EQ(bytes[0], std::byte{0});
    EXPECT_EQ(bytes[1], std::byte{'x'});
    EXPECT_EQ(file->ReadAt(6, bytes), 0U);
    EXPECT_EQ(file->ReadAt(1ULL << 33, bytes), 0U);
    file->Truncate(1);
    EXPECT_EQ(file->Size(), 1U);
    EXPECT_EQ(file->path(), Path("a"));
}

TEST_F(SystemFilesTest, TellsWhyAFileCannotBeOpened) {
    Write(Path("a"), "1");
    EXPECT_EQ(KindOf([&] { SystemFiles().Open(Path("b"), {}); }), ErrorKind::NotFound);
    EXPECT_EQ(KindOf([&] { SystemFiles().Open(Path("none/b"), {}); }), ErrorKind::NotFound);
    EXPECT_EQ(KindOf([&] {
                  SystemFiles().Open(Path("a"), {Access::ReadWrite, Creation::CreateNew});
              }),
              ErrorKind::AlreadyExists);
    EXPECT_EQ(
        KindOf([&] { SystemFiles().Open(reinterpret_cast<const char*>(folder_.u8string().c_str()), {}); }),
        ErrorKind::AccessDenied);
    EXPECT_EQ(KindOf([&] { SystemFiles().Open(std::string("a\0b", 3), {}); }), ErrorKind::InvalidArgument);
    try {
        SystemFiles().Open(Path("b"), {});
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find(Path("b")), std::string::npos) << error.what();
    }
}

TEST_F(SystemFilesTest, KeepsOthersOutWhenExclusive) {
    Write(Path("a"), "1");
    auto exclusive = SystemFiles().Open(Path("a"), {Access::ReadWrite, Creation::OpenExisting, true});
    EXPECT_EQ(KindOf([&] { SystemFiles().Open(Path("a"), {}); }), ErrorKind::Locked);
    EXPECT_EQ(KindOf([&] {
                  SystemFiles().Open(Path("a"), {Access::ReadWrite, Creation::CreateAlways});
              }),
              ErrorKind::Locked);
    EXPECT_EQ(exclusive->Size(), 1U);  // not emptied by the refused open
    exclusive.reset();
    auto shared = SystemFiles().Open(Path("a"), {});
    auto writer = SystemFiles().Open(Path("a"), {Access::ReadWrite});
    EXPECT_EQ(KindOf([&] {
                  SystemFiles().Open(Path("a"), {Access::Read, Creation::OpenExisting, true});
              }),
              ErrorKind::Locked);
}

TEST_F(SystemFilesTest, MapsAFileAndShowsLaterWrites) {
    Write(Path("a"), "abc");
    auto reader = SystemFiles().Open(Path("a"), {});
    const auto mapping = reader->Map();
    ASSERT_NE(mapping, nullptr);
    ASSERT_EQ(mapping->bytes().size(), 3U);
    EXPECT_EQ(mapping->bytes()[1], std::byte{'b'});
    SystemFiles().Open(Path("a"), {Access::ReadWrite})->WriteAt(1, Bytes("X"));
    EXPECT_EQ(mapping->bytes()[1], std::byte{'X'});
}

TEST_F(SystemFilesTest, DoesNotMapAnEmptyFile) {
    Write(Path("a"), "");
    EXPECT_EQ(SystemFiles().Open(Path("a"), {})->Map(), nullptr);
}

TEST_F(SystemFilesTest, LocksByteRangesFarBeyondTheEnd) {
    Write(Path("a"), "abc");
    auto one = SystemFiles().Open(Path("a"), {Access::ReadWrite});
    auto two = SystemFiles().Open(Path("a"), {Access::ReadWrite});
    const std::uint64_t far = 0x7FFFFFFE;
    EXPECT_TRUE(one->TryLock(far, 1, LockMode::Exclusive));
    EXPECT_FALSE(two->TryLock(far, 1, LockMode::Exclusive));
    EXPECT_TRUE(two->TryLock(far - 1, 1, LockMode::Exclusive));
    one->Unlock(far, 1);
    EXPECT_TRUE(two->TryLock(far, 1, LockMode::Exclusive));
    two.reset();
    EXPECT_TRUE(one->TryLock(far, 1, LockMode::Exclusive));
    EXPECT_TRUE(one->TryLock(0xFFFF0000, 0xFFFF, LockMode::Exclusive));
}

TEST_F(SystemFilesTest, ListsFilesOnly) {
    Write(Path("a.dbf"), "1");
    Write(Path("b \xC3\xA4.dbf"), "1");
    std::filesystem::create_directory(folder_ / "folder");
    auto names = SystemFiles().List(reinterpret_cast<const char*>(folder_.u8string().c_str()));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a.dbf", "b \xC3\xA4.dbf"}));
    EXPECT_EQ(KindOf([&] { SystemFiles().List(Path("none")); }), ErrorKind::NotFound);
    EXPECT_TRUE(SystemFiles().Exists(Path("a.dbf")));
    EXPECT_FALSE(SystemFiles().Exists(Path("folder")));
    EXPECT_TRUE(SystemFiles().IsFolder(Path("folder")));
    EXPECT_FALSE(SystemFiles().IsFolder(Path("a.dbf")));
    EXPECT_FALSE(SystemFiles().Exists(Path("none")));
}

TEST_F(SystemFilesTest, ReplacesAndRemoves) {
    Write(Path("a"), "new");
    Write(Path("b"), "older");
    SystemFiles().Replace(Path("a"), Path("b"));
    EXPECT_FALSE(SystemFiles().Exists(Path("a")));
    EXPECT_EQ(SystemFiles().Open(Path("b"), {})->Size(), 3U);
    SystemFiles().Remove(Path("b"));
    EXPECT_FALSE(SystemFiles().Exists(Path("b")));
    EXPECT_EQ(KindOf([&] { SystemFiles().Remove(Path("b")); }), ErrorKind::NotFound);
}

TEST_F(SystemFilesTest, OpensFilesBehindLongPaths) {
    std::string path = reinterpret_cast<const char*>(folder_.u8string().c_str());
    std::vector<std::filesystem::path> folders = {AnyLength(folder_)};
    for (int i = 0; i < 6; ++i) {
        const std::string name(50, static_cast<char>('a' + i));
        path = Join(path, name);
        folders.push_back(folders.back() / name);
        std::filesystem::create_directory(folders.back());
    }
    const std::string file = Join(path, "table.dbf");
    ASSERT_GT(file.size(), 300U);
    Write(file, "abc");
    EXPECT_TRUE(SystemFiles().Exists(file));
    EXPECT_EQ(SystemFiles().Open(file, {})->Size(), 3U);
    EXPECT_EQ(SystemFiles().List(path).size(), 1U);
    SystemFiles().Remove(file);
    EXPECT_FALSE(SystemFiles().Exists(file));
    // One by one: removing the tree at once fails on Windows for paths of this length.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
        std::filesystem::remove(*folder);
}

}  // namespace
}  // namespace zu::files
