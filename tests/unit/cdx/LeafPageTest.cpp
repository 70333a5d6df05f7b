#include "host/technologies/dbf/cdx/LeafPage.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/technologies/dbf/cdx/LeafPacker.h"
#include "portable/error/Error.h"
#include "tests/unit/cdx/Bytes.h"

namespace zu::dbf::cdx {
namespace {

using Entries = std::vector<std::pair<std::string, std::uint32_t>>;

const KeyShape kText10{10, std::byte{' '}};
const KeyShape kNumber{8, std::byte{0}};

PageArray Pack(const Entries& entries, const KeyShape& shape, const LeafLayout& layout) {
    LeafPacker packer(shape, layout);
    for (const auto& [key, record] : entries) {
        EXPECT_TRUE(packer.Add(AsBytes(Padded(key, shape.length)), record)) << key;
    }
    PageArray page{};
    packer.Store(PageHeader{}, page);
    return page;
}

Entries Unpack(const PageArray& bytes, const KeyShape& shape) {
    LeafPage page;
    page.Unpack(bytes, 0, shape);
    Entries entries;
    for (std::size_t i = 0; i < page.size(); ++i) {
        entries.emplace_back(AsText(page.key(i), shape.length), page.record(i));
    }
    return entries;
}

PageArray TwoNames() {
    return Pack({{"ABEL", 7}, {"ABRAHAM", 3}}, kText10, LeafLayout::For(10, 1000));
}

// Unpacking the page must end in the error that says so.
void ExpectDamaged(const PageArray& page, const std::string& expectedText, const KeyShape& shape = kText10) {
    LeafPage leaf;
    try {
        leaf.Unpack(page, 4096, shape);
        FAIL() << "no error, expected: " << expectedText;
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Damaged);
        EXPECT_NE(std::string(error.what()).find("offset 4096"), std::string::npos) << error.what();
        EXPECT_NE(std::string(error.what()).find(expectedText), std::string::npos) << error.what();
    }
}

TEST(LeafPage, GivesBackWhatWasPacked) {
    const Entries entries{{Padded("", 10), 2},        {Padded("ABEL", 10), 7}, {Padded("ABEL", 10), 9},
                          {Padded("ABRAHAM", 10), 3}, {"ABRAHAMSON", 1},       {Padded("B", 10), 4}};
    EXPECT_EQ(Unpack(Pack(entries, kText10, LeafLayout::For(10, 9)), kText10), entries);
}

TEST(LeafPage, ReadsRecordNumbersWithoutTheKeys) {
    std::vector<std::uint32_t> records{42};
    const PageHeader header = LeafPage::ReadRecords(TwoNames(), 0, records);
    EXPECT_EQ(header.count, 2);
    EXPECT_EQ(records, (std::vector<std::uint32_t>{42, 7, 3}));
}

TEST(LeafPage, FillsNumberKeysWithZeroBytes) {
    const std::string key("\x80\x01\x00\x00\x00\x00\x00\x00", 8);
    const PageArray page = Pack({{key, 1}}, kNumber, LeafLayout::For(8, 1));
    EXPECT_EQ(Unpack(page, kNumber), (Entries{{key, 1}}));
    // Only the two bytes in front of the zeros are stored.
    EXPECT_EQ(AsText(page.data() + kPageSize - 2, 2), key.substr(0, 2));
    EXPECT_EQ(page[kPageSize - 3], std::byte{0});
}

TEST(LeafPage, StoresAnEqualKeyWithoutBytes) {
    LeafPage page;
    page.Unpack(Pack({{"SAME", 1}, {"SAME", 2}}, kText10, LeafLayout::For(10, 9)), 0, kText10);
    EXPECT_EQ(page.countedFree(), leaf::kRoom - 2 * 3 - 4);
    EXPECT_EQ(page.statedFree(), page.countedFree());
}

TEST(LeafPage, DoesNotShareBlanksThatAreLeftOutAnyway) {
    // "AB   " after "AB C ": the common prefix reaches into the blanks, which count as trailing.
    const Entries entries{{Padded("AB", 10), 1}, {Padded("AB C", 10), 2}};
    EXPECT_EQ(Unpack(Pack(entries, kText10, LeafLayout::For(10, 9)), kText10), entries);
    const PageArray page = Pack({{"AB C", 1}, {"AB", 2}}, kText10, LeafLayout::For(10, 9));
    const unsigned entry = std::to_integer<unsigned>(page[leaf::kEntries + 3]) |
                           std::to_integer<unsigned>(page[leaf::kEntries + 4]) << 8 |
                           std::to_integer<unsigned>(page[leaf::kEntries + 5]) << 16;
    EXPECT_EQ(entry & 0xFFFF, 2U) << "record number";
    EXPECT_EQ(entry >> 16 & 0xF, 2U) << "shared bytes: not the blanks";
    EXPECT_EQ(entry >> 20, 8U) << "trailing bytes";
}

TEST(LeafPage, HoldsAllBitsOfGreatRecordNumbers) {
    const Entries entries{{Padded("A", 10), 0xFFFFFFFE}, {Padded("B", 10), 1}};
    const LeafLayout layout = LeafLayout::For(10, 0xFFFFFFFE);
    EXPECT_EQ(layout.entrySize, 5U);
    EXPECT_EQ(Unpack(Pack(entries, kText10, layout), kText10), entries);
}

TEST(LeafPage, TakesTheLongestKeys) {
    const KeyShape shape{240, std::byte{' '}};
    const Entries entries{{std::string(240, 'A'), 1}, {std::string(240, 'B'), 2}};
    LeafPacker packer(shape, LeafLayout::For(240, 2));
    EXPECT_TRUE(packer.Add(AsBytes(entries[0].first), 1));
    EXPECT_TRUE(packer.Add(AsBytes(entries[1].first), 2));
    EXPECT_FALSE(packer.Add(AsBytes(std::string(240, 'C')), 3)) << "no room for a third";
    PageArray page{};
    packer.Store(PageHeader{}, page);
    EXPECT_EQ(Unpack(page, shape), entries);
}

TEST(LeafPage, FillsAPageToTheLastByteWithEqualKeys) {
    LeafPacker packer(kText10, LeafLayout::For(10, 9));
    std::size_t count = 0;
    while (packer.Add(AsBytes(Padded("", 10)), 1))
        ++count;
    EXPECT_EQ(count, leaf::kRoom / 3);
    PageArray page{};
    packer.Store(PageHeader{}, page);
    EXPECT_EQ(Unpack(page, kText10).size(), count);
}

TEST(LeafPage, RefusesARecordNumberBeyondTheMask) {
    LeafPacker packer(kText10, LeafLayout::For(10, 1));
    EXPECT_TRUE(packer.Add(AsBytes(Padded("A", 10)), 0xFFFF));
    EXPECT_FALSE(packer.Add(AsBytes(Padded("B", 10)), 0x10000));
}

TEST(LeafPage, LeavesTheRoomThatItIsToldTo) {
    LeafPacker packer(kText10, LeafLayout::For(10, 9), 100);
    std::uint32_t record = 0;
    while (packer.Add(AsBytes(Padded(std::to_string(1000 + record), 10)), record))
        ++record;
    PageArray page{};
    packer.Store(PageHeader{}, page);
    LeafPage leaf;
    leaf.Unpack(page, 0, kText10);
    EXPECT_GE(leaf.countedFree(), leaf::kRoom - 100);
}

TEST(LeafPage, FindsTheFirstEntryThatIsNotBefore) {
    LeafPage page;
    page.Unpack(Pack({{"B", 2}, {"B", 5}, {"D", 1}}, kText10, LeafLayout::For(10, 9)), 0, kText10);
    const auto bound = [&](const std::string& key, std::uint32_t record) {
        return page.LowerBound(AsBytes(Padded(key, 10)), record);
    };
    EXPECT_EQ(bound("A", 9), 0U);
    EXPECT_EQ(bound("B", 2), 0U);
    EXPECT_EQ(bound("B", 3), 1U);
    EXPECT_EQ(bound("C", 0), 2U);
    EXPECT_EQ(bound("D", 2), 3U);
}

TEST(LeafPage, IgnoresSharedBytesOfTheFirstEntryButTellsThem) {
    PageArray page = TwoNames();
    page[leaf::kEntries + 2] |= std::byte{0x04};  // shared bytes of the first entry
    // Four bytes less are stored then than the entry asks for; the key reaches into free space.
    LeafPage leaf;
    leaf.Unpack(page, 0, kText10);
    EXPECT_EQ(leaf.firstDuplicate(), 4U);
    EXPECT_EQ(AsText(leaf.key(0), 4), "ABEL");
}

TEST(LeafLayout, UsesThreeBytesForSmallTablesAndMoreForGreatOnes) {
    EXPECT_EQ(LeafLayout::For(4, 100), (LeafLayout{18, 3, 3}));
    EXPECT_EQ(LeafLayout::For(8, 65535), (LeafLayout{16, 4, 3}));
    EXPECT_EQ(LeafLayout::For(8, 65536), (LeafLayout{24, 4, 4}));
    EXPECT_EQ(LeafLayout::For(30, 2000000), (LeafLayout{22, 5, 4}));
    EXPECT_EQ(LeafLayout::For(240, 16), (LeafLayout{8, 8, 3}));
    EXPECT_EQ(LeafLayout::For(240, 0xFFFFFFFF), (LeafLayout{32, 8, 6}));
}

TEST(DamagedLeaf, WithMoreEntriesThanAPageHolds) {
    PageArray page = TwoNames();
    page[page::kCount] = std::byte{0xFF};
    page[page::kCount + 1] = std::byte{0xFF};
    ExpectDamaged(page, "65535 entries of 3 bytes");
}

TEST(DamagedLeaf, WithEntriesThatLeaveOutMoreThanAKeyHas) {
    PageArray page = TwoNames();
    page[leaf::kEntries + 5] = std::byte{0xFF};
    ExpectDamaged(page, "entry 2 leaves out more bytes");
}

TEST(DamagedLeaf, WithKeysThatRunIntoTheEntries) {
    PageArray page = TwoNames();
    const std::size_t count = leaf::kRoom / 3;
    page[page::kCount] = static_cast<std::byte>(count);
    for (std::size_t i = leaf::kEntries; i < leaf::kEntries + 3 * count; ++i)
        page[i] = std::byte{0};
    ExpectDamaged(page, "run into the entries");
}

TEST(DamagedLeaf, WithBitFieldsThatDoNotFit) {
    for (const unsigned bits : {0U, 17U, 33U, 255U}) {
        PageArray page = TwoNames();
        page[leaf::kRecordBits] = static_cast<std::byte>(bits);
        ExpectDamaged(page, "bit fields");
    }
    for (const unsigned bits : {0U, 9U, 255U}) {
        PageArray page = TwoNames();
        page[leaf::kDuplicateBits] = static_cast<std::byte>(bits);
        ExpectDamaged(page, "bit fields");
    }
    PageArray page = TwoNames();
    page[leaf::kTrailingBits] = std::byte{5};
    ExpectDamaged(page, "bit fields");
}

TEST(DamagedLeaf, WithEntriesOfImpossibleSize) {
    for (const unsigned size : {0U, 2U, 9U, 255U}) {
        PageArray page = TwoNames();
        page[leaf::kEntrySize] = static_cast<std::byte>(size);
        ExpectDamaged(page, "bit fields");
    }
}

TEST(DamagedLeaf, WithMasksThatAreNotThoseOfTheBits) {
    for (const std::size_t at : {leaf::kRecordMask, leaf::kDuplicateMask, leaf::kTrailingMask}) {
        PageArray page = TwoNames();
        page[at] ^= std::byte{0x10};
        ExpectDamaged(page, "masks");
    }
}

TEST(DamagedLeaf, WithAttributesOfNoLeaf) {
    PageArray page = TwoNames();
    page[page::kAttributes] = std::byte{0};
    ExpectDamaged(page, "a leaf is expected");
    page[page::kAttributes] = std::byte{0x42};
    ExpectDamaged(page, "attributes 66");
}

}  // namespace
}  // namespace zu::dbf::cdx
