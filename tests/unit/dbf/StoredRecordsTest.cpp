// Lines written straight from stored records are those that are written from the records' values.
#include <gtest/gtest.h>

#include <optional>

#include "host/technologies/RowCells.h"
#include "host/technologies/dbf/DbfTable.h"
#include "portable/textio/FieldRenderer.h"
#include "portable/textio/StoredRenderer.h"
#include "tests/unit/dbf/FieldContents.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

using textio::ExportFormat;
using textio::StoredRenderer;
using Kind = FieldContents::Kind;

/// Every width at which fields are looked at in another way.
const std::vector<Kind> kKinds = {
    {'C', 1, 0},  {'C', 2, 0},  {'C', 7, 0},  {'C', 8, 0},  {'C', 9, 0},  {'C', 17, 0}, {'C', 60, 0},
    {'N', 1, 0},  {'N', 3, 0},  {'N', 3, 1},  {'N', 4, 2},  {'N', 6, 0},  {'N', 7, 5},  {'N', 8, 0},
    {'N', 8, 3},  {'N', 9, 7},  {'N', 10, 0}, {'N', 12, 2}, {'N', 15, 4}, {'N', 16, 0}, {'N', 16, 7},
    {'N', 17, 2}, {'N', 20, 0}, {'N', 20, 5}, {'D', 8, 0},  {'L', 1, 0}};

std::vector<ExportFormat> Formats() {
    std::vector<ExportFormat> formats;
    for (const int preset : {textio::kDelimited, textio::kFixed}) {
        ExportFormat format;
        format.ApplyPreset(preset);
        formats.push_back(format);
        ExportFormat words = format;
        words.plainOptions().trueValue = u"yes";
        words.plainOptions().falseValue = u"";
        words.plainOptions().separator = u" | ";
        formats.push_back(words);
        ExportFormat bare = format;
        bare.plainOptions().stringsQuoted = false;
        bare.plainOptions().stringsPadded = false;
        formats.push_back(bare);
        ExportFormat quoted = format;
        quoted.plainOptions().stringsPadded = false;
        quoted.plainOptions().stringsQuoted = true;
        quoted.SetQuote(u"a");
        formats.push_back(quoted);
    }
    return formats;
}

std::vector<textio::ExportField> Describe(const DbfTable& table) {
    std::vector<textio::ExportField> fields;
    for (const auto& field : table.fields())
        fields.push_back({field.name, static_cast<int>(field.type), field.size, field.decimals});
    return fields;
}

class StoredRecordsTest : public testing::Test {
protected:
    static constexpr unsigned kPage = 1252;

    std::unique_ptr<DbfTable> Open(const TableImage& image) {
        image.PutInto(files_, "t.dbf");
        auto table = DbfTable::Open(files_, "t.dbf", settings_);
        all_.clear();
        for (std::size_t i = 0; i < table->fields().size(); ++i)
            all_.push_back(i);
        return table;
    }
    /// The line by the record's values; nothing when one of them cannot be written.
    std::optional<std::string> ByValues(DbfTable& table, std::uint32_t record, const ExportFormat& format) {
        technologies::RowCells cells;
        cells.Begin(kPage);
        EXPECT_TRUE(table.ReadRow(record, all_, cells));
        textio::FieldRenderer<char> renderer(format, Describe(table), western_);
        textio::TextBuffer<char> line;
        try {
            renderer.RenderLine(cells.cells(), line);
        } catch (const Error&) {
            return std::nullopt;
        }
        return std::string(line.view());
    }
    std::optional<std::string> Straight(DbfTable& table, std::uint32_t record,
                                        const StoredRenderer& renderer) {
        const char* place = nullptr;
        EXPECT_EQ(table.LocateRecords({&record, 1}, &place), 1U);
        textio::TextBuffer<char> line;
        line.Append("before");
        if (!renderer.RenderLine(place, line)) {
            EXPECT_EQ(line.view(), "before");
            return std::nullopt;
        }
        return std::string(line.view().substr(6));
    }
    std::optional<StoredRenderer> Renderer(DbfTable& table, const ExportFormat& format) {
        const auto stored = table.StoredForm(all_, kPage);
        if (!stored) return std::nullopt;
        return StoredRenderer::Make(format, Describe(table), *stored, western_);
    }

    files::MemoryFiles files_;
    technologies::TechnologySettings settings_;
    std::vector<std::size_t> all_;
    const textio::Encoding western_{*text::CodePage::Find(kPage)};
};

TEST_F(StoredRecordsTest, GiveTheLinesThatTheirValuesGive) {
    constexpr std::uint32_t kRecords = 400;
    FieldContents contents;
    for (const bool blankIsNull : {false, true}) {
        settings_.blankNumbersAreNull = blankIsNull;
        for (const Kind& kind : kKinds) {
            TableImage image;
            image.Mark(0x03).Field("A", kind.type, kind.width, kind.decimals).Field("B", 'C', 1);
            for (std::uint32_t i = 0; i < kRecords; ++i)
                image.Record(contents.Of(kind) + "b");
            const auto table = Open(image);
            for (const ExportFormat& format : Formats()) {
                const auto renderer = Renderer(*table, format);
                if (!renderer) continue;
                std::size_t straight = 0;
                for (std::uint32_t record = 1; record <= kRecords; ++record) {
                    const auto line = Straight(*table, record, *renderer);
                    if (!line) continue;
                    ++straight;
                    ASSERT_EQ(line, ByValues(*table, record, format))
                        << kind.type << kind.width << "." << kind.decimals << " record " << record;
                }
                EXPECT_GT(straight, kRecords / 20) << kind.type << kind.width << "." << kind.decimals;
            }
        }
    }
}

TEST_F(StoredRecordsTest, AreWrittenStraightUnderThePresets) {
    TableImage image;
    image.Mark(0x03).Field("C", 'C', 10).Field("N", 'N', 10, 2).Field("D", 'D', 8).Field("L", 'L', 1);
    image.Record(
        "say \"so\"  "
        "    -12.50"
        "20240229"
        "T");
    image.Record(
        "          "
        "      0.00"
        "        "
        " ");
    const auto table = Open(image);
    ExportFormat format;
    format.ApplyPreset(textio::kDelimited);
    auto renderer = Renderer(*table, format);
    ASSERT_TRUE(renderer);
    EXPECT_EQ(Straight(*table, 1, *renderer), "\"say \"\"so\"\"\",-12.5,20240229,T\r\n");
    EXPECT_EQ(Straight(*table, 2, *renderer), "\"\",0,,F\r\n");
    format.ApplyPreset(textio::kFixed);
    renderer = Renderer(*table, format);
    ASSERT_TRUE(renderer);
    EXPECT_EQ(Straight(*table, 1, *renderer), "say \"so\"      -12.5020240229T\r\n");
    EXPECT_EQ(Straight(*table, 2, *renderer), "                0.00        F\r\n");
}

TEST_F(StoredRecordsTest, LeaveFormatsThatWantAnotherFormToTheirValues) {
    TableImage image;
    image.Mark(0x03).Field("C", 'C', 10).Field("N", 'N', 10, 2).Field("D", 'D', 8);
    const auto table = Open(image);
    const auto refuses = [&](int preset, const auto& change) {
        ExportFormat format;
        format.ApplyPreset(preset);
        change(format);
        return !Renderer(*table, format);
    };
    using F = ExportFormat;
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().omitDecimalPoint = true; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().numbersQuoted = true; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().positiveSymbol = u"+"; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().negativeSymbol = u"minus"; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().signPosition = 1; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().signPosition = 2; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.plainOptions().stringsPadded = true; }));
    EXPECT_TRUE(refuses(textio::kDelimited, [](F& f) { f.SetDateMask(u"dd.mm.yyyy"); }));
    EXPECT_TRUE(refuses(textio::kFixed, [](F& f) { f.SetStringPad(u"_"); }));
    EXPECT_TRUE(refuses(textio::kFixed, [](F& f) { f.SetNumberPad(u"0"); }));
    EXPECT_TRUE(refuses(textio::kFixed, [](F& f) { f.plainOptions().numbersPadded = false; }));
    EXPECT_TRUE(refuses(textio::kFixed, [](F& f) { f.plainOptions().stringsQuoted = true; }));
    EXPECT_FALSE(refuses(textio::kFixed, [](F&) {}));
}

TEST_F(StoredRecordsTest, AreThereOnlyForFieldsOfTextInThePageOfTheFile) {
    TableImage image;
    image.Mark(0x03).Field("C", 'C', 10).Field("F", 'F', 10, 2).Field("N", 'N', 10);
    const auto table = Open(image);
    const std::vector<std::size_t> text{0};
    const std::vector<std::size_t> number{2};
    EXPECT_FALSE(table->StoredForm(all_, kPage));
    EXPECT_TRUE(table->StoredForm(text, kPage));
    EXPECT_FALSE(table->StoredForm(text, 437));
    EXPECT_TRUE(table->StoredForm(number, 437));
}

TEST_F(StoredRecordsTest, AreLocatedUpToTheFirstThatIsNotThere) {
    TableImage image;
    image.Field("C", 'C', 1).Record("a").Record("b");
    const auto table = Open(image);
    const std::vector<std::uint32_t> records{2, 1, 3, 1};
    std::vector<const char*> places(records.size());
    ASSERT_EQ(table->LocateRecords(records, places.data()), 2U);
    EXPECT_EQ(std::string(places[0], 2), " b");
    EXPECT_EQ(std::string(places[1], 2), " a");
    files_.AllowMapping(false);
    EXPECT_EQ(Open(image)->LocateRecords(records, places.data()), 0U) << "blocks come and go";
}

}  // namespace
}  // namespace zu::dbf
