#include "host/technologies/dbf/cdx/LeafSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "portable/error/Error.h"
#include "tests/unit/cdx/BareTree.h"

namespace zu::dbf::cdx {
namespace {

using Entries = BareTree::Entries;
using Records = std::vector<std::uint32_t>;

const KeyShape kShape{12, std::byte{' '}};

// Keys of few letters, many of them equal or beginnings of others, in some dozens of pages.
Entries ManyEntries() {
    std::mt19937 random(11);
    Entries entries;
    for (std::uint32_t record = 1; record <= 4000; ++record) {
        std::string key(1 + random() % 8, 'a');
        for (char& c : key)
            c = static_cast<char>('a' + random() % 4);
        key.resize(kShape.length, ' ');
        entries.emplace_back(key, record);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

KeyBounds Between(const std::string& low, const std::string& high) {
    KeyBounds bounds;
    bounds.low = KeyBuffer(std::as_bytes(std::span(low)));
    bounds.high = KeyBuffer(std::as_bytes(std::span(high)));
    return bounds;
}

Records Within(const Entries& entries, const std::string& low, const std::string& high) {
    Records records;
    for (const auto& [key, record] : entries)
        if (key >= low && key <= high) records.push_back(record);
    return records;
}

TEST(LeafSearch, FindsWhatLiesBetweenTheBoundsOrKnowsThatItDoesNotKnowAll) {
    const Entries entries = ManyEntries();
    BareTree tree(entries, kShape);
    Records records;
    LeafSearch leaf(tree.Open(), tree.root, kShape);
    std::size_t whole = 0;
    for (std::size_t i = 0; i < entries.size(); i += 3) {
        const std::string low = entries[i].first;
        for (const std::string& high : {low, low.substr(0, 5) + "~~~~~~~"}) {
            leaf.Find(Between(low, high), records);
            const Records wanted = Within(entries, low, high);
            if (leaf.isWholeBelow() && leaf.isWholeAbove()) {
                EXPECT_EQ(records, wanted) << low << " to " << high;
                ++whole;
            } else if (leaf.isWholeBelow()) {
                ASSERT_LE(records.size(), wanted.size());
                EXPECT_TRUE(std::equal(records.begin(), records.end(), wanted.begin())) << low;
            }
        }
    }
    EXPECT_GT(whole, 1000U);
}

TEST(LeafSearch, KnowsTheEntriesBesideAKeyThatIsNotThere) {
    const Entries entries = ManyEntries();
    BareTree tree(entries, kShape);
    Records records;
    LeafSearch leaf(tree.Open(), tree.root, kShape);
    const std::string missing = "bbba#       ";
    leaf.Find(Between(missing, missing), records);
    const auto above = std::lower_bound(entries.begin(), entries.end(), std::pair{missing, 0U});
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(leaf.above(), above->second);
    EXPECT_EQ(leaf.below(), std::prev(above)->second);
}

TEST(LeafSearch, IsWholeAtTheEndsOfTheTreeAndNotAtThoseOfAPage) {
    const Entries entries = ManyEntries();
    BareTree tree(entries, kShape);
    Records records;
    LeafSearch leaf(tree.Open(), tree.root, kShape);
    leaf.Find(Between(std::string(12, ' '), entries.front().first), records);
    EXPECT_TRUE(leaf.isWholeBelow());
    leaf.Find(Between(entries.back().first, std::string(12, '~')), records);
    EXPECT_TRUE(leaf.isWholeAbove());
    EXPECT_EQ(leaf.above(), LeafSearch::kNoRecord);
    // From a key in the middle to the end there are many pages.
    leaf.Find(Between(entries[2000].first, std::string(12, '~')), records);
    EXPECT_FALSE(leaf.isWholeAbove());
    std::size_t notBelow = 0;
    for (const auto& entry : entries) {
        leaf.Find(Between(entry.first, entry.first), records);
        if (!leaf.isWholeBelow()) ++notBelow;
    }
    EXPECT_GT(notBelow, 10U) << "keys at which a page begins";
}

TEST(LeafSearch, NoticesThatItsPageHasChanged) {
    BareTree tree({{"anna", 1}, {"bert", 2}}, kShape);
    tree.memory.AllowMapping(false);
    CdxFile& file = tree.Open();
    Records records;
    LeafSearch leaf(file, tree.root, kShape);
    leaf.Find(Between("bert        ", "bert        "), records);
    EXPECT_EQ(records, (Records{2}));
    file.Refresh();
    EXPECT_TRUE(leaf.IsUnchanged());
    tree.Patch(tree.root + kPageSize - 1, "z");
    file.Refresh();
    EXPECT_FALSE(leaf.IsUnchanged());
}

TEST(LeafSearch, RefusesAPageThatContradictsItself) {
    BareTree tree({{"anna", 1}, {"bert", 2}}, kShape);
    tree.Patch(tree.root + page::kCount, "\xFF\x7F");
    Records records;
    LeafSearch leaf(tree.Open(), tree.root, kShape);
    EXPECT_THROW(leaf.Find(Between("bert        ", "bert        "), records), Error);
}

}  // namespace
}  // namespace zu::dbf::cdx
