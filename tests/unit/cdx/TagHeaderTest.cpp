#include "host/technologies/dbf/cdx/TagHeader.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

#include "portable/error/Error.h"

namespace zu::dbf::cdx {
namespace {

using HeaderBytes = std::array<std::byte, kHeaderSize>;

HeaderBytes Stored(const TagHeader& header) {
    HeaderBytes bytes{};
    bytes.fill(std::byte{0xEE});
    header.Store(bytes);
    return bytes;
}

void Put(HeaderBytes& bytes, std::size_t at, const std::string& text) {
    std::memcpy(bytes.data() + at, text.data(), text.size());
}

TEST(TagHeader, GivesBackWhatWasStored) {
    TagHeader header;
    header.root = 0x12345600;
    header.freeList = 0x800;
    header.counter = 77;
    header.keyLength = 30;
    header.options = kCompact | kCompound | kHasFilter | kUnique;
    header.descending = true;
    header.key = "UPPER(NAME)";
    header.filter = ".NOT. DELETED()";
    const TagHeader again = TagHeader::Parse(Stored(header));
    EXPECT_EQ(again.root, header.root);
    EXPECT_EQ(again.freeList, header.freeList);
    EXPECT_EQ(again.counter, header.counter);
    EXPECT_EQ(again.keyLength, header.keyLength);
    EXPECT_EQ(again.options, header.options);
    EXPECT_EQ(again.signature, 1);
    EXPECT_TRUE(again.descending);
    EXPECT_EQ(again.key, header.key);
    EXPECT_EQ(again.filter, header.filter);
    EXPECT_TRUE(again.isByteOrder());
    EXPECT_FALSE(again.isDirectory());
}

TEST(TagHeader, HasTheLayoutOfTheFormat) {
    TagHeader header;
    header.root = 0xA00;
    header.keyLength = 4;
    header.key = "ID";
    HeaderBytes expected{};
    Put(expected, 0, std::string("\x00\x0A\x00\x00", 4));
    Put(expected, 12, std::string("\x04\x00\x60\x01", 4));
    Put(expected, 504, std::string("\x03\x00\x01\x00\x00\x00\x03\x00", 8));
    Put(expected, 512, "ID");
    EXPECT_EQ(Stored(header), expected);
}

TEST(TagHeader, RefusesExpressionsThatDoNotFit) {
    TagHeader header;
    header.key = std::string(300, 'A');
    header.filter = std::string(210, 'B');
    EXPECT_EQ(TagHeader::Parse(Stored(header)).filter, header.filter);
    header.filter += 'B';
    EXPECT_THROW(Stored(header), Error);
}

TEST(TagHeader, TrimsThePaddingOfOldFiles) {
    TagHeader header;
    header.key = "NAME" + std::string(56, ' ');
    EXPECT_EQ(TagHeader::Parse(Stored(header)).key, "NAME");
}

TEST(TagHeader, TakesTheTextsOneBehindTheOtherWhenPositionsAreMissing) {
    TagHeader header;
    header.options = kCompact | kCompound | kHasFilter;
    header.key = "NAME";
    header.filter = "AGE > 3";
    HeaderBytes bytes = Stored(header);
    std::memset(bytes.data() + 504, 0, 8);
    EXPECT_EQ(TagHeader::Parse(bytes).key, "NAME");
    EXPECT_EQ(TagHeader::Parse(bytes).filter, "AGE > 3");
}

TEST(TagHeader, BelievesTheForTextMoreThanTheOption) {
    TagHeader header;
    header.key = "NAME";
    header.filter = "AGE > 3";
    header.options = kCompact | kCompound;
    EXPECT_EQ(TagHeader::Parse(Stored(header)).filter, "AGE > 3");
}

TEST(TagHeader, ReadsTheCollation) {
    TagHeader header;
    header.collation = "GENERAL";
    EXPECT_FALSE(TagHeader::Parse(Stored(header)).isByteOrder());
    header.collation = "MACHINE";
    EXPECT_TRUE(TagHeader::Parse(Stored(header)).isByteOrder());
}

TEST(TagHeader, NeverReadsOutsideThePoolWhateverThePositionsSay) {
    for (unsigned value = 0; value < 0x10000; value += 0xFF) {
        TagHeader header;
        header.key = "NAME";
        HeaderBytes bytes = Stored(header);
        for (const std::size_t at : {504U, 506U, 508U, 510U}) {
            bytes[at] = static_cast<std::byte>(value);
            bytes[at + 1] = static_cast<std::byte>(value >> 8);
        }
        EXPECT_LE(TagHeader::Parse(bytes).key.size(), kExpressionPool);
    }
}

}  // namespace
}  // namespace zu::dbf::cdx
