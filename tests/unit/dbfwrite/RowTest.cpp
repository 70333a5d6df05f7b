// Records that a batch takes as rows of cells.
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "portable/calendar/Calendar.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using technologies::Value;
using textio::Cell;

constexpr unsigned kPage = 1252;
constexpr std::size_t kPlaces[] = {0, 1, 2, 3, 4, 5, 6, 7};

enum Column : std::size_t { kNumber, kText, kWhole, kReal, kFloat, kMoment, kTruth, kMemo };

void MakeWideTable(files::FileSystem& files) {
    const std::vector<FieldDefinition> fields{{"NUM", 'N', 9, 2, false},   {"TXT", 'C', 12, 0, true},
                                              {"WHOLE", 'I', 4, 0, false}, {"REAL", 'B', 8, 2, false},
                                              {"FLO", 'F', 12, 3, false},  {"MOMENT", 'T', 8, 0, true},
                                              {"TRUTH", 'L', 1, 0, false}, {"MEMO", 'M', 4, 0, false}};
    TableWriter writer(files, kTablePath, Format::VisualFoxPro, 0x03, fields, {2024, 1, 31});
    writer.Close({{"NUM", "NUM", "", false, false, false}, {"TXT", "UPPER(TXT)", "", false, false, false}});
}

class Rows : public ::testing::Test {
protected:
    Rows() {
        MakeWideTable(memory);
        table = OpenTable(memory);
        batch = table->BeginBatch();
    }
    std::uint32_t Add(const std::vector<Cell>& cells, unsigned codePage = kPage) {
        return batch->AddRow(cells, {kPlaces, std::size(kPlaces)}, codePage);
    }
    /// Whether the column takes the cell when the others before it stay blank.
    bool Takes(std::size_t column, const Cell& cell, unsigned codePage = kPage) {
        const std::size_t place = column;
        return batch->AddRow({&cell, 1}, {&place, 1}, codePage) != 0;
    }
    std::string Last(std::size_t column) { return Shown(*table, table->RecordCount(), column); }

    files::MemoryFiles memory;
    std::unique_ptr<DbfTable> table;
    std::unique_ptr<technologies::Batch> batch;
};

TEST_F(Rows, AreNumberedAndReadBack) {
    const std::string note(700, 'n');
    EXPECT_EQ(
        Add({Cell::OfDecimal(-1250, 2), Cell::OfBytes("caf\xE9  "), Cell::OfInteger(-7), Cell::OfNumber(0.1),
             Cell::OfNumber(2.0005), Cell::OfDate(calendar::ToJulianDay({2024, 2, 29}), 3'661'000),
             Cell::OfBoolean(true), Cell::OfBytes(note)}),
        1U);
    EXPECT_EQ(Add({Cell::OfInteger(3), Cell::OfCharacters(u"\u20AC")}), 2U);
    ASSERT_EQ(table->RecordCount(), 2U);
    EXPECT_EQ(Shown(*table, 1, kNumber), "-12.5");
    EXPECT_EQ(Shown(*table, 1, kText), "caf\u00E9");
    EXPECT_EQ(Shown(*table, 1, kWhole), "-7");
    EXPECT_EQ(Shown(*table, 1, kReal), "0.1");
    EXPECT_EQ(Shown(*table, 1, kMoment), "2024-02-29 01:01:01");
    EXPECT_EQ(Shown(*table, 1, kTruth), "True");
    EXPECT_EQ(Shown(*table, 1, kMemo), note);
    EXPECT_EQ(Shown(*table, 2, kText), "\u20AC");
    EXPECT_EQ(Shown(*table, 2, kMemo), "");
    EXPECT_FALSE(table->IsDeleted(1));
}

TEST_F(Rows, RoundDecimalsHalfAwayFromZero) {
    for (const auto& [units, scale, shown] :
         {std::tuple{1005, 3, "1.01"}, {-1005, 3, "-1.01"}, {1004, 3, "1"}, {49, 4, "0"}, {50, 4, "0.01"}}) {
        ASSERT_TRUE(Takes(kNumber, Cell::OfDecimal(units, static_cast<std::uint8_t>(scale))));
        EXPECT_EQ(Last(kNumber), shown) << units;
    }
}

TEST_F(Rows, TakeNumbersUpToTheWidthOfTheField) {
    EXPECT_TRUE(Takes(kNumber, Cell::OfDecimal(999'999'99, 2)));
    EXPECT_FALSE(Takes(kNumber, Cell::OfDecimal(1'000'000'00, 2)));
    EXPECT_TRUE(Takes(kNumber, Cell::OfDecimal(-99'999'99, 2)));
    EXPECT_FALSE(Takes(kNumber, Cell::OfDecimal(-100'000'00, 2)));
    EXPECT_FALSE(Takes(kNumber, Cell::OfDecimal(999'999'995, 3))) << "rounded up it is too wide";
    EXPECT_FALSE(Takes(kNumber, Cell::OfInteger(INT64_MAX)));
    EXPECT_FALSE(Takes(kNumber, Cell::OfInteger(INT64_MIN + 1)));
    EXPECT_FALSE(Takes(kWhole, Cell::OfInteger(2'147'483'648)));
}

TEST_F(Rows, TakeDigitsAsTheyTakeTheNumber) {
    const std::string_view numbers[] = {"0",
                                        "7",
                                        "-7",
                                        "0.5",
                                        "-0.5",
                                        "12.50",
                                        "12.345",
                                        "12.344",
                                        "-12.345",
                                        "999999",
                                        "999999.99",
                                        "999999.995",
                                        "-99999.99",
                                        "-99999.995",
                                        "1000000",
                                        "-100000",
                                        "0.001",
                                        "-0.001",
                                        "123456789012345",
                                        "0.00000000000001"};
    for (const int decimals : {0, 2, 5}) {
        for (const std::string_view text : numbers) {
            const auto point = text.find('.');
            const auto scale =
                static_cast<std::uint8_t>(point == std::string_view::npos ? 0 : text.size() - point - 1);
            std::string units(text);
            std::erase(units, '.');
            std::vector<std::byte> left[2];
            std::uint32_t taken[2];
            for (const std::size_t way : {0U, 1U}) {
                files::MemoryFiles files;
                TableWriter(files, kTablePath, Format::FoxPro2, 0x03, {{"N", 'N', 9, decimals, false}},
                            {2024, 1, 31})
                    .Close({});
                const auto numbered = OpenTable(files);
                const auto gathered = numbered->BeginBatch();
                const Cell cell =
                    way == 0 ? Cell::OfDecimal(std::stoll(units), scale) : Cell::OfDigits(text, scale);
                taken[way] = gathered->AddRow({&cell, 1}, {kPlaces, 1}, kPage);
                gathered->Finish();
                left[way] = files.Get(kTablePath);
            }
            EXPECT_EQ(taken[0], taken[1]) << text << " with " << decimals << " decimals";
            EXPECT_TRUE(left[0] == left[1]) << text << " with " << decimals << " decimals";
        }
    }
}

TEST_F(Rows, AreLeftToEditsWhereACellNeedsACloserLook) {
    EXPECT_FALSE(Takes(kText, Cell::OfBytes("thirteen long")));
    EXPECT_TRUE(Takes(kText, Cell::OfBytes("twelve chars   "))) << "blanks at the end do not count";
    EXPECT_FALSE(Takes(kText, Cell::OfBytes("x"), 850)) << "bytes of another code page";
    EXPECT_FALSE(Takes(kText, Cell::OfCharacters(u"\u0416"))) << "a character that the page lacks";
    EXPECT_FALSE(Takes(kMemo, Cell::OfCharacters(u"\u0416")));
    EXPECT_FALSE(Takes(kMemo, Cell()));
    EXPECT_FALSE(Takes(kText, Cell::OfInteger(1)));
    EXPECT_FALSE(Takes(kNumber, Cell::OfBytes("1")));
    EXPECT_FALSE(Takes(kNumber, Cell::OfNumber(1)));
    EXPECT_FALSE(Takes(kReal, Cell::OfDecimal(1, 0)));
    EXPECT_FALSE(Takes(kMoment, Cell::OfInteger(1)));
    EXPECT_FALSE(Takes(kTruth, Cell::OfInteger(1)));
    const std::size_t none = 99;
    const Cell cell = Cell::OfInteger(1);
    EXPECT_EQ(batch->AddRow({&cell, 1}, {&none, 1}, kPage), 0U);
    batch->Finish();
    EXPECT_EQ(table->RecordCount(), 1U);
}

TEST_F(Rows, KeepNullApartFromBlank) {
    ASSERT_TRUE(Takes(kText, Cell()));
    EXPECT_EQ(Last(kText), "(null)");
    ASSERT_TRUE(Takes(kNumber, Cell::OfInteger(1)));
    EXPECT_EQ(Last(kText), "");
}

TEST_F(Rows, AreRefusedByTablesThatDrawNumbers) {
    files::MemoryFiles drawing;
    TableWriter writer(drawing, kTablePath, Format::VisualFoxPro, 0x03,
                       {{"ID", 'I', 4, 0, false}, {"NAME", 'C', 10, 0, false}}, {2024, 1, 31});
    writer.Close({});
    std::vector<std::byte> bytes = drawing.Get(kTablePath);
    bytes.at(32 + 18) = std::byte{0x0C};  // the first field counts by itself
    bytes.at(32 + 19) = std::byte{1};
    bytes.at(32 + 23) = std::byte{1};
    drawing.Put(kTablePath, bytes);
    const auto counting = OpenTable(drawing);
    const auto gathered = counting->BeginBatch();
    const Cell cell = Cell::OfBytes("x");
    const std::size_t name = 1;
    EXPECT_EQ(gathered->AddRow({&cell, 1}, {&name, 1}, kPage), 0U);
}

// The same value as a cell and as what an edit takes.
struct Both {
    Cell cell;
    Value value;
};

class Values {
public:
    explicit Values(unsigned seed) : random_(seed) {}

    Both Any(std::size_t field) {
        if (Below(8) == 0 && field != kNote) return {};
        switch (field) {
            case kId:
                return {Cell::OfInteger(Below(99'999)), Integer(last_)};
            case kAmount: {
                const auto scale = static_cast<std::uint8_t>(Below(5));
                const bool negative = Below(2) == 0;
                const std::int64_t units = Below(99'999'999);
                return {Cell::OfDecimal(negative ? -units : units, scale),
                        DecimalValue(static_cast<std::uint64_t>(units), scale, negative)};
            }
            case kBorn: {
                const int day = 1 + static_cast<int>(Below(28));
                return {Cell::OfDate(calendar::ToJulianDay({2024, 2, day})), Day(2024, 2, day)};
            }
            case kPaid: {
                const bool truth = Below(2) == 0;
                return {Cell::OfBoolean(truth), Truth(truth)};
            }
            default:
                break;
        }
        std::u16string& text = texts_.emplace_back();
        for (auto length = Below(field == kNote ? 900 : 6); length > 0; --length)
            text += static_cast<char16_t>(Below(4) == 0 ? u'\u00E0' + Below(20) : u'a' + Below(26));
        std::string& bytes = bytes_.emplace_back();
        for (const char16_t c : text)
            bytes += static_cast<char>(c);
        return {Below(2) == 0 ? Cell::OfCharacters(text) : Cell::OfBytes(bytes), Text(text)};
    }

private:
    std::uint32_t Below(std::uint32_t limit) { return last_ = static_cast<std::uint32_t>(random_() % limit); }

    std::mt19937 random_;
    std::uint32_t last_ = 0;
    std::deque<std::u16string> texts_;
    std::deque<std::string> bytes_;
};

class EqualRows : public ::testing::TestWithParam<Format> {};

TEST_P(EqualRows, LeaveTheBytesThatEditsLeave) {
    constexpr std::size_t kFields = kCode + 1;
    files::MemoryFiles asRows;
    files::MemoryFiles asEdits;
    Values values(7);
    int added = 0;
    {
        MakeTable(asRows, GetParam());
        MakeTable(asEdits, GetParam());
        const auto first = OpenTable(asRows);
        const auto second = OpenTable(asEdits);
        const auto firstBatch = first->BeginBatch();
        const auto secondBatch = second->BeginBatch();
        for (int i = 0; i < 600; ++i) {
            std::vector<Cell> cells;
            const auto put = [&](technologies::Table& table, const std::vector<Both>& row) {
                const auto edit = table.NewRecord();
                for (std::size_t field = 0; field < row.size(); ++field)
                    edit->Set(field, row[field].value);
                ASSERT_TRUE(edit->Save());
            };
            std::vector<Both> row;
            for (std::size_t field = 0; field < kFields - (i % 3 == 0 ? 2 : 0); ++field) {
                row.push_back(values.Any(field));
                cells.push_back(row.back().cell);
            }
            put(*second, row);
            if (firstBatch->AddRow(cells, {kPlaces, kFields}, kPage) != 0)
                ++added;
            else
                put(*first, row);
        }
        firstBatch->Finish();
        secondBatch->Finish();
    }
    EXPECT_GT(added, 500);
    EXPECT_TRUE(asRows.Get(kTablePath) == asEdits.Get(kTablePath));
    EXPECT_TRUE(asRows.Get("people.cdx") == asEdits.Get("people.cdx"));
    const char* const memo = GetParam() == Format::DBase3 ? "people.dbt" : "people.fpt";
    EXPECT_TRUE(asRows.Get(memo) == asEdits.Get(memo));
    const auto report = maintenance::CheckTable(asRows, kTablePath, {}, nullptr);
    EXPECT_TRUE(report.findings.empty()) << report.findings.front();
}

INSTANTIATE_TEST_SUITE_P(Formats, EqualRows,
                         ::testing::Values(Format::DBase3, Format::FoxPro2, Format::VisualFoxPro),
                         [](const auto& instance) {
                             return instance.param == Format::DBase3    ? "DBase3"
                                    : instance.param == Format::FoxPro2 ? "FoxPro2"
                                                                        : "VisualFoxPro";
                         });

}  // namespace
}  // namespace zu::dbf::test
