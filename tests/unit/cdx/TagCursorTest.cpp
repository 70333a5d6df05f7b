#include "host/technologies/dbf/cdx/TagCursor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "portable/error/Error.h"
#include "tests/unit/cdx/BareTree.h"

namespace zu::dbf::cdx {
namespace {

using Entries = BareTree::Entries;

const KeyShape kShape{20, std::byte{' '}};

// Keys with few shared bytes fill few entries into a page: three levels with some thousand keys.
Entries ManyEntries(std::size_t count) {
    std::mt19937 random(7);
    Entries entries;
    for (std::size_t i = 0; i < count; ++i) {
        std::string key(20, 'x');
        for (std::size_t at = 0; at < 12; ++at)
            key[at] = static_cast<char>('A' + random() % 26);
        if (i % 10 == 3) key = entries[i - 1].first;  // equal keys, also across pages
        entries.emplace_back(key, static_cast<std::uint32_t>(random() % 100000 + 1));
    }
    std::sort(entries.begin(), entries.end());
    entries.erase(std::unique(entries.begin(), entries.end()), entries.end());
    return entries;
}

Entries Forward(TagCursor cursor) {
    Entries entries;
    for (bool more = cursor.First(); more; more = cursor.Next()) {
        entries.emplace_back(AsText(cursor.key(), kShape.length), cursor.record());
    }
    return entries;
}

Entries Backward(TagCursor cursor) {
    Entries entries;
    for (bool more = cursor.Last(); more; more = cursor.Previous()) {
        entries.emplace_back(AsText(cursor.key(), kShape.length), cursor.record());
    }
    return entries;
}

template <typename Work>
std::string DamageOf(Work work) {
    try {
        work();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Damaged) << error.what();
        return error.what();
    }
    return "no error";
}

class TagCursorWithAndWithoutMapping : public ::testing::TestWithParam<bool> {};

TEST_P(TagCursorWithAndWithoutMapping, WalksAllEntriesInBothDirections) {
    Entries entries = ManyEntries(4000);
    BareTree tree(entries, kShape);
    tree.memory.AllowMapping(GetParam());
    const TagCursor cursor(tree.Open(), tree.root, kShape);
    EXPECT_EQ(Forward(cursor), entries);
    std::reverse(entries.begin(), entries.end());
    EXPECT_EQ(Backward(cursor), entries);
}

INSTANTIATE_TEST_SUITE_P(Mapping, TagCursorWithAndWithoutMapping, ::testing::Bool());

TEST(TagCursor, FindsNothingInAnEmptyTree) {
    BareTree tree({}, kShape);
    TagCursor cursor(tree.Open(), tree.root, kShape);
    EXPECT_FALSE(cursor.First());
    EXPECT_FALSE(cursor.Last());
    EXPECT_FALSE(cursor.Seek(AsBytes(std::string(20, 'A')), 0));
    EXPECT_FALSE(cursor.SeekBefore(AsBytes(std::string(20, 'A')), 0));
}

TEST(TagCursor, SeeksToEveryEntryAndBetweenThem) {
    const Entries entries = ManyEntries(2000);
    BareTree tree(entries, kShape);
    TagCursor cursor(tree.Open(), tree.root, kShape);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto& [key, record] = entries[i];
        ASSERT_TRUE(cursor.Seek(AsBytes(key), record));
        ASSERT_EQ(cursor.record(), record);
        ASSERT_EQ(AsText(cursor.key(), 20), key);
        // The place just behind the entry is that of its successor.
        const bool hasNext = i + 1 < entries.size();
        ASSERT_EQ(cursor.Seek(AsBytes(key), record + 1), hasNext);
        if (hasNext) {
            ASSERT_EQ(cursor.record(), entries[i + 1].second);
        }
        ASSERT_EQ(cursor.SeekBefore(AsBytes(key), record), i > 0);
        if (i > 0) {
            ASSERT_EQ(cursor.record(), entries[i - 1].second);
        }
    }
}

TEST(TagCursor, TurnsRoundInTheMiddle) {
    const Entries entries = ManyEntries(500);
    BareTree tree(entries, kShape);
    TagCursor cursor(tree.Open(), tree.root, kShape);
    ASSERT_TRUE(cursor.Seek(AsBytes(entries[250].first), entries[250].second));
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(cursor.Next());
    for (int i = 0; i < 200; ++i)
        ASSERT_TRUE(cursor.Previous());
    EXPECT_EQ(cursor.record(), entries[150].second);
}

TEST(TagCursor, PassesOverLeavesWithoutEntries) {
    const Entries entries = ManyEntries(300);
    BareTree tree(entries, kShape);
    LeafPage first;
    first.Unpack(tree.Open().Page(0), 0, kShape);
    LeafPage second;
    second.Unpack(tree.Open().Page(kPageSize), 0, kShape);
    tree.Patch(kPageSize + page::kCount, std::string(2, '\0'));
    Entries expected = entries;
    const auto gone = expected.begin() + static_cast<std::ptrdiff_t>(first.size());
    expected.erase(gone, gone + static_cast<std::ptrdiff_t>(second.size()));
    TagCursor cursor(tree.Open(), tree.root, kShape);
    EXPECT_EQ(Forward(cursor), expected);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(Backward(cursor), expected);
    ASSERT_TRUE(cursor.Seek(second.key(0), second.record(0)));
    EXPECT_EQ(cursor.record(), entries[first.size() + second.size()].second);
}

TEST(TagCursor, EstimatesWhereAKeyLies) {
    const Entries entries = ManyEntries(4000);
    BareTree tree(entries, kShape);
    LeafPath path(tree.Open(), tree.root, kShape);
    path.ToFirst();
    EXPECT_EQ(path.Fraction(), 0);
    path.To(AsBytes(entries[2000].first), 0);
    EXPECT_NEAR(path.Fraction(), 0.5, 0.05);
    path.ToLast();
    EXPECT_GT(path.Fraction(), 0.95);
}

TEST(DamagedTree, WhoseRootIsItsOwnChildEndsInAnError) {
    BareTree tree(ManyEntries(200), kShape);
    // The child of the first entry: behind key and record number, big-endian.
    std::string child(4, '\0');
    for (int i = 0; i < 4; ++i)
        child[static_cast<std::size_t>(i)] = static_cast<char>(tree.root >> (24 - 8 * i));
    tree.Patch(tree.root + interior::kEntries + 24, child);
    TagCursor cursor(tree.Open(), tree.root, kShape);
    EXPECT_NE(DamageOf([&] { cursor.First(); }).find("deeper"), std::string::npos);
}

TEST(DamagedTree, WhosePagesAreReachedAgainAndAgainEndsInAnError) {
    // All entries of the root lead to the first leaf: sibling links tell at once.
    BareTree tree(ManyEntries(200), kShape);
    const InteriorPage root(tree.Open().Page(tree.root), tree.root, kShape);
    const std::size_t count = root.size();
    for (std::size_t i = 0; i < count; ++i) {
        tree.Patch(tree.root + interior::kEntries + i * 28 + 24, std::string(4, '\0'));
    }
    // Also when the leaf's links agree with that.
    tree.Patch(page::kLeft, std::string(8, '\0'));
    TagCursor cursor(tree.Open(), tree.root, kShape);
    const std::string text = DamageOf([&] { Forward(cursor); });
    EXPECT_TRUE(text == "no error" || text.find("circle") != std::string::npos) << text;
}

TEST(DamagedTree, WithAWrongSiblingLinkEndsInAnError) {
    BareTree tree(ManyEntries(200), kShape);
    tree.Patch(kPageSize + page::kRight, std::string("\x00\x00\x00\x00", 4));
    TagCursor cursor(tree.Open(), tree.root, kShape);
    EXPECT_NE(DamageOf([&] { Forward(cursor); }).find("links"), std::string::npos);
    EXPECT_NE(DamageOf([&] { Backward(cursor); }).find("links"), std::string::npos);
}

TEST(DamagedTree, WithAPageOutsideTheFileEndsInAnError) {
    for (const std::string& child : {std::string("\x7F\xFF\xFE\x00", 4), std::string("\x00\x00\x00\x01", 4),
                                     std::string("\xFF\xFF\xFF\xFF", 4)}) {
        BareTree tree(ManyEntries(200), kShape);
        tree.Patch(tree.root + interior::kEntries + 24, child);
        TagCursor cursor(tree.Open(), tree.root, kShape);
        EXPECT_NE(DamageOf([&] { cursor.First(); }).find("offset"), std::string::npos);
    }
}

TEST(DamagedTree, CutShortEndsInAnErrorWithoutAMappingToo) {
    BareTree tree(ManyEntries(200), kShape);
    tree.memory.AllowMapping(false);
    CdxFile& file = tree.Open();
    tree.memory.Open("tree.cdx", {files::Access::ReadWrite})->Truncate(kPageSize);
    TagCursor cursor(file, tree.root, kShape);
    EXPECT_NE(DamageOf([&] { Forward(cursor); }), "no error");
}

}  // namespace
}  // namespace zu::dbf::cdx
