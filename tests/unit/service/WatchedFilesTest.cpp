#include "host/service/WatchedFiles.h"

#include <gtest/gtest.h>

#include <array>

#include "TemporaryFolder.h"
#include "com/Bstr.h"
#include "portable/text/Utf.h"

namespace zu::test {
namespace {

class WatchedFilesTest : public testing::Test {
protected:
    void SetUp() override {
        folder_.Write(L"table", "as it was");
        path_ = text::ToUtf8(com::AsUtf16(folder_.path() + L"\\table"));
    }
    static void Append(files::File& file) {
        const std::array<std::byte, 3> bytes{};
        file.WriteAt(file.Size(), bytes);
    }

    TemporaryFolder folder_;
    std::string path_;
    host::WatchedFiles files_{files::SystemFiles()};
};

TEST_F(WatchedFilesTest, NothingOpenedIsNotUnchanged) {
    EXPECT_FALSE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, WhatSomebodyElseWritesIsAChange) {
    const auto file = files_.Open(path_, {});
    EXPECT_TRUE(files_.AreUnchanged());
    Append(*files::SystemFiles().Open(path_, {files::Access::ReadWrite}));
    EXPECT_FALSE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, AFileThatWasOnlyLookedIntoInPassingMayChange) {
    const auto file = files_.Open(path_, {});
    folder_.Write(L"journal", "of a change");
    const std::string journal = text::ToUtf8(com::AsUtf16(folder_.path() + L"\\journal"));
    files_.Open(journal, {files::Access::Read, files::Creation::OpenExisting, false, true});
    files::SystemFiles().Remove(journal);
    EXPECT_TRUE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, WhatIsWrittenThroughThemIsNone) {
    const auto file = files_.Open(path_, {});
    const auto writer = files_.Open(path_, {files::Access::ReadWrite});
    Append(*writer);
    EXPECT_TRUE(files_.AreUnchanged());
    EXPECT_TRUE(files_.AreUnchanged());
    Append(*files::SystemFiles().Open(path_, {files::Access::ReadWrite}));
    EXPECT_FALSE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, AnotherFileInThePlaceOfTheWrittenOneIsAChange) {
    auto file = files_.Open(path_, {});
    auto writer = files_.Open(path_, {files::Access::ReadWrite});
    Append(*writer);
    file.reset();
    writer.reset();
    folder_.Write(L"other", "another table");
    const std::wstring other = folder_.path() + L"\\other";
    files::SystemFiles().Replace(text::ToUtf8(com::AsUtf16(other)), path_);
    EXPECT_FALSE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, AFileThatWasMovedAwayIsAChange) {
    const auto file = files_.Open(path_, {});
    EXPECT_TRUE(files_.AreUnchanged());
    EXPECT_TRUE(files_.AreUnchanged());
    files::SystemFiles().Replace(path_, path_ + ".old");
    EXPECT_FALSE(files_.AreUnchanged());
    folder_.Write(L"table", "as it was");
    EXPECT_FALSE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, AChangeInTheSameMomentAsTheLookBeforeIsSeen) {
    const auto file = files_.Open(path_, {});
    const auto writer = files_.Open(path_, {files::Access::ReadWrite});
    const auto other = files::SystemFiles().Open(path_, {files::Access::ReadWrite});
    Append(*writer);
    EXPECT_TRUE(files_.AreUnchanged());
    Append(*other);
    EXPECT_FALSE(files_.AreUnchanged());
}

TEST_F(WatchedFilesTest, FilesThatAreOnlyWrittenMayComeAndGo) {
    const auto file = files_.Open(path_, {});
    const std::string journal = path_ + ".journal";
    Append(*files_.Open(journal, {files::Access::ReadWrite, files::Creation::CreateNew}));
    files_.Remove(journal);
    EXPECT_TRUE(files_.AreUnchanged());
}

}  // namespace
}  // namespace zu::test
