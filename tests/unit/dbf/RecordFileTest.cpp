#include "host/technologies/dbf/RecordFile.h"

#include <gtest/gtest.h>

#include "tests/unit/dbf/ErrorExpectation.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

class RecordFileTest : public testing::TestWithParam<bool> {
protected:
    RecordFileTest() { files_.AllowMapping(GetParam()); }

    RecordFile Open(const TableImage& image) {
        image.PutInto(files_, "t.dbf");
        auto file = files_.Open("t.dbf", {});
        const DbfHeader header = DbfHeader::Read(*file);
        return RecordFile(std::move(file), header);
    }
    static std::string Text(const std::byte* record, std::size_t length) {
        return record ? std::string(reinterpret_cast<const char*>(record), length) : "(null)";
    }

    files::MemoryFiles files_;
};

INSTANTIATE_TEST_SUITE_P(Access, RecordFileTest, testing::Bool(),
                         [](const auto& mapped) { return mapped.param ? "Mapped" : "Read"; });

TableImage Numbered(int count) {
    TableImage image;
    image.Field("A", 'C', 4);
    for (int i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        image.Record(number + std::string(4 - number.size(), '.'));
    }
    return image;
}

TEST_P(RecordFileTest, HandsOutRecordsByNumber) {
    RecordFile records = Open(Numbered(3));
    EXPECT_EQ(records.Count(), 3U);
    EXPECT_EQ(Text(records.Record(1), 5), " 1...");
    EXPECT_EQ(Text(records.Record(3), 5), " 3...");
    EXPECT_EQ(records.Record(0), nullptr);
    EXPECT_EQ(records.Record(4), nullptr);
    EXPECT_EQ(records.Record(0xFFFFFFFF), nullptr);
}

TEST_P(RecordFileTest, CountsWholeRecordsWhenTheFileWasCut) {
    TableImage image = Numbered(3);
    image.StatedCount(10).Tail("");
    EXPECT_EQ(Open(image).Count(), 3U);
    image.Tail(" 4.");  // a part of a record
    RecordFile records = Open(image);
    EXPECT_EQ(records.Count(), 3U);
    EXPECT_EQ(records.statedCount(), 10U);
}

TEST_P(RecordFileTest, CountsRecordsBehindTheStatedNumberWhileTheyLookLikeRecords) {
    EXPECT_EQ(Open(Numbered(3).StatedCount(1)).Count(), 3U);
    TableImage deleted = Numbered(2);
    deleted.Record("xxxx", '*').StatedCount(1);
    EXPECT_EQ(Open(deleted).Count(), 3U);
    TableImage junk = Numbered(2);
    junk.Record("xxxx", '\x1A').Record("yyyy").StatedCount(1);
    EXPECT_EQ(Open(junk).Count(), 2U);
}

TEST_P(RecordFileTest, IsNotStoppedByAnEndMarkInsideTheStatedNumber) {
    TableImage image = Numbered(1);
    image.Record("2...", '\x1A').Record("3...");
    EXPECT_EQ(Open(image).Count(), 3U);
}

TEST_P(RecordFileTest, HasNoRecordsInATableWithoutAny) {
    RecordFile records = Open(Numbered(0));
    EXPECT_EQ(records.Count(), 0U);
    EXPECT_EQ(records.Record(1), nullptr);
}

TEST_P(RecordFileTest, NoticesThatAnotherProcessAppended) {
    RecordFile records = Open(Numbered(2));
    EXPECT_FALSE(records.NoticeGrowth());
    Numbered(5).PutInto(files_, "t.dbf");
    EXPECT_EQ(records.Count(), 2U);
    EXPECT_TRUE(records.NoticeGrowth());
    EXPECT_EQ(records.Count(), 5U);
    EXPECT_EQ(Text(records.Record(5), 5), " 5...");
}

TEST_P(RecordFileTest, NoticesThatAnotherProcessCutTheTable) {
    RecordFile records = Open(Numbered(5));
    Numbered(2).PutInto(files_, "t.dbf");
    EXPECT_TRUE(records.Refresh());
    EXPECT_EQ(records.Count(), 2U);
    EXPECT_EQ(records.Record(3), nullptr);
}

TEST_P(RecordFileTest, SeesAnEmptiedTableWhoseFileKeptItsLength) {
    RecordFile records = Open(Numbered(5));
    TableImage emptied = Numbered(5);
    emptied.StatedCount(0).Byte(emptied.headerLength(), 0x1A);
    emptied.PutInto(files_, "t.dbf");
    records.Refresh();
    if (!GetParam()) {
        EXPECT_EQ(records.Count(), 0U);  // mappings of files in memory do not follow
    }
}

TEST_P(RecordFileTest, HandsOutRunsThatCoverAllRecords) {
    TableImage image;
    image.Field("A", 'C', 250);
    for (int i = 0; i < 10'000; ++i)
        image.Record(std::string(250, static_cast<char>('a' + i % 26)));
    RecordFile records = Open(image);
    std::uint32_t next = 1;
    int runs = 0;
    while (next <= records.Count()) {
        const expression::RecordRun run = records.Run(next, records.Count() - next + 1);
        ASSERT_GE(run.count, 1U);
        EXPECT_EQ(run.firstNumber, next);
        EXPECT_EQ(run.stride, 251U);
        for (std::size_t i = 0; i < run.count; ++i) {
            ASSERT_EQ(static_cast<char>(run.first[i * run.stride + 250]),
                      static_cast<char>('a' + (next - 1 + i) % 26));
        }
        next += static_cast<std::uint32_t>(run.count);
        ++runs;
    }
    EXPECT_EQ(next, 10'001U);
    EXPECT_EQ(runs, GetParam() ? 1 : 3);  // blocks of about a megabyte
    EXPECT_EQ(records.Run(5, 2).count, 2U);
}

TEST(RecordFile, ReadsBlocksAndNotRecords) {
    files::MemoryFiles files;
    files.AllowMapping(false);
    TableImage image;
    image.Field("A", 'C', 99);
    for (int i = 0; i < 50'000; ++i)
        image.Record(std::string(99, 'x'));
    image.PutInto(files, "t.dbf");
    auto file = files.Open("t.dbf", {});
    const DbfHeader header = DbfHeader::Read(*file);
    RecordFile records(std::move(file), header);
    const std::size_t before = files.reads();
    for (std::uint32_t number = 1; number <= records.Count(); ++number)
        ASSERT_NE(records.Record(number), nullptr);
    EXPECT_LE(files.reads() - before, 5U);  // 5 MB in blocks of one
}

TEST(RecordFile, ReportsAFileThatBecameShorterWhileItIsRead) {
    files::MemoryFiles files;
    files.AllowMapping(false);
    Numbered(3).PutInto(files, "t.dbf");
    auto file = files.Open("t.dbf", {});
    const DbfHeader header = DbfHeader::Read(*file);
    RecordFile records(std::move(file), header);
    Put(files, "t.dbf", Numbered(3).Bytes().substr(0, 70));
    ExpectError(ErrorKind::Damaged, {"t.dbf", "shorter"}, [&] { records.Record(1); });
}

}  // namespace
}  // namespace zu::dbf
