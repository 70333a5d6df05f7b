#include "host/technologies/dbf/DbfHeader.h"

#include <gtest/gtest.h>

#include "tests/unit/dbf/ErrorExpectation.h"
#include "tests/unit/dbf/TableImage.h"

namespace zu::dbf {
namespace {

DbfHeader HeaderOf(std::string_view bytes) {
    files::MemoryFiles files;
    Put(files, "t.dbf", bytes);
    return DbfHeader::Read(*files.Open("t.dbf", {}));
}

DbfHeader HeaderOf(const TableImage& image) {
    return HeaderOf(image.Bytes());
}

TableImage Simple(std::uint8_t version = 0x03) {
    TableImage image(version);
    image.Field("NAME", 'C', 5).Field("AMOUNT", 'N', 8, 2).Record("abcde   12.50");
    return image;
}

TEST(DbfHeader, ReadsNamesTypesAndPlacesOfFields) {
    const DbfHeader header = HeaderOf(Simple());
    ASSERT_EQ(header.fields.size(), 2U);
    EXPECT_EQ(header.fields[0].name, "NAME");
    EXPECT_EQ(header.fields[0].type, 'C');
    EXPECT_EQ(header.fields[0].offset, 1U);
    EXPECT_EQ(header.fields[0].width, 5U);
    EXPECT_EQ(header.fields[1].name, "AMOUNT");
    EXPECT_EQ(header.fields[1].offset, 6U);
    EXPECT_EQ(header.fields[1].width, 8U);
    EXPECT_EQ(header.fields[1].decimals, 2);
    EXPECT_EQ(header.recordCount, 1U);
    EXPECT_EQ(header.recordLength, 14U);
    EXPECT_EQ(header.lastChange, (calendar::Date{2026, 11, 21}));
    EXPECT_TRUE(header.isConsistent);
    EXPECT_TRUE(header.warnings.empty());
}

struct VersionCase {
    int byte;
    MemoFormat memo;
};

class KnownVersion : public testing::TestWithParam<VersionCase> {};

TEST_P(KnownVersion, IsReadWithItsKindOfMemo) {
    const DbfHeader header = HeaderOf(Simple(static_cast<std::uint8_t>(GetParam().byte)));
    EXPECT_EQ(header.fields.size(), 2U);
    EXPECT_EQ(static_cast<int>(header.version.memo), static_cast<int>(GetParam().memo));
}

INSTANTIATE_TEST_SUITE_P(
    DbfHeader, KnownVersion,
    testing::Values(VersionCase{0x02, MemoFormat::None}, VersionCase{0x03, MemoFormat::None},
                    VersionCase{0x05, MemoFormat::None}, VersionCase{0x07, MemoFormat::None},
                    VersionCase{0x30, MemoFormat::Fpt}, VersionCase{0x31, MemoFormat::Fpt},
                    VersionCase{0x32, MemoFormat::Fpt}, VersionCase{0x43, MemoFormat::None},
                    VersionCase{0x63, MemoFormat::None}, VersionCase{0x7B, MemoFormat::Dbt4},
                    VersionCase{0x83, MemoFormat::Dbt3}, VersionCase{0x87, MemoFormat::Dbt3},
                    VersionCase{0x8B, MemoFormat::Dbt4}, VersionCase{0x8E, MemoFormat::Dbt4},
                    VersionCase{0xCB, MemoFormat::Dbt4}, VersionCase{0xE5, MemoFormat::Smt},
                    VersionCase{0xF5, MemoFormat::Fpt}, VersionCase{0xFB, MemoFormat::None}),
    [](const auto& version) { return "Byte" + std::to_string(version.param.byte); });

class EncryptedVersion : public testing::TestWithParam<int> {};

TEST_P(EncryptedVersion, IsRefused) {
    ExpectError(ErrorKind::Unsupported, {"t.dbf", "encrypted"},
                [] { HeaderOf(Simple(static_cast<std::uint8_t>(GetParam()))); });
}

INSTANTIATE_TEST_SUITE_P(DbfHeader, EncryptedVersion, testing::Values(0x06, 0x86, 0xE6, 0xF6));

TEST(DbfHeader, RefusesTheEncryptionMarkOfDBase4) {
    ExpectError(ErrorKind::Unsupported, {"encrypted"}, [] { HeaderOf(Simple(0x8B).Byte(15, 1)); });
    EXPECT_NO_THROW(HeaderOf(Simple(0x30).Byte(15, 1)));
}

TEST(DbfHeader, WarnsOfAnOpenTransactionOfDBase4) {
    EXPECT_TRUE(Mentions(HeaderOf(Simple(0x8B).Byte(14, 1)).warnings, "transaction"));
}

TEST(DbfHeader, ReadsAnUnknownVersionWhoseSizesFit) {
    const DbfHeader header = HeaderOf(Simple(0x99));
    EXPECT_EQ(header.fields.size(), 2U);
    EXPECT_TRUE(Mentions(header.warnings, "0x99"));
}

TEST(DbfHeader, RefusesAnUnknownVersionWhoseSizesDoNotFit) {
    ExpectError(ErrorKind::Damaged, {"t.dbf", "no DBF file", "0x99"},
                [] { HeaderOf(Simple(0x99).StatedRecordLength(15)); });
    ExpectError(ErrorKind::Damaged, {"no DBF file"}, [] { HeaderOf(std::string(4000, 'x')); });
    ExpectError(ErrorKind::Damaged, {"no DBF file"}, [] { HeaderOf("MZ" + std::string(4000, '\0')); });
}

TEST(DbfHeader, RefusesDBase2) {
    ExpectError(ErrorKind::Unsupported, {"dBASE II"}, [] {
        std::string bytes("\x02\x05\x00\x01\x01\x50\x20\x00", 8);
        bytes.resize(600);
        HeaderOf(bytes);
    });
}

TEST(DbfHeader, RefusesFilesTooShortForAHeader) {
    ExpectError(ErrorKind::Damaged, {"t.dbf", "empty"}, [] { HeaderOf(""); });
    ExpectError(ErrorKind::Damaged, {"only 31 bytes"}, [] { HeaderOf(Simple().Bytes().substr(0, 31)); });
    ExpectError(ErrorKind::Damaged, {"header length is 97", "40 bytes"},
                [] { HeaderOf(Simple().Bytes().substr(0, 40)); });
}

TEST(DbfHeader, RefusesLengthsThatCannotBe) {
    ExpectError(ErrorKind::Damaged, {"record length is 0"}, [] { HeaderOf(Simple().StatedRecordLength(0)); });
    ExpectError(ErrorKind::Damaged, {"header length is 32"},
                [] { HeaderOf(Simple().StatedHeaderLength(32)); });
    ExpectError(ErrorKind::Damaged, {"header length is 0"}, [] { HeaderOf(Simple().StatedHeaderLength(0)); });
    ExpectError(ErrorKind::Damaged, {"header length is 65535"},
                [] { HeaderOf(Simple().StatedHeaderLength(65535)); });
    ExpectError(ErrorKind::Damaged, {"no fields"}, [] { HeaderOf(TableImage().StatedRecordLength(5)); });
}

TEST(DbfHeader, AcceptsEveryEndOfTheFieldList) {
    for (const std::string_view mark : {std::string_view("\x0D"), std::string_view("\x0D\0", 2),
                                        std::string_view("\x0A"), std::string_view("\0", 1)}) {
        // Room for two more descriptors, which must not be read.
        EXPECT_EQ(HeaderOf(Simple().EndMark(mark).Gap(64)).fields.size(), 2U);
    }
    const DbfHeader none = HeaderOf(Simple().EndMark(""));
    EXPECT_EQ(none.fields.size(), 2U);
    EXPECT_TRUE(Mentions(none.warnings, "end mark"));
}

TEST(DbfHeader, TakesTheStatedHeaderLengthAsStartOfTheRecords) {
    EXPECT_EQ(HeaderOf(Simple(0x30).Gap(263)).headerLength, 97U + 263U);
    EXPECT_EQ(HeaderOf(Simple().Gap(7)).headerLength, 97U + 7U);
}

TEST(DbfHeader, EndsTheFieldListAtTheHeaderLength) {
    // The list runs on into the records when nothing ends it.
    TableImage image = Simple();
    image.EndMark("").StatedHeaderLength(32 + 64);
    EXPECT_EQ(HeaderOf(image).fields.size(), 2U);
}

TEST(DbfHeader, ReadsNamesOfElevenBytesAndIgnoresGarbageBehindTheNul) {
    TableImage image;
    image.Field("ELEVENBYTES", 'C', 1).Field(std::string_view("AB\0garbage", 10), 'C', 1);
    const DbfHeader header = HeaderOf(image);
    EXPECT_EQ(header.fields[0].name, "ELEVENBYTES");
    EXPECT_EQ(header.fields[1].name, "AB");
}

TEST(DbfHeader, TakesTheHighByteOfACharacterWidthWhenTheRecordNeedsIt) {
    TableImage wide;
    wide.Field("LONG", 'C', 44, 1).Field("N", 'N', 5, 1).StatedRecordLength(1 + 300 + 5);
    const DbfHeader header = HeaderOf(wide);
    EXPECT_EQ(header.fields[0].width, 300U);
    EXPECT_EQ(header.fields[0].decimals, 0);
    EXPECT_EQ(header.fields[1].offset, 301U);
    EXPECT_TRUE(header.isConsistent);

    TableImage decimals;  // display decimals that some writers leave there
    decimals.Field("SHORT", 'C', 44, 1).Field("N", 'N', 5, 1);
    EXPECT_EQ(HeaderOf(decimals).fields[0].width, 44U);
}

TEST(DbfHeader, CutsFieldsThatLeaveTheRecord) {
    TableImage image;
    image.Field("A", 'C', 10).Field("B", 'C', 10).Field("C", 'C', 10).StatedRecordLength(16);
    const DbfHeader header = HeaderOf(image);
    ASSERT_EQ(header.fields.size(), 2U);
    EXPECT_EQ(header.fields[1].width, 5U);
    EXPECT_FALSE(header.isConsistent);
    EXPECT_TRUE(Mentions(header.warnings, "31 bytes"));
    EXPECT_TRUE(Mentions(header.warnings, "field B"));
}

TEST(DbfHeader, SkipsFieldsWithoutWidth) {
    TableImage image;
    image.Field("A", 'C', 0).Field("B", 'C', 3);
    const DbfHeader header = HeaderOf(image);
    ASSERT_EQ(header.fields.size(), 1U);
    EXPECT_EQ(header.fields[0].name, "B");
    EXPECT_EQ(header.fields[0].offset, 1U);
}

TEST(DbfHeader, IgnoresAnImpossibleDateOfChange) {
    EXPECT_FALSE(HeaderOf(Simple().Byte(2, 13)).lastChange);
    EXPECT_FALSE(HeaderOf(Simple().Byte(3, 0)).lastChange);
    EXPECT_EQ(HeaderOf(Simple().Byte(1, 103)).lastChange->year, 2003);
    EXPECT_EQ(HeaderOf(Simple().Byte(1, 2)).lastChange->year, 2002);
    EXPECT_EQ(HeaderOf(Simple().Byte(1, 95)).lastChange->year, 1995);
}

TEST(DbfHeader, ReadsTheLayoutOfDBase7) {
    std::string bytes("\x04\x1A\x0B\x15\x01\x00\x00\x00\x00\x00\x06\x00", 12);
    bytes.resize(68);
    bytes.replace(32, 8, "DBWINUS0");
    const auto field = [&](std::string name, char type, char width) {
        name.resize(32);
        name += {type, width};
        name.resize(48);
        bytes += name;
    };
    field("A name of more than ten bytes", 'C', 1);
    field("ID", '+', 4);
    bytes += '\x0D';
    bytes[8] = static_cast<char>(bytes.size());
    bytes += std::string(" x\x80\x00\x00\x07", 6);
    const DbfHeader header = HeaderOf(bytes);
    ASSERT_EQ(header.fields.size(), 2U);
    EXPECT_EQ(header.fields[0].name, "A name of more than ten bytes");
    EXPECT_EQ(header.fields[1].type, '+');
    EXPECT_EQ(header.fields[1].offset, 2U);
    EXPECT_EQ(header.driverName, "DBWINUS0");
}

TEST(DbfHeader, ReadsAsManyFieldsAsAHeaderCanHold) {
    TableImage image;
    for (int i = 0; i < 2046; ++i)
        image.Field("F" + std::to_string(i), 'C', 1);
    EXPECT_EQ(HeaderOf(image).fields.size(), 2046U);
}

TEST(DbfHeader, SurvivesACutAtEveryByte) {
    const std::string bytes = Simple(0x30).Gap(263).Bytes();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        try {
            HeaderOf(std::string_view(bytes).substr(0, length));
        } catch (const Error& error) {
            EXPECT_NE(std::string_view(error.what()).find("t.dbf"), std::string_view::npos);
        }
    }
}

}  // namespace
}  // namespace zu::dbf
