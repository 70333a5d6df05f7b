#include "host/technologies/dbf/cdx/CdxChecker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "host/technologies/dbf/ByteOrder.h"
#include "tests/unit/cdx/BuiltIndex.h"
#include "tests/unit/cdx/Bytes.h"

namespace zu::dbf::cdx {
namespace {

using expression::Storage;

constexpr std::uint32_t kFirstLeaf = 0xA00;
constexpr std::uint32_t kSecondLeaf = kFirstLeaf + kPageSize;

TestTable Numbered(int count) {
    TestTable table;
    table.Field("NAME", Storage::Character, 12).Field("NUM", Storage::NumberText, 6);
    for (int i = 1; i <= count; ++i)
        table.Add({"name" + std::to_string(10000 + i * 7919 % 10007), std::to_string(i)});
    return table;
}

class CdxChecker : public ::testing::Test {
protected:
    void Expect(const std::string& finding) {
        const std::string findings = index.Findings();
        EXPECT_NE(findings.find(finding), std::string::npos)
            << "expected: " << finding << "\nfound: " << findings;
    }
    std::uint32_t Root() { return index.Header("NAME").root; }

    TestTable table = Numbered(400);
    BuiltIndex index{table, {{"NAME", "NAME", ""}}};
};

TEST_F(CdxChecker, FindsNothingInASoundIndex) {
    EXPECT_EQ(index.Findings(), "");
}

TEST_F(CdxChecker, FindsKeysThatTheirRecordsHaveNoMore) {
    table.Set(77, 0, "other");
    Expect("the key of record 77 is not the one that the record has now");
}

TEST_F(CdxChecker, FindsRecordsWithoutAKey) {
    table.Add({"new"});
    Expect("record 401 has no key");
}

TEST_F(CdxChecker, FindsKeysWithoutARecord) {
    table.RemoveLast();
    Expect("record 400 is not in the table of 399 records");
}

TEST_F(CdxChecker, FindsRecordsWithTwoKeys) {
    CdxFile file(index.memory.Open("test.cdx", {}));
    index.Patch(kFirstLeaf + leaf::kEntries, AsText(file.Page(kFirstLeaf).data() + leaf::kEntries + 3, 2));
    Expect("has two keys");
    Expect("has no key");
}

TEST_F(CdxChecker, FindsAWrongCountOfFreeBytes) {
    index.Patch(kFirstLeaf + leaf::kFree, std::string("\x01\x00", 2));
    Expect("states 1 free bytes, has");
}

TEST(CdxCheckerOfEqualKeys, FindsAWrongOrder) {
    TestTable table;
    table.Field("NAME", Storage::Character, 4);
    for (int i = 0; i < 3; ++i)
        table.Add({"same"});
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    // The records of the first two entries change places.
    index.Patch(kFirstLeaf + leaf::kEntries, "\x02");
    index.Patch(kFirstLeaf + leaf::kEntries + 3, "\x01");
    EXPECT_NE(index.Findings().find("the key of record 1 is not behind that of record 2 (not in byte order)"),
              std::string::npos)
        << index.Findings();
}

TEST_F(CdxChecker, FindsSeparatorsThatAreNotTheLastKeyBelow) {
    index.Patch(Root() + interior::kEntries, "nama");
    Expect("entry 1 (record");
    Expect("does not repeat the last key below it");
}

TEST_F(CdxChecker, FindsWrongSiblingLinks) {
    index.Patch(kSecondLeaf + page::kRight, std::string("\xFF\xFF\xFF\xFF", 4));
    Expect("the links to the pages beside it");
}

TEST_F(CdxChecker, FindsPagesThatAreUsedTwice) {
    // The second entry of the root leads to the first leaf too.
    index.Patch(Root() + interior::kEntries + 20 + 16, std::string("\x00\x00\x0A\x00", 4));
    Expect("one that is used already");
}

TEST_F(CdxChecker, FindsRootsAndLeavesWithWrongMarks) {
    index.Patch(Root() + page::kAttributes, std::string("\x00\x00", 2));
    Expect("the root page is not marked as root");
    index.Patch(kFirstLeaf + page::kAttributes, std::string("\x03\x00", 2));
    Expect("a page below the root is marked as root");
}

TEST_F(CdxChecker, FindsPagesOutsideTheFile) {
    index.Patch(Root() + interior::kEntries + 16, std::string("\x70\x00\x00\x00", 4));
    Expect("no page of the file");
}

TEST_F(CdxChecker, FollowsTheListOfUnusedPages) {
    const auto size = static_cast<std::uint32_t>(index.memory.Get("test.cdx").size());
    std::string two(2 * kPageSize, '\0');
    StoreLittle<std::uint32_t>(reinterpret_cast<std::byte*>(two.data()), size + kPageSize);
    index.Patch(size, two);
    Expect("2 pages are neither used nor in the list of unused pages");
    std::string head(4, '\0');
    StoreLittle<std::uint32_t>(reinterpret_cast<std::byte*>(head.data()), size);
    index.Patch(4, head);
    EXPECT_EQ(index.Findings(), "");
    // The second page leads back to the first.
    index.Patch(size + kPageSize, head);
    Expect("the list of unused pages leads to no page of the file, or to a used one");
}

TEST_F(CdxChecker, OnlyRemarksOnTagsWhoseKeysCannotBeComputed) {
    index.Patch(index.HeaderOf("NAME") + kExpressionPool, "NOPE");
    CdxFile file(index.memory.Open("test.cdx", {}));
    const std::vector<Finding> findings = CheckCdx(file, table.Context());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].weight, Finding::Weight::Remark);
    EXPECT_EQ(findings[0].tag, "NAME");
    EXPECT_FALSE(HasFaults(findings));
}

TEST_F(CdxChecker, KeepsAFewDozenFindingsOfATagThatIsWrongThroughout) {
    for (std::uint32_t record = 1; record <= 400; ++record)
        table.Set(record, 0, "other");
    CdxFile file(index.memory.Open("test.cdx", {}));
    const std::vector<Finding> findings = CheckCdx(file, table.Context());
    EXPECT_EQ(findings.size(), 50U);
    EXPECT_EQ(findings.back().text, "there are more findings, which are left out");
}

TEST_F(CdxChecker, NamesFilesThatAreNoIndex) {
    index.memory.Open("test.cdx", {files::Access::ReadWrite})->Truncate(700);
    Expect("index file, page at offset 0");
}

TEST(CdxCheckerOfUniqueTags, FindsEqualKeysAndMissingOnes) {
    TestTable table;
    table.Field("NAME", Storage::Character, 4);
    for (const char* name : {"a", "b", "b", "c"})
        table.Add({name});
    TagDefinition tag{"NAME", "NAME", ""};
    BuiltIndex plain(table, {tag});
    plain.Patch(plain.HeaderOf("NAME") + 14, "\x61");
    EXPECT_NE(plain.Findings().find("record 2 and record 3 have one key"), std::string::npos)
        << plain.Findings();
    tag.unique = true;
    BuiltIndex unique(table, {tag});
    EXPECT_EQ(unique.Findings(), "");
    table.Set(3, 0, "x");
    EXPECT_NE(unique.Findings().find("record 3 has no key"), std::string::npos) << unique.Findings();
}

TEST(CdxCheckerOfFilteredTags, FindsRecordsThatDoNotBelong) {
    TestTable table = Numbered(20);
    BuiltIndex index(table, {{"NAME", "NAME", "NUM > 10"}});
    EXPECT_EQ(index.Findings(), "");
    table.Set(15, 1, "1");
    EXPECT_NE(index.Findings().find("record 15 is in the tag against the FOR condition"), std::string::npos);
    table.Set(15, 1, "15");
    table.Set(3, 1, "30");
    EXPECT_NE(index.Findings().find("record 3 has no key"), std::string::npos);
}

}  // namespace
}  // namespace zu::dbf::cdx
