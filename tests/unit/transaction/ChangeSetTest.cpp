#include "host/technologies/dbf/transaction/ChangeSet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "portable/error/Error.h"

namespace zu::dbf::transaction {
namespace {

std::vector<std::byte> Bytes(const std::string& text) {
    std::vector<std::byte> bytes;
    for (const char c : text)
        bytes.push_back(static_cast<std::byte>(c));
    return bytes;
}

std::string Text(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string Overlaid(const ChangeSet& set, Part part, std::uint64_t offset, const std::string& under) {
    auto buffer = Bytes(under);
    set.Overlay(part, offset, buffer);
    return Text(buffer);
}

TEST(ChangeSet, ShowsItsWritesOverTheContentOfTheFile) {
    ChangeSet set;
    set.Write(Part::Table, 4, Bytes("AB"));
    set.Write(Part::Table, 8, Bytes("CD"));
    EXPECT_EQ(Overlaid(set, Part::Table, 0, "0123456789"), "0123AB67CD");
    EXPECT_EQ(Overlaid(set, Part::Table, 5, "567"), "B67");
    EXPECT_EQ(Overlaid(set, Part::Memo, 0, "0123456789"), "0123456789");
}

TEST(ChangeSet, TheLaterWriteOfARangeReplacesTheEarlierOne) {
    ChangeSet set;
    set.Write(Part::Index, 512, Bytes("old"));
    set.Write(Part::Index, 512, Bytes("new"));
    EXPECT_EQ(Text(set.Find(Part::Index, 512)), "new");
    EXPECT_EQ(set.ranges(Part::Index).size(), 1U);
}

TEST(ChangeSet, RefusesRangesThatOverlapInPart) {
    ChangeSet set;
    set.Write(Part::Table, 10, Bytes("12345"));
    EXPECT_THROW(set.Write(Part::Table, 12, Bytes("12345")), Error);
    EXPECT_THROW(set.Write(Part::Table, 10, Bytes("1234")), Error);
    EXPECT_NO_THROW(set.Write(Part::Memo, 12, Bytes("12345")));
    EXPECT_NO_THROW(set.Write(Part::Table, 15, Bytes("1")));
}

TEST(ChangeSet, KnowsTheSizeThatThePartWillHave) {
    ChangeSet set;
    EXPECT_EQ(set.SizeAfter(Part::Table, 100), 100U);
    set.Write(Part::Table, 90, Bytes("0123456789ABCDEF"));
    EXPECT_EQ(set.SizeAfter(Part::Table, 100), 106U);
    EXPECT_EQ(set.SizeAfter(Part::Table, 200), 200U);
    EXPECT_EQ(set.SizeAfter(Part::Index, 5), 5U);
}

TEST(ChangeSet, FindsAndReplacesAmongManyRanges) {
    ChangeSet set;
    for (unsigned i = 0; i < 1000; ++i)
        set.Write(Part::Index, i * 512ULL, Bytes(std::to_string(1000 + i)));
    for (unsigned i = 0; i < 1000; i += 7)
        set.Write(Part::Index, i * 512ULL, Bytes(std::to_string(5000 + i)));
    EXPECT_EQ(set.ranges(Part::Index).size(), 1000U);
    for (unsigned i = 0; i < 1000; ++i)
        EXPECT_EQ(Text(set.Find(Part::Index, i * 512ULL)), std::to_string((i % 7 ? 1000 : 5000) + i));
    EXPECT_TRUE(set.Find(Part::Index, 512 * 1000).empty());
    EXPECT_EQ(Overlaid(set, Part::Index, 7 * 512, "...."), "5007");
}

TEST(ChangeSet, IsEmptyAgainAfterClear) {
    ChangeSet set;
    EXPECT_TRUE(set.empty());
    set.Write(Part::Table, 90, Bytes("x"));
    EXPECT_FALSE(set.empty());
    set.Clear();
    EXPECT_TRUE(set.empty());
    EXPECT_EQ(set.SizeAfter(Part::Table, 10), 10U);
    EXPECT_TRUE(set.Find(Part::Table, 90).empty());
}

}  // namespace
}  // namespace zu::dbf::transaction
