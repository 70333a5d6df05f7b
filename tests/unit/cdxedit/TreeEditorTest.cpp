#include "host/technologies/dbf/cdx/TreeEditor.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "host/technologies/dbf/cdx/LeafPacker.h"
#include "host/technologies/dbf/cdx/LeafPage.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {
namespace {

using Page = std::array<std::byte, kPageSize>;
using Entry = std::pair<std::string, std::uint32_t>;

// Pages in memory; knows which ones are in use.
class MemoryPages final : public PageStore {
public:
    PageBytes Read(std::uint32_t offset) override {
        const auto page = pages.find(offset);
        if (page == pages.end()) throw Error(ErrorKind::Damaged, "no page at " + std::to_string(offset));
        copy = page->second;  // a caller that keeps the bytes too long shall see them change
        return copy;
    }
    void Write(std::uint32_t offset, PageBytes bytes) override {
        copy.fill(std::byte{0xEE});
        ASSERT_TRUE(pages.count(offset)) << "a page that was never allocated is written";
        std::copy(bytes.begin(), bytes.end(), pages[offset].begin());
    }
    std::uint32_t Allocate() override {
        std::uint32_t offset = end;
        if (free.empty()) {
            end += kPageSize;
        } else {
            offset = free.back();
            free.pop_back();
        }
        pages[offset].fill(std::byte{0});
        return offset;
    }
    void Release(std::uint32_t offset) override {
        ASSERT_EQ(pages.erase(offset), 1U) << "a page is released twice";
        free.push_back(offset);
    }

    std::map<std::uint32_t, Page> pages;
    std::vector<std::uint32_t> free;
    std::uint32_t end = 0;
    Page copy{};
};

class Tree {
public:
    explicit Tree(std::size_t keyLength, std::byte fill = std::byte{0x20})
        : shape{keyLength, fill}, root(pages.Allocate()), editor(pages, shape, root) {
        PageHeader header;
        header.attributes = kRootPage;
        LeafPacker packer(shape, LeafLayout::For(keyLength, 1));
        Page bytes{};
        packer.Store(header, bytes);
        pages.Write(root, bytes);
    }

    std::string Key(const std::string& text) const {
        std::string key = text.substr(0, shape.length);
        key.resize(shape.length, static_cast<char>(shape.fill));
        return key;
    }
    static const std::byte* Raw(const std::string& key) {
        return reinterpret_cast<const std::byte*>(key.data());
    }
    bool Insert(const std::string& text, std::uint32_t record) {
        return editor.Insert(Raw(Key(text)), record);
    }
    bool Remove(const std::string& text, std::uint32_t record) {
        return editor.Remove(Raw(Key(text)), record);
    }

    // Walks the whole tree, checks every rule of its shape, and answers the entries in order.
    std::vector<Entry> Check() {
        entries.clear();
        levels.clear();
        visited.clear();
        Visit(root, 0);
        for (const auto& [depth, pagesOfLevel] : levels) {
            for (std::size_t i = 0; i < pagesOfLevel.size(); ++i) {
                const PageHeader header = PageHeader::Parse(pages.Read(pagesOfLevel[i]), pagesOfLevel[i]);
                EXPECT_EQ(header.left, i ? pagesOfLevel[i - 1] : kNoPage) << "level " << depth;
                EXPECT_EQ(header.right, i + 1 < pagesOfLevel.size() ? pagesOfLevel[i + 1] : kNoPage)
                    << "level " << depth;
            }
        }
        EXPECT_EQ(visited.size(), pages.pages.size()) << "a page is in use and in no tree";
        for (std::size_t i = 1; i < entries.size(); ++i)
            EXPECT_LT(entries[i - 1], entries[i]);
        return entries;
    }
    std::size_t depth() const { return levels.size(); }

    KeyShape shape;
    MemoryPages pages;
    std::uint32_t root;
    TreeEditor editor;

private:
    Entry Visit(std::uint32_t offset, std::size_t level) {
        EXPECT_TRUE(visited.insert(offset).second) << "a page is reached twice";
        EXPECT_LT(level, kMaxDepth);
        const auto found = pages.pages.find(offset);
        if (found == pages.pages.end()) {
            ADD_FAILURE() << "a page that is not in use is reached";
            return {};
        }
        const Page bytes = found->second;
        const PageHeader header = PageHeader::Parse(bytes, offset);
        EXPECT_EQ(header.isRoot(), level == 0);
        levels[level].push_back(offset);
        if (header.isLeaf()) {
            LeafPage leaf;
            leaf.Unpack(bytes, offset, shape);
            EXPECT_EQ(leaf.statedFree(), leaf.countedFree());
            if (level > 0) {
                EXPECT_GT(leaf.size(), 0U);
            }
            for (std::size_t i = 0; i < leaf.size(); ++i)
                entries.emplace_back(std::string(reinterpret_cast<const char*>(leaf.key(i)), shape.length),
                                     leaf.record(i));
            return entries.empty() ? Entry{} : entries.back();
        }
        const InteriorPage page(bytes, offset, shape);
        Entry last;
        for (std::size_t i = 0; i < page.size(); ++i) {
            last = Visit(page.child(i), level + 1);
            EXPECT_EQ(last, Entry(std::string(reinterpret_cast<const char*>(page.key(i)), shape.length),
                                  page.record(i)))
                << "the entry of an interior page is not the last one of its child";
        }
        return last;
    }

    std::vector<Entry> entries;
    std::map<std::size_t, std::vector<std::uint32_t>> levels;
    std::set<std::uint32_t> visited;
};

TEST(TreeEditor, RefusesAnEntryThatIsThereAndOneThatIsNot) {
    Tree tree(10);
    EXPECT_TRUE(tree.Insert("A", 1));
    EXPECT_FALSE(tree.Insert("A", 1));
    EXPECT_TRUE(tree.Insert("A", 2));
    EXPECT_FALSE(tree.Remove("A", 3));
    EXPECT_FALSE(tree.Remove("B", 1));
    EXPECT_TRUE(tree.Remove("A", 1));
    EXPECT_EQ(tree.Check(), (std::vector<Entry>{{tree.Key("A"), 2}}));
}

TEST(TreeEditor, FindsTheLowestRecordOfAKey) {
    Tree tree(4);
    for (std::uint32_t record = 900; record > 0; --record)
        tree.Insert(record % 3 ? "AAA" : "BBB", record);
    EXPECT_EQ(tree.editor.Find(Tree::Raw(tree.Key("AAA"))), 1U);
    EXPECT_EQ(tree.editor.Find(Tree::Raw(tree.Key("BBB"))), 3U);
    EXPECT_EQ(tree.editor.Find(Tree::Raw(tree.Key("AB"))), std::nullopt);
    EXPECT_EQ(tree.editor.Find(Tree::Raw(tree.Key("CCC"))), std::nullopt);
}

TEST(TreeEditor, KeysThatComeInOrderFillThePages) {
    Tree tree(10);
    const std::uint32_t count = 20000;
    for (std::uint32_t record = 1; record <= count; ++record) {
        std::string digits = std::to_string(record);
        digits.insert(0, 10 - digits.size(), ' ');
        ASSERT_TRUE(tree.Insert(digits, record));
    }
    EXPECT_EQ(tree.Check().size(), count);
    EXPECT_GE(tree.depth(), 3U);
    // Three bytes of entry and at most two new bytes of key: about a hundred keys a page, none half empty.
    EXPECT_LT(tree.pages.pages.size(), count / 85);
}

TEST(TreeEditor, TheRootKeepsItsPageThroughGrowthAndDecline) {
    Tree tree(8);
    const auto root = tree.root;
    for (std::uint32_t record = 1; record <= 3000; ++record)
        tree.Insert(std::to_string(record * 7919 % 10007), record);
    tree.Check();
    EXPECT_GE(tree.depth(), 2U);
    for (std::uint32_t record = 1; record <= 3000; ++record)
        ASSERT_TRUE(tree.Remove(std::to_string(record * 7919 % 10007), record));
    EXPECT_TRUE(tree.Check().empty());
    EXPECT_EQ(tree.root, root);
    EXPECT_EQ(tree.pages.pages.size(), 1U) << "an empty tree is its root page alone";
}

TEST(TreeEditor, PagesThatBecameFreeAreUsedAgain) {
    Tree tree(20);
    for (int round = 0; round < 5; ++round) {
        for (std::uint32_t record = 1; record <= 2000; ++record)
            tree.Insert("key " + std::to_string(record), record);
        const auto end = tree.pages.end;
        for (std::uint32_t record = 1; record <= 2000; ++record)
            tree.Remove("key " + std::to_string(record), record);
        for (std::uint32_t record = 1; record <= 2000; ++record)
            tree.Insert("key " + std::to_string(record), record);
        EXPECT_LE(tree.pages.end, end);
        for (std::uint32_t record = 1; record <= 2000; ++record)
            tree.Remove("key " + std::to_string(record), record);
    }
    EXPECT_TRUE(tree.Check().empty());
}

TEST(TreeEditor, ManyRemovalsDoNotLeaveEmptyPages) {
    Tree tree(12);
    for (std::uint32_t record = 1; record <= 20000; ++record)
        tree.Insert(std::to_string(record), record);
    const auto full = tree.pages.pages.size();
    for (std::uint32_t record = 1; record <= 20000; ++record)
        if (record % 10) {
            tree.Remove(std::to_string(record), record);
        }
    EXPECT_EQ(tree.Check().size(), 2000U);
    EXPECT_LT(tree.pages.pages.size(), full / 3);
}

TEST(TreeEditor, AGreaterRecordNumberWidensItsPageOnly) {
    Tree tree(10);
    for (std::uint32_t record = 1; record <= 500; ++record)
        tree.Insert(std::to_string(record), record);
    EXPECT_TRUE(tree.Insert("2505", 0xFFFFFFF0));
    EXPECT_TRUE(tree.Insert("9", 70000));
    EXPECT_EQ(tree.Check().size(), 502U);
    EXPECT_EQ(tree.editor.Find(Tree::Raw(tree.Key("2505"))), 0xFFFFFFF0);
}

TEST(TreeEditor, ADamagedTreeEndsInAnErrorAndNotInACircle) {
    Tree tree(10);
    for (std::uint32_t record = 1; record <= 2000; ++record)
        tree.Insert(std::to_string(record), record);
    // Every child of the root is the root itself.
    Page bytes = tree.pages.pages[tree.root];
    const InteriorPage page(bytes, tree.root, tree.shape);
    InteriorPacker packer(tree.shape, page.size());
    for (std::size_t i = 0; i < page.size(); ++i)
        packer.Add(page.key(i), page.record(i), tree.root);
    Page circle{};
    packer.Store(page.header(), circle);
    tree.pages.pages[tree.root] = circle;
    EXPECT_THROW(tree.Insert("500", 5000), Error);
    EXPECT_THROW(tree.Remove("500", 500), Error);
}

struct Mix {
    const char* name;
    std::size_t keyLength;
    unsigned char fill;
    int alphabet;  // few letters: many equal keys and long common prefixes
    int lengths;   // key texts have up to this many characters
    unsigned seed;
};

class TreeModel : public ::testing::TestWithParam<Mix> {};

TEST_P(TreeModel, AgreesWithASetAfterRandomChanges) {
    const Mix mix = GetParam();
    Tree tree(mix.keyLength, static_cast<std::byte>(mix.fill));
    std::set<Entry> model;
    std::mt19937 random(mix.seed);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto text = [&] {
        std::string key;
        const int length = below(mix.lengths + 1);
        for (int i = 0; i < length; ++i)
            key += static_cast<char>(mix.alphabet == 256 ? below(256) : 'A' + below(mix.alphabet));
        return tree.Key(key);
    };
    for (int round = 0; round < 40; ++round) {
        // The tree grows in some rounds and shrinks in others.
        const int inserts = round % 8 < 5 ? 8 : 2;
        for (int i = 0; i < 300; ++i) {
            if (below(10) < inserts || model.empty()) {
                const Entry entry{text(), static_cast<std::uint32_t>(1 + below(round < 20 ? 3000 : 3000000))};
                ASSERT_EQ(tree.editor.Insert(Tree::Raw(entry.first), entry.second),
                          model.insert(entry).second);
            } else {
                auto victim = model.lower_bound({text(), 0});
                if (victim == model.end()) victim = model.begin();
                ASSERT_TRUE(tree.editor.Remove(Tree::Raw(victim->first), victim->second));
                model.erase(victim);
            }
        }
        ASSERT_EQ(tree.Check(), std::vector<Entry>(model.begin(), model.end())) << "round " << round;
    }
    while (!model.empty()) {
        auto victim = model.lower_bound({text(), 0});
        if (victim == model.end()) victim = model.begin();
        ASSERT_TRUE(tree.editor.Remove(Tree::Raw(victim->first), victim->second));
        model.erase(victim);
        if (model.size() % 500 == 0) {
            ASSERT_EQ(tree.Check(), std::vector<Entry>(model.begin(), model.end()));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Keys, TreeModel,
    ::testing::Values(Mix{"ShortTexts", 5, 0x20, 4, 5, 1}, Mix{"Texts", 30, 0x20, 26, 30, 2},
                      Mix{"LikeTexts", 60, 0x20, 2, 60, 3}, Mix{"LongestKeys", 240, 0x20, 3, 240, 4},
                      Mix{"Numbers", 8, 0x00, 256, 8, 5}, Mix{"Integers", 4, 0x00, 256, 4, 6},
                      Mix{"Logicals", 1, 0x00, 2, 1, 7}, Mix{"TextsWithBlanksInside", 12, 'A', 3, 12, 8}),
    [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace zu::dbf::cdx
