#include "portable/textio/LineReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/InventedFile.h"

namespace zu::textio {
namespace {

using Lines = std::vector<std::string>;

std::unique_ptr<files::File> FileOf(files::MemoryFiles& files, std::string_view content) {
    auto file = files.Open("text", {files::Access::ReadWrite, files::Creation::CreateAlways});
    file->WriteAt(0, std::as_bytes(std::span(content)));
    return file;
}

Lines Read(std::string_view content, std::size_t block = LineReader::kBlock) {
    files::MemoryFiles files;
    LineReader reader(FileOf(files, content), block);
    Lines lines;
    std::string_view line;
    while (reader.Next(line))
        lines.emplace_back(line);
    return lines;
}

TEST(LineReader, ReadsLinesThatEndWithCrLf) {
    EXPECT_EQ(Read("a\r\nbc\r\n"), (Lines{"a", "bc"}));
}

TEST(LineReader, ReadsTheLastLineWithoutAnEnd) {
    EXPECT_EQ(Read("a\r\nbc"), (Lines{"a", "bc"}));
    EXPECT_EQ(Read("abc"), (Lines{"abc"}));
}

TEST(LineReader, AnswersEmptyLines) {
    EXPECT_EQ(Read("\r\n\r\na\r\n\r\n"), (Lines{"", "", "a", ""}));
}

TEST(LineReader, FindsNothingInAnEmptyFile) {
    EXPECT_EQ(Read(""), Lines{});
}

TEST(LineReader, ReadsFilesWithLoneLfWhenTheFirstLineEndsSo) {
    EXPECT_EQ(Read("a\nb\nc"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(Read("a\nb\r\nc"), (Lines{"a", "b\r", "c"}));
    EXPECT_EQ(Read("\na\n"), (Lines{"", "a"}));
}

TEST(LineReader, KeepsLoneLfInsideLinesOfOtherFiles) {
    EXPECT_EQ(Read("a\r\nb\nc\r\nd\n"), (Lines{"a", "b\nc", "d\n"}));
}

TEST(LineReader, KeepsLoneCrInsideLines) {
    EXPECT_EQ(Read("a\rb\r\nc\r"), (Lines{"a\rb", "c\r"}));
}

TEST(LineReader, IgnoresTheEndMarkOfOldPrograms) {
    EXPECT_EQ(Read("a\r\n\x1A"), (Lines{"a"}));
    EXPECT_EQ(Read("a\r\nb\x1A\x1A"), (Lines{"a", "b"}));
    EXPECT_EQ(Read("\x1A"), Lines{});
    EXPECT_EQ(Read("a\x1A"
                   "b\r\n"),
              (Lines{"a\x1A"
                     "b"}));
}

TEST(LineReader, ReadsTheSameWhateverTheBlocks) {
    const std::string content = "first\r\n\r\nthird with\nfeed\r\n" + std::string(50, 'x') + "\r\nlast\x1A";
    const Lines whole = Read(content);
    for (std::size_t block = 1; block < 70; ++block)
        EXPECT_EQ(Read(content, block), whole) << block;
}

TEST(LineReader, ReadsLinesOfMegabytes) {
    const std::string longLine(3 * LineReader::kBlock + 17, 'y');
    const Lines lines = Read("a\r\n" + longLine + "\r\nb\r\n");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1], longLine);
    EXPECT_EQ(lines[2], "b");
}

/// A file of more than four gigabytes that exists nowhere: each line is the number of its block.
class HugeFile final : public test::InventedFile {
public:
    static constexpr std::uint64_t kSize = (4ULL << 30) + (64ULL << 20);
    static constexpr std::uint64_t kLine = 1ULL << 20;

    explicit HugeFile(std::size_t& longestRead) : InventedFile("huge"), longestRead_(longestRead) {}

    std::uint64_t Size() const override { return kSize; }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        longestRead_ = std::max(longestRead_, buffer.size());
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), kSize - offset));
        std::memset(buffer.data(), 'z', count);
        // A line ends in the last two bytes of each megabyte.
        for (std::uint64_t end = (offset / kLine + 1) * kLine; end - 2 < offset + count; end += kLine) {
            if (end - 2 >= offset) buffer[static_cast<std::size_t>(end - 2 - offset)] = std::byte{'\r'};
            if (end - 1 >= offset && end - 1 < offset + count)
                buffer[static_cast<std::size_t>(end - 1 - offset)] = std::byte{'\n'};
        }
        return count;
    }

private:
    std::size_t& longestRead_;
};

TEST(LineReader, ReadsFilesOfGigabytesInConstantMemory) {
    std::size_t longestRead = 0;
    LineReader reader(std::make_unique<HugeFile>(longestRead));
    std::string_view line;
    std::uint64_t lines = 0;
    while (reader.Next(line)) {
        ASSERT_EQ(line.size(), HugeFile::kLine - 2);
        ++lines;
    }
    EXPECT_EQ(lines, HugeFile::kSize / HugeFile::kLine);
    EXPECT_LE(longestRead, 4 * LineReader::kBlock);
}

/// A file that is one line without end.
class EndlessFile final : public test::InventedFile {
public:
    EndlessFile() : InventedFile("C:\\endless.txt") {}

    std::uint64_t Size() const override { return ~std::uint64_t{0}; }
    std::size_t ReadAt(std::uint64_t, std::span<std::byte> buffer) const override { return buffer.size(); }
};

TEST(LineReader, RefusesALineWithoutEndByTheNameOfTheFile) {
    LineReader reader(std::make_unique<EndlessFile>());
    std::string_view line;
    try {
        reader.Next(line);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Damaged);
        EXPECT_NE(std::string(error.what()).find("C:\\endless.txt"), std::string::npos);
    }
}

}  // namespace
}  // namespace zu::textio
