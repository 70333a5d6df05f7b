// New tables byte for byte.

#include <gtest/gtest.h>

#include <algorithm>

#include "host/technologies/dbf/maintenance/TableCreation.h"
#include "host/technologies/dbf/write/HeaderDate.h"
#include "portable/files/MemoryFiles.h"

namespace zu::dbf::test {
namespace {

using technologies::FieldDescription;
using technologies::FieldType;

FieldDescription Described(const char* name, FieldType type, int size = 0, int decimals = 0) {
    FieldDescription field;
    field.name = name;
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    return field;
}

// Puts a file together from pieces.
class Bytes {
public:
    Bytes& Byte(unsigned value) {
        bytes_.push_back(static_cast<std::byte>(value));
        return *this;
    }
    Bytes& Word(unsigned value) { return Byte(value & 0xFF).Byte(value >> 8); }
    Bytes& Zeros(std::size_t count) {
        bytes_.resize(bytes_.size() + count);
        return *this;
    }
    Bytes& Text(std::string_view text, std::size_t width) {
        for (const char c : text)
            Byte(static_cast<unsigned char>(c));
        return Zeros(width - text.size());
    }
    Bytes& Header(unsigned version, unsigned year, unsigned headerLength, unsigned recordLength,
                  unsigned flags) {
        const auto today = write::Today();
        Byte(version)
            .Byte(year)
            .Byte(static_cast<unsigned>(today.month))
            .Byte(static_cast<unsigned>(today.day));
        return Zeros(4).Word(headerLength).Word(recordLength).Zeros(16).Byte(flags).Byte(0x03).Zeros(2);
    }
    Bytes& Field(std::string_view name, char type, unsigned offset, unsigned width, unsigned decimals,
                 unsigned flags) {
        Text(name, 11).Byte(static_cast<unsigned char>(type)).Word(offset).Zeros(2);
        return Byte(width).Byte(decimals).Byte(flags).Zeros(13);
    }
    const std::vector<std::byte>& bytes() const { return bytes_; }

private:
    std::vector<std::byte> bytes_;
};

void ExpectFile(const files::MemoryFiles& files, const std::string& name, const Bytes& expected) {
    const auto bytes = files.Get(name);
    ASSERT_EQ(bytes.size(), expected.bytes().size()) << name;
    const auto differ = std::mismatch(bytes.begin(), bytes.end(), expected.bytes().begin()).first;
    EXPECT_EQ(differ, bytes.end()) << name << " at offset " << differ - bytes.begin();
}

unsigned Year() {
    return static_cast<unsigned>(write::Today().year);
}

TEST(GoldenTables, OfDBase3HasDescriptorsWithoutOffsetsAndAMemoFileOfOneBlock) {
    files::MemoryFiles files;
    technologies::TechnologySettings settings;
    settings.newTableFormat = "dBASE III";
    maintenance::CreateTable(
        files, "g.dbf", settings,
        {Described("NAME", FieldType::Text, 20), Described("AMOUNT", FieldType::Decimal, 12, 2),
         Described("BORN", FieldType::Date), Described("PAID", FieldType::Boolean),
         Described("NOTE", FieldType::LongText)},
        {});
    Bytes table;
    table.Header(0x83, Year() - 1900, 32 + 5 * 32 + 1, 1 + 20 + 12 + 8 + 1 + 10, 0)
        .Field("NAME", 'C', 0, 20, 0, 0)
        .Field("AMOUNT", 'N', 0, 12, 2, 0)
        .Field("BORN", 'D', 0, 8, 0, 0)
        .Field("PAID", 'L', 0, 1, 0, 0)
        .Field("NOTE", 'M', 0, 10, 0, 0)
        .Byte(0x0D)
        .Byte(0x1A);
    ExpectFile(files, "g.dbf", table);
    ExpectFile(files, "g.dbt", Bytes().Byte(1).Zeros(15).Byte(3).Zeros(495));
}

TEST(GoldenTables, OfFoxPro2HasOffsetsAndAMemoFileWithBlocksOf64Bytes) {
    files::MemoryFiles files;
    maintenance::CreateTable(files, "g.dbf", {},
                             {Described("NAME", FieldType::Text, 20), Described("NOTE", FieldType::LongText)},
                             {});
    Bytes table;
    table.Header(0xF5, Year() % 100, 32 + 2 * 32 + 1, 1 + 20 + 10, 0)
        .Field("NAME", 'C', 1, 20, 0, 0)
        .Field("NOTE", 'M', 21, 10, 0, 0)
        .Byte(0x0D)
        .Byte(0x1A);
    ExpectFile(files, "g.dbf", table);
    ExpectFile(files, "g.fpt", Bytes().Zeros(3).Byte(8).Zeros(3).Byte(64).Zeros(504));
}

TEST(GoldenTables, OfVisualFoxProHasABacklinkAndTheHiddenColumn) {
    files::MemoryFiles files;
    FieldDescription nullable = Described("NAME", FieldType::Text, 20);
    nullable.nullable = true;
    maintenance::CreateTable(
        files, "g.dbf", {},
        {nullable, Described("COUNT", FieldType::Integer32), Described("PRICE", FieldType::Currency),
         Described("SEEN", FieldType::Date, 14), Described("RATIO", FieldType::Double, 20, 3),
         Described("NOTE", FieldType::LongText)},
        {});
    Bytes table;
    table.Header(0x30, Year() % 100, 32 + 7 * 32 + 264, 1 + 20 + 4 + 8 + 8 + 8 + 4 + 1, 0x02)
        .Field("NAME", 'C', 1, 20, 0, 0x02)
        .Field("COUNT", 'I', 21, 4, 0, 0x04)
        .Field("PRICE", 'Y', 25, 8, 0, 0x04)
        .Field("SEEN", 'T', 33, 8, 0, 0x04)
        .Field("RATIO", 'B', 41, 8, 3, 0x04)
        .Field("NOTE", 'M', 49, 4, 0, 0)
        .Field("_NullFlags", '0', 53, 1, 0, 0x05)
        .Byte(0x0D)
        .Zeros(263)
        .Byte(0x1A);
    ExpectFile(files, "g.dbf", table);
}

TEST(GoldenTables, WithShortBinaryFieldsHasTheLatestVersion) {
    files::MemoryFiles files;
    maintenance::CreateTable(files, "g.dbf", {}, {Described("RAW", FieldType::Binary, 30)}, {});
    EXPECT_EQ(files.Get("g.dbf")[0], std::byte{0x32});
}

TEST(GoldenTables, WithAnIndexHasTheFlagAndTheUsualPlacesInIt) {
    files::MemoryFiles files;
    maintenance::CreateTable(files, "g.dbf", {}, {Described("NAME", FieldType::Text, 20)}, {{"NAME", false}});
    EXPECT_EQ(files.Get("g.dbf")[28], std::byte{0x01});
    const auto index = files.Get("g.cdx");
    const auto at = [&](std::size_t offset) {
        return std::to_integer<unsigned>(index[offset]) | std::to_integer<unsigned>(index[offset + 1]) << 8;
    };
    EXPECT_EQ(at(0), 0x400U);         // the directory
    EXPECT_EQ(at(14) & 0xFF, 0xE0U);  // its options
    EXPECT_EQ(at(0x600), 0xA00U);     // the root of the tag
    EXPECT_EQ(at(0x600 + 12), 20U);   // its key length
    EXPECT_EQ(at(0x600 + 14) & 0xFF, 0x60U);
    EXPECT_EQ(index.size(), 0xC00U);
}

}  // namespace
}  // namespace zu::dbf::test
