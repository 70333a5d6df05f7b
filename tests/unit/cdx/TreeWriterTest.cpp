#include "host/technologies/dbf/cdx/TreeWriter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/TreeChecker.h"
#include "tests/unit/cdx/BareTree.h"

namespace zu::dbf::cdx {
namespace {

BareTree::Entries Numbered(std::size_t count) {
    BareTree::Entries entries;
    for (std::size_t i = 0; i < count; ++i) {
        entries.emplace_back(std::to_string(1000000 + i), static_cast<std::uint32_t>(i + 1));
    }
    return entries;
}

// All findings of the tree checker, as text.
std::string Check(BareTree& tree, std::size_t& entries, PageUse& use) {
    std::vector<Finding> findings;
    FindingList list(findings, "T");
    TreeChecker(tree.Open(), use, list, tree.shape, [&](const std::byte*, std::uint32_t, std::uint32_t) {
        ++entries;
    }).Check(tree.root);
    std::string text;
    for (const Finding& finding : findings)
        text += finding.Describe() + "\n";
    return text;
}

TEST(TreeWriter, MakesSoundTreesOfEverySize) {
    for (const std::size_t keyLength : {7, 10, 30, 100, 239, 240}) {
        for (const Filling filling : {Filling::Roomy, Filling::Full}) {
            for (const std::size_t count : {0, 1, 2, 3, 5, 20, 40, 41, 300, 1500}) {
                BareTree tree(Numbered(count), {keyLength, std::byte{' '}}, filling);
                PageUse use(tree.Open().pageCount());
                std::size_t entries = 0;
                EXPECT_EQ(Check(tree, entries, use), "") << keyLength << " " << count;
                EXPECT_EQ(entries, count);
                EXPECT_EQ(use.unused(), 0U);
            }
        }
    }
}

TEST(TreeWriter, MarksOnlyTheTopPageAsRoot) {
    BareTree tree(Numbered(1), {10, std::byte{' '}});
    EXPECT_EQ(PageHeader::Parse(tree.Open().Page(tree.root), 0).attributes, kRootPage | kLeafPage);
    BareTree greater(Numbered(300), {10, std::byte{' '}});
    EXPECT_EQ(PageHeader::Parse(greater.Open().Page(greater.root), 0).attributes, kRootPage);
    EXPECT_EQ(PageHeader::Parse(greater.Open().Page(0), 0).attributes, kLeafPage);
}

TEST(TreeWriter, LeavesRoomUnlessToldToFillThePages) {
    const std::size_t roomy = BareTree(Numbered(5000), {10, std::byte{' '}}).Open().pageCount();
    const std::size_t full = BareTree(Numbered(5000), {10, std::byte{' '}}, Filling::Full).Open().pageCount();
    EXPECT_GT(roomy, full);
    EXPECT_LT(roomy, full * 5 / 4);
}

}  // namespace
}  // namespace zu::dbf::cdx
