#include "host/technologies/dbf/MemoFile.h"

#include <gtest/gtest.h>

#include "host/technologies/dbf/MemoFields.h"
#include "tests/unit/dbf/ErrorExpectation.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

/// A memo file in memory, mapped or read as the test says.
class MemoFileTest : public testing::TestWithParam<bool> {
protected:
    MemoFileTest() { files_.AllowMapping(GetParam()); }

    std::unique_ptr<MemoFile> Open(MemoFormat format, std::string_view bytes) {
        Put(files_, "m", bytes);
        return MemoFile::Open(files_.Open("m", {}), format, warnings_);
    }
    /// The content at `block`, or "none" / "unreadable".
    static std::string Read(MemoFile& memos, std::uint32_t block) {
        std::string content;
        switch (memos.Read(block, content)) {
            case MemoOutcome::Found:
                return content;
            case MemoOutcome::None:
                return "none";
            default:
                return "unreadable";
        }
    }

    files::MemoryFiles files_;
    std::vector<std::string> warnings_;
};

INSTANTIATE_TEST_SUITE_P(Access, MemoFileTest, testing::Bool(),
                         [](const auto& mapped) { return mapped.param ? "Mapped" : "Read"; });

std::string Padded(std::string text, std::size_t size, char fill = '\0') {
    text.resize(size, fill);
    return text;
}

TEST_P(MemoFileTest, EndsTextsOfDBase3AtTheFirstEndMark) {
    const auto memos = Open(MemoFormat::Dbt3, Padded("", 512) + Padded("first\x1A\x1Ajunk", 512) +
                                                  Padded("second\x1A", 512, 'x') + "third");
    EXPECT_EQ(Read(*memos, 1), "first");
    EXPECT_EQ(Read(*memos, 2), "second");
    EXPECT_EQ(Read(*memos, 3), "third");  // the file ends without a mark
    EXPECT_EQ(Read(*memos, 4), "unreadable");
    EXPECT_EQ(Read(*memos, 0xFFFFFFFF), "unreadable");
}

TEST_P(MemoFileTest, ReadsLongTextsOfDBase3) {
    const std::string text(100'000, 'a');
    const auto memos = Open(MemoFormat::Dbt3, Padded("", 512) + text + "\x1A\x1A");
    EXPECT_EQ(Read(*memos, 1), text);
}

std::string Dbt4(int blockSize, std::string_view blocks) {
    std::string header = Padded(Little(3, 4), 20) + Little(static_cast<unsigned>(blockSize), 2);
    return Padded(header, 512) + std::string(blocks);
}

std::string UsedBlock(std::uint32_t length, std::string_view text) {
    return Little(0x0008FFFF, 4) + Little(length, 4) + std::string(text);
}

TEST_P(MemoFileTest, CountsTheBlockHeaderOfDBase4IntoTheLength) {
    const auto memos = Open(MemoFormat::Dbt4, Dbt4(512, Padded(UsedBlock(13, "hello noise"), 512)));
    EXPECT_EQ(Read(*memos, 1), "hello");
}

TEST_P(MemoFileTest, UsesTheBlockSizeOfDBase4) {
    const auto memos = Open(MemoFormat::Dbt4, Dbt4(1024, Padded("", 512) + UsedBlock(10, "ab")));
    EXPECT_EQ(Read(*memos, 1), "ab");
    const auto zero = Open(MemoFormat::Dbt4, Dbt4(0, UsedBlock(10, "cd")));
    EXPECT_EQ(Read(*zero, 1), "cd");
}

TEST_P(MemoFileTest, RefusesBlocksOfDBase4ThatLie) {
    const auto memos = Open(MemoFormat::Dbt4, Dbt4(512, Padded(UsedBlock(0xFFFFFFFF, "x"), 512) +
                                                            Padded("free block", 512) + UsedBlock(3, "")));
    EXPECT_EQ(Read(*memos, 1), "unreadable");
    EXPECT_EQ(Read(*memos, 2), "unreadable");
    EXPECT_EQ(Read(*memos, 3), "");  // shorter than its own header
    EXPECT_EQ(Read(*memos, 4), "unreadable");
}

std::string Fpt(int blockSize, std::string_view blocks) {
    return Padded(Big(9, 4) + std::string("\x7F\x7F") + Big(static_cast<unsigned>(blockSize), 2), 512) +
           std::string(blocks);
}

std::string FptBlock(std::uint32_t kind, std::uint32_t length, std::string_view content) {
    return Big(kind, 4) + Big(length, 4) + std::string(content);
}

TEST_P(MemoFileTest, ReadsBlocksOfFoxPro) {
    const auto memos = Open(MemoFormat::Fpt, Fpt(64, Padded(FptBlock(1, 5, "hello"), 64) +
                                                         Padded(FptBlock(0, 3, std::string("a\0b", 3)), 64) +
                                                         FptBlock(2, 2, "ok")));
    EXPECT_EQ(Read(*memos, 8), "hello");
    EXPECT_EQ(Read(*memos, 9), std::string("a\0b", 3));
    EXPECT_EQ(Read(*memos, 10), "ok");
    EXPECT_EQ(Read(*memos, 11), "unreadable");
}

TEST_P(MemoFileTest, ReadsBlocksOfOneByte) {
    const auto memos = Open(MemoFormat::Fpt, Fpt(1, FptBlock(1, 2, "ab") + FptBlock(1, 1, "c")));
    EXPECT_EQ(Read(*memos, 512), "ab");
    EXPECT_EQ(Read(*memos, 522), "c");
}

TEST_P(MemoFileTest, RefusesBlocksOfFoxProThatLie) {
    const auto memos =
        Open(MemoFormat::Fpt, Fpt(64, Padded(FptBlock(1, 0xFFFFFFFF, "x"), 64) +
                                          Padded(FptBlock(3, 1, "x"), 64) + Padded(FptBlock(1, 57, ""), 64)));
    EXPECT_EQ(Read(*memos, 8), "unreadable");   // a length beyond the file
    EXPECT_EQ(Read(*memos, 9), "unreadable");   // no such kind
    EXPECT_EQ(Read(*memos, 10), "unreadable");  // one byte beyond the file
    EXPECT_EQ(Read(*memos, 1), "unreadable");   // inside the header
    EXPECT_EQ(Read(*memos, 0xFFFFFFFF), "unreadable");
}

TEST_P(MemoFileTest, DoesNotUseFilesWithoutAWholeHeader) {
    EXPECT_EQ(Open(MemoFormat::Fpt, ""), nullptr);
    EXPECT_EQ(Open(MemoFormat::Fpt, "1234567"), nullptr);
    EXPECT_EQ(Open(MemoFormat::Dbt4, "1234567"), nullptr);
    EXPECT_EQ(Open(MemoFormat::Fpt, Fpt(0, "")), nullptr);
    EXPECT_EQ(Open(MemoFormat::Smt, Padded("", 512)), nullptr);
    EXPECT_EQ(warnings_.size(), 5U);
    EXPECT_TRUE(Mentions(warnings_, "block size 0"));
}

TEST_P(MemoFileTest, SeesMemosThatAnotherProcessAppends) {
    const std::string start = Fpt(64, Padded(FptBlock(1, 1, "a"), 64));
    const auto memos = Open(MemoFormat::Fpt, start);
    EXPECT_EQ(Read(*memos, 9), "unreadable");
    Put(files_, "m", start + FptBlock(1, 3, "new"));
    EXPECT_EQ(Read(*memos, 9), "new");
    EXPECT_EQ(Read(*memos, 8), "a");
}

TEST(MemoBlock, ReadsBothFormsOfPointers) {
    const auto block = [](std::string_view bytes) {
        return MemoBlock(reinterpret_cast<const std::byte*>(bytes.data()),
                         static_cast<std::uint32_t>(bytes.size()));
    };
    EXPECT_EQ(block(Little(7, 4)), 7U);
    EXPECT_EQ(block(Little(0, 4)), 0U);
    EXPECT_EQ(block("         7"), 7U);
    EXPECT_EQ(block("7         "), 7U);
    EXPECT_EQ(block("0000000012"), 12U);
    EXPECT_EQ(block("          "), 0U);
    EXPECT_EQ(block(std::string_view("\0\0\0\0\0\0\0\0\0\0", 10)), 0U);
    EXPECT_EQ(block("       1 2"), std::nullopt);
    EXPECT_EQ(block("       -12"), std::nullopt);
    EXPECT_EQ(block("abc       "), std::nullopt);
    EXPECT_EQ(block("9999999999"), std::nullopt);  // more than 32 bits
    EXPECT_EQ(block("4294967295"), 4294967295U);
}

}  // namespace
}  // namespace zu::dbf
