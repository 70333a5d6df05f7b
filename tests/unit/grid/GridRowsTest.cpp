#include "portable/grid/GridRows.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace zu::grid {
namespace {

LoadedRow Texts(std::initializer_list<std::u16string_view> texts) {
    LoadedRow row;
    for (const auto& text : texts)
        row.Append(text);
    return row;
}

TEST(GridRows, AnEmptyViewHasOnlyHeaderRows) {
    GridRows rows;
    rows.Reset(0);
    EXPECT_EQ(rows.count(), 2);
    EXPECT_FALSE(rows.IsDataRow(2));
    EXPECT_FALSE(rows.IsDataRow(1));
}

TEST(GridRows, EveryRowCarriesItsNumberLessTheHeaders) {
    GridRows rows;
    rows.Reset(2'000'000'000);
    EXPECT_EQ(rows.RowData(0), -2);
    EXPECT_EQ(rows.RowData(2), 0);
    EXPECT_EQ(rows.RowData(2'000'000'001), 1'999'999'999);
    EXPECT_EQ(rows.loadedCount(), 0u);
}

TEST(GridRows, ARowIsLoadedUntilItsMarkIsCleared) {
    GridRows rows;
    rows.Reset(5);
    EXPECT_EQ(rows.Loaded(3), nullptr);
    rows.Load(3, Texts({u"a", u"", u"bc"}));
    ASSERT_NE(rows.Loaded(3), nullptr);
    EXPECT_EQ(rows.Loaded(3)->Text(2), u"bc");
    rows.ClearMark(3);
    EXPECT_EQ(rows.Loaded(3), nullptr);
}

TEST(GridRows, RemovingARowMovesTheFollowingRecordsUp) {
    GridRows rows;
    rows.Reset(5);
    for (Row row = 2; row < 7; ++row)
        rows.Load(row, Texts({u"x"}));
    rows.Remove(4);
    EXPECT_EQ(rows.count(), 6);
    for (Row row = 2; row < 6; ++row)
        EXPECT_EQ(rows.RowData(row), row - 2);
    EXPECT_NE(rows.Loaded(3), nullptr);
    EXPECT_EQ(rows.Loaded(4), nullptr);
    EXPECT_EQ(rows.Loaded(5), nullptr);
}

TEST(GridRows, RemovingFromAHugeGridTouchesOnlyWhatWasLoaded) {
    GridRows rows;
    rows.Reset(2'000'000'000);
    rows.Load(5, Texts({u"x"}));
    rows.Remove(4);
    EXPECT_EQ(rows.count(), 2'000'000'001);
    EXPECT_EQ(rows.RowData(2'000'000'000), 1'999'999'998);
    EXPECT_EQ(rows.loadedCount(), 0u);
}

TEST(GridRows, HeaderRowsCannotBeRemoved) {
    GridRows rows;
    rows.Reset(1);
    rows.Remove(1);
    rows.Remove(3);
    EXPECT_EQ(rows.count(), 3);
    rows.RemoveLast();
    rows.RemoveLast();
    EXPECT_EQ(rows.count(), 2);
}

TEST(GridRows, AnAppendedRowCarriesTheIndexThatItWasGiven) {
    GridRows rows;
    rows.Reset(3);
    EXPECT_EQ(rows.Append(3), 5);
    EXPECT_EQ(rows.RowData(5), 3);
    rows.RemoveLast();
    EXPECT_EQ(rows.Append(9), 5);
    EXPECT_EQ(rows.RowData(5), 9);
    rows.RemoveLast();
    rows.Append(3);
    EXPECT_EQ(rows.RowData(5), 3);
}

/// The rule as it is stated, row by row.
class PlainRows {
public:
    explicit PlainRows(std::vector<Row> data) : data_(std::move(data)) {}
    void Remove(std::size_t at) {
        const Row removed = data_[at];
        std::vector<Row> result;
        for (std::size_t target = 0; target + 1 < data_.size(); ++target) {
            const Row source = data_[target < at ? target : target + 1];
            result.push_back(source > removed ? source - 1 : source);
        }
        data_ = result;
    }
    const std::vector<Row>& data() const { return data_; }

private:
    std::vector<Row> data_;
};

TEST(GridRows, RemovingFollowsTheRuleForAnyRowData) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        GridRows rows;
        const Row count = 3 + static_cast<Row>(random() % 8);
        rows.Reset(count);
        std::vector<Row> data;
        for (Row row = 2; row < 2 + count; ++row) {
            if (random() % 3 == 0) rows.SetRowData(row, static_cast<Row>(random() % 12));
            data.push_back(rows.RowData(row));
        }
        PlainRows plain(data);
        while (rows.count() > 3) {
            const std::size_t at = random() % static_cast<std::size_t>(rows.count() - 2);
            rows.Remove(static_cast<Row>(at) + 2);
            plain.Remove(at);
            ASSERT_EQ(rows.count() - 2, static_cast<Row>(plain.data().size()));
            for (std::size_t i = 0; i < plain.data().size(); ++i)
                ASSERT_EQ(rows.RowData(static_cast<Row>(i) + 2), plain.data()[i]) << "round " << round;
        }
    }
}

TEST(LoadedRow, HoldsTextsOfAnyLengthSideBySide) {
    LoadedRow row = Texts({u"one", u"", u"three"});
    EXPECT_EQ(row.size(), 3u);
    EXPECT_EQ(row.Text(0), u"one");
    EXPECT_EQ(row.Text(1), u"");
    EXPECT_EQ(row.Text(2), u"three");
    EXPECT_EQ(row.Text(9), u"");
}

TEST(LoadedRow, ReplacingATextLeavesTheOthers) {
    LoadedRow row = Texts({u"one", u"two", u"three"});
    row.Replace(1, u"something longer");
    row.Replace(0, u"");
    EXPECT_EQ(row.Text(0), u"");
    EXPECT_EQ(row.Text(1), u"something longer");
    EXPECT_EQ(row.Text(2), u"three");
    row.Replace(2, u"3");
    EXPECT_EQ(row.Text(2), u"3");
    EXPECT_EQ(row.Text(1), u"something longer");
}

TEST(LoadedRow, ReplacingBeyondTheEndAddsEmptyTexts) {
    LoadedRow row;
    row.Replace(2, u"c");
    EXPECT_EQ(row.size(), 3u);
    EXPECT_EQ(row.Text(0), u"");
    EXPECT_EQ(row.Text(2), u"c");
}

}  // namespace
}  // namespace zu::grid
