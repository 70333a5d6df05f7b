// Records that a batch takes as they are stored in another table.
#include <gtest/gtest.h>

#include <numeric>

#include "host/technologies/RowCells.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbf/FieldContents.h"
#include "tests/unit/dbf/TableImage.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using Kind = FieldContents::Kind;

constexpr unsigned kPage = 1252;

/// A table of two fields whose records hold what `contents` makes; none for `contents` null.
TableImage Image(const Kind& kind, int records, FieldContents* contents) {
    TableImage image;
    image.Mark(0x03).Field("A", kind.type, kind.width, kind.decimals).Field("B", 'C', 3);
    for (int i = 0; i < records; ++i)
        image.Record(contents->Of(kind) + contents->Of({'C', 3, 0}));
    return image;
}

class StoredRows : public ::testing::Test {
protected:
    std::unique_ptr<DbfTable> Open(const TableImage& image, files::MemoryFiles& files) const {
        image.PutInto(files, "t.dbf");
        return DbfTable::Open(files, "t.dbf", settings_);
    }
    /// Copies the records of a table into two others, as they are stored and as their cells, as far as they
    /// can be copied as they are stored; answers how many could.
    int CopyTwice(DbfTable& source, const TableImage& target) {
        const auto plain = Open(target, plain_);
        const auto fast = Open(target, fast_);
        const auto cells = plain->BeginBatch();
        const auto stored = fast->BeginBatch();
        const auto form = source.StoredForm(places_, kPage);
        if (!form || !stored->MatchStored(*form, places_)) return -1;
        int copied = 0;
        for (std::uint32_t record = 1; record <= source.RecordCount(); ++record) {
            const char* place = nullptr;
            EXPECT_EQ(source.LocateRecords({&record, 1}, &place), 1U);
            if (stored->AddStored(place) == 0) continue;
            ++copied;
            technologies::RowCells row;
            row.Begin(kPage);
            EXPECT_TRUE(source.ReadRow(record, places_, row));
            EXPECT_NE(cells->AddRow({row.cells(), row.size()}, places_, kPage), 0U) << "record " << record;
        }
        stored->Finish();
        cells->Finish();
        return copied;
    }

    technologies::TechnologySettings settings_;
    files::MemoryFiles from_;
    files::MemoryFiles plain_;
    files::MemoryFiles fast_;
    const std::vector<std::size_t> places_{0, 1};
};

TEST_F(StoredRows, LeaveTheBytesThatCellsLeave) {
    constexpr int kRecords = 300;
    const std::vector<std::pair<Kind, Kind>> pairs = {
        {{'C', 10, 0}, {'C', 10, 0}}, {{'C', 60, 0}, {'C', 60, 0}}, {{'C', 30, 0}, {'C', 9, 0}},
        {{'C', 1, 0}, {'C', 20, 0}},  {{'N', 10, 0}, {'N', 10, 0}}, {{'N', 12, 2}, {'N', 12, 2}},
        {{'N', 9, 2}, {'N', 19, 2}},  {{'N', 12, 4}, {'N', 8, 4}},  {{'N', 3, 1}, {'N', 3, 1}},
        {{'N', 20, 0}, {'N', 9, 0}},  {{'D', 8, 0}, {'D', 8, 0}},   {{'L', 1, 0}, {'L', 1, 0}}};
    FieldContents contents;
    for (const auto& [from, to] : pairs) {
        const auto source = Open(Image(from, kRecords, &contents), from_);
        const int copied = CopyTwice(*source, Image(to, 0, nullptr));
        EXPECT_GT(copied, kRecords / 20) << from.type << from.width << " to " << to.width;
        EXPECT_TRUE(fast_.Get("t.dbf") == plain_.Get("t.dbf"))
            << from.type << from.width << " to " << to.width;
    }
}

TEST_F(StoredRows, AreNotTakenBetweenFieldsOfDifferentKinds) {
    const auto source = Open(Image({'N', 10, 2}, 0, nullptr), from_);
    EXPECT_EQ(CopyTwice(*source, Image({'N', 10, 2}, 0, nullptr)), 0);
    EXPECT_EQ(CopyTwice(*source, Image({'N', 10, 3}, 0, nullptr)), -1) << "other decimals";
    EXPECT_EQ(CopyTwice(*source, Image({'F', 10, 2}, 0, nullptr)), -1);
    EXPECT_EQ(CopyTwice(*source, Image({'C', 10, 0}, 0, nullptr)), -1);
    EXPECT_EQ(CopyTwice(*Open(Image({'N', 20, 9}, 0, nullptr), from_), Image({'N', 20, 9}, 0, nullptr)), -1)
        << "too many places to be found in the bytes";
}

TEST_F(StoredRows, AreRefusedOneByOne) {
    TableImage image;
    image.Mark(0x03).Field("A", 'N', 5, 1).Field("B", 'C', 3);
    image.Record("  1.5abc").Record("  .50abc").Record("*****abc").Record("     abc").Record(" -2.0xyz");
    const auto source = Open(image, from_);
    EXPECT_EQ(CopyTwice(*source, Image({'N', 5, 1}, 0, nullptr)), 2);
    const auto copy = Open(Image({'N', 5, 1}, 0, nullptr), from_);
    EXPECT_TRUE(fast_.Get("t.dbf") == plain_.Get("t.dbf"));
    const auto table = DbfTable::Open(fast_, "t.dbf", settings_);
    ASSERT_EQ(table->RecordCount(), 2U);
    EXPECT_EQ(Shown(*table, 1, 0), "1.5");
    EXPECT_EQ(Shown(*table, 2, 0), "-2");
    EXPECT_EQ(Shown(*table, 2, 1), "xyz");
}

TEST_F(StoredRows, FindTheirFieldsAtOtherPlaces) {
    TableImage image;
    image.Mark(0x03).Field("A", 'N', 5).Field("B", 'C', 3).Record("   42abc");
    const auto source = Open(image, from_);
    TableImage other;
    other.Mark(0x03).Field("X", 'C', 2).Field("B", 'C', 4).Field("A", 'N', 6);
    const auto target = Open(other, fast_);
    const auto batch = target->BeginBatch();
    const std::vector<std::size_t> places{2, 1};
    ASSERT_TRUE(batch->MatchStored(*source->StoredForm(places_, kPage), places));
    const std::uint32_t first = 1;
    const char* place = nullptr;
    ASSERT_EQ(source->LocateRecords({&first, 1}, &place), 1U);
    EXPECT_EQ(batch->AddStored(place), 1U);
    batch->Finish();
    EXPECT_EQ(ShownRecord(*target, 1), "|abc|42");
}

TEST_F(StoredRows, AreNotLocatedInATableWhoseOwnBatchIsOpen) {
    FieldContents contents;
    const auto source = Open(Image({'C', 3, 0}, 2, &contents), from_);
    const auto batch = source->BeginBatch();
    const std::uint32_t first = 1;
    const char* place = nullptr;
    EXPECT_EQ(source->LocateRecords({&first, 1}, &place), 0U) << "the file may be mapped anew meanwhile";
}

}  // namespace
}  // namespace zu::dbf::test
