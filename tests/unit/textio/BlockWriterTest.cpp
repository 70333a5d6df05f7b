#include "portable/textio/BlockWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"

namespace zu::textio {
namespace {

constexpr files::OpenOptions kNew{files::Access::ReadWrite, files::Creation::CreateAlways};

std::string ContentOf(files::FileSystem& files) {
    const auto file = files.Open("out", {});
    std::string content(static_cast<std::size_t>(file->Size()), '\0');
    file->ReadAt(0, std::as_writable_bytes(std::span(content)));
    return content;
}

TEST(BlockWriter, WritesInTheOrderOfTheLines) {
    files::MemoryFiles files;
    BlockWriter writer(files.Open("out", kNew));
    std::string expected;
    for (int i = 0; i < 300000; ++i) {
        const std::string line = "line " + std::to_string(i) + "\r\n";
        expected += line;
        writer.buffer().Append(line);
        writer.LineDone();
    }
    writer.Flush();
    EXPECT_EQ(ContentOf(files), expected);
}

TEST(BlockWriter, WritesOnlyWholeBlocksUntilItIsFlushed) {
    files::MemoryFiles files;
    BlockWriter writer(files.Open("out", kNew));
    writer.buffer().Append("short");
    writer.LineDone();
    EXPECT_EQ(ContentOf(files), "");
    writer.buffer().Append(BlockWriter::kBlock, 'x');
    writer.LineDone();
    EXPECT_EQ(ContentOf(files).size(), BlockWriter::kBlock + 5);
}

TEST(BlockWriter, TakesNoMemoryForWhatIsWritten) {
    files::MemoryFiles files;
    BlockWriter writer(files.Open("out", kNew));
    for (int i = 0; i < 10; ++i) {
        writer.buffer().Append(BlockWriter::kBlock, 'x');
        writer.LineDone();
        EXPECT_EQ(writer.buffer().size(), 0U);
    }
}

}  // namespace
}  // namespace zu::textio
