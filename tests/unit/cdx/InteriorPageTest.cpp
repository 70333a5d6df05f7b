#include "host/technologies/dbf/cdx/InteriorPage.h"

#include <gtest/gtest.h>

#include <string>

#include "portable/error/Error.h"
#include "tests/unit/cdx/Bytes.h"

namespace zu::dbf::cdx {
namespace {

const KeyShape kShape{4, std::byte{' '}};

PageArray ThreeEntries() {
    InteriorPacker packer(kShape, InteriorCapacity(4));
    packer.Add(AsBytes("BBBB"), 2, 0x600);
    packer.Add(AsBytes("BBBB"), 0x01020304, 0x800);
    packer.Add(AsBytes("DDDD"), 1, 0xA00);
    PageArray page{};
    packer.Store(PageHeader{kRootPage, 0, kNoPage, 0x400}, page);
    return page;
}

TEST(InteriorPage, StoresRecordsAndChildrenBigEndianBehindTheKeys) {
    const PageArray page = ThreeEntries();
    EXPECT_EQ(AsText(page.data() + interior::kEntries + 12, 12),
              std::string("BBBB\x01\x02\x03\x04\x00\x00\x08\x00", 12));
}

TEST(InteriorPage, GivesBackWhatWasPacked) {
    const PageArray bytes = ThreeEntries();
    const InteriorPage page(bytes, 0, kShape);
    EXPECT_TRUE(page.header().isRoot());
    EXPECT_FALSE(page.header().isLeaf());
    EXPECT_EQ(page.header().left, kNoPage);
    EXPECT_EQ(page.header().right, 0x400U);
    ASSERT_EQ(page.size(), 3U);
    EXPECT_EQ(AsText(page.key(2), 4), "DDDD");
    EXPECT_EQ(page.record(1), 0x01020304U);
    EXPECT_EQ(page.child(1), 0x800U);
}

TEST(InteriorPage, HasRoomForAsManyEntriesAsFitBehindItsHeader) {
    EXPECT_EQ(InteriorCapacity(1), 55U);
    EXPECT_EQ(InteriorCapacity(4), 41U);
    EXPECT_EQ(InteriorCapacity(10), 27U);
    EXPECT_EQ(InteriorCapacity(240), 2U);
    InteriorPacker packer(kShape, 1000);
    for (std::size_t i = 0; i < 41; ++i)
        EXPECT_TRUE(packer.Add(AsBytes("AAAA"), 1, 1));
    EXPECT_FALSE(packer.Add(AsBytes("AAAA"), 1, 1));
}

TEST(InteriorPage, LeadsToTheChildThatHoldsAKey) {
    const PageArray bytes = ThreeEntries();
    const InteriorPage page(bytes, 0, kShape);
    EXPECT_EQ(page.LowerBound(AsBytes("AAAA"), 9), 0U);
    EXPECT_EQ(page.LowerBound(AsBytes("BBBB"), 2), 0U);
    EXPECT_EQ(page.LowerBound(AsBytes("BBBB"), 3), 1U);
    EXPECT_EQ(page.LowerBound(AsBytes("CCCC"), 0), 2U);
    EXPECT_EQ(page.LowerBound(AsBytes("EEEE"), 0), 3U);
}

TEST(DamagedInteriorPage, IsRefused) {
    const auto refuse = [](PageArray page, const std::string& text) {
        try {
            const InteriorPage interior(page, 1024, kShape);
            FAIL() << "no error, expected: " << text;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Damaged);
            EXPECT_NE(std::string(error.what()).find(text), std::string::npos) << error.what();
        }
    };
    PageArray page = ThreeEntries();
    page[page::kCount] = std::byte{42};
    refuse(page, "42 entries are more than the 41");
    page[page::kCount] = std::byte{0};
    refuse(page, "without entries");
    page = ThreeEntries();
    page[page::kAttributes] = std::byte{2};
    refuse(page, "an interior page is expected");
    page[page::kAttributes + 1] = std::byte{1};
    refuse(page, "attributes");
}

}  // namespace
}  // namespace zu::dbf::cdx
