#include "host/technologies/dbf/cdx/IndexSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "host/technologies/dbf/cdx/TagDirectory.h"
#include "portable/error/Error.h"
#include "tests/unit/cdx/BuiltIndex.h"
#include "tests/unit/cdx/Bytes.h"

namespace zu::dbf::cdx {
namespace {

using expression::Storage;

TestTable Numbered(int count) {
    TestTable table;
    table.Field("NAME", Storage::Character, 12).Field("NUM", Storage::NumberText, 6);
    for (int i = 1; i <= count; ++i)
        table.Add({"name" + std::to_string(i * 7919 % 10007), std::to_string(i)});
    return table;
}

// Whether the tag NAME can be used, and why not.
std::string ReasonOf(BuiltIndex& index, const std::string& tag = "NAME") {
    IndexSet& indexes = index.Open();
    const auto& description = indexes.descriptions()[indexes.Find(tag).value()];
    EXPECT_EQ(description.usable, description.reason.empty());
    return description.reason;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(IndexSet, FindsTagsWithoutRegardToCase) {
    TestTable table = Numbered(3);
    BuiltIndex index(table, {{"NAME", "NAME", ""}, {"NUM", "NUM", ""}});
    EXPECT_EQ(index.Open().Find("num"), 1U);
    EXPECT_FALSE(index.Open().Find("NU"));
    EXPECT_FALSE(index.Open().Find(""));
}

TEST(IndexSet, TakesTheTagNamedLikeTheTableAsDefault) {
    TestTable table = Numbered(3);
    BuiltIndex index(table, {{"NAME", "NAME", ""}, {"TEST", "NUM", ""}});
    EXPECT_EQ(index.Open().Default(), 1U);
}

TEST(IndexSet, TakesTheFirstUsableTagAsDefaultOtherwise) {
    TestTable table = Numbered(3);
    BuiltIndex index(table, {{"ZZZ", "NAME", ""}, {"AAA", "NUM", ""}});
    EXPECT_EQ(index.Open().descriptions()[0].name, "ZZZ") << "the order in which the tags were made";
    EXPECT_EQ(index.Open().Default(), 0U);
    table.Set(3, 0, "changed");
    EXPECT_EQ(index.Open().Default(), 1U);
    table.Set(3, 1, "999");
    EXPECT_EQ(index.Open().Default(), std::nullopt);
}

TEST(StaleIndex, IsNoticedWhenRecordsWereAppended) {
    TestTable table = Numbered(5000);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    EXPECT_EQ(ReasonOf(index), "");
    table.Add({"new", "1"});
    EXPECT_TRUE(Contains(ReasonOf(index), "record 5001 is not in it")) << ReasonOf(index);
    EXPECT_EQ(index.Open().warnings().size(), 1U);
    EXPECT_TRUE(Contains(index.Open().warnings()[0], "index \"NAME\" of table \"TEST\" is not used"));
}

TEST(StaleIndex, IsNoticedWhenTheFirstOrLastRecordWasChanged) {
    for (const std::uint32_t record : {1U, 500U}) {
        TestTable table = Numbered(500);
        BuiltIndex index(table, {{"NAME", "NAME", ""}});
        table.Set(record, 0, "changed");
        EXPECT_TRUE(Contains(ReasonOf(index), "record " + std::to_string(record))) << ReasonOf(index);
    }
}

TEST(StaleIndex, IsNoticedWhenTheTableIsShorter) {
    TestTable table = Numbered(500);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    table.RemoveLast();
    EXPECT_TRUE(Contains(ReasonOf(index), "more than 499 keys")) << ReasonOf(index);
}

TEST(StaleIndex, IsNoticedWhenTheTableWasEmptied) {
    TestTable table = Numbered(1);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    table.RemoveLast();
    EXPECT_TRUE(Contains(ReasonOf(index), "keys for 0 records")) << ReasonOf(index);
}

TEST(StaleIndex, IsNoticedWhenARecordMeetsItsForConditionNoMore) {
    TestTable table = Numbered(100);
    BuiltIndex index(table, {{"NAME", "NAME", "NUM < 1000"}});
    EXPECT_EQ(ReasonOf(index), "");
    table.Set(100, 1, "2000");
    EXPECT_TRUE(Contains(ReasonOf(index), "against the FOR condition")) << ReasonOf(index);
}

TEST(StaleIndex, IsNotSuspectedForRecordsThatUniqueLeavesOut) {
    TestTable table;
    table.Field("NAME", Storage::Character, 4);
    for (int i = 0; i < 20; ++i)
        table.Add({"same"});
    TagDefinition tag{"NAME", "NAME", ""};
    tag.unique = true;
    BuiltIndex index(table, {tag});
    EXPECT_EQ(ReasonOf(index), "");
    table.Set(1, 0, "else");
    EXPECT_TRUE(Contains(ReasonOf(index), "record 1 is in it under a key that it does not have"))
        << ReasonOf(index);
}

TEST(StaleIndex, RefusesOrdersAndSearchesWithTheReason) {
    TestTable table = Numbered(10);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    table.Add({"new", "1"});
    try {
        index.Order("NAME");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Unsupported);
        EXPECT_TRUE(Contains(error.what(), "cannot be used: the index is not up to date")) << error.what();
    }
    EXPECT_THROW(index.Seek("NAME", {}), Error);
}

TEST(StaleIndex, IsLookedAtAgainByARefresh) {
    TestTable table = Numbered(10);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    IndexSet& indexes = index.Open();
    table.Add({"new", "1"});
    indexes.Refresh();
    EXPECT_FALSE(indexes.descriptions()[0].usable);
    table.RemoveLast();
    indexes.Refresh();
    EXPECT_TRUE(indexes.descriptions()[0].usable);
}

TEST(UnusableTag, IsOneWhoseKeyDoesNotCompile) {
    TestTable table = Numbered(10);
    BuiltIndex index(table, {{"NAME", "NAME", ""}, {"NUM", "NUM", ""}});
    index.Patch(index.HeaderOf("NAME") + kExpressionPool, "NOPE");
    EXPECT_TRUE(Contains(ReasonOf(index), "NOPE")) << ReasonOf(index);
    EXPECT_EQ(ReasonOf(index, "NUM"), "");
    EXPECT_EQ(index.Open().descriptions()[0].expression, "NOPE");
}

TEST(UnusableTag, IsOneOfAnotherCollation) {
    TestTable table = Numbered(10);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    index.Patch(index.HeaderOf("NAME") + 494, "GENERAL");
    EXPECT_TRUE(Contains(ReasonOf(index), "GENERAL")) << ReasonOf(index);
    index.Patch(index.HeaderOf("NAME") + 494, "MACHINE");
    EXPECT_EQ(ReasonOf(index), "");
}

TEST(UnusableTag, IsOneWhoseKeyLengthIsOfNoForm) {
    TestTable table = Numbered(10);
    for (const char* length : {"\x00\x00", "\xF1\x00", "\xFF\xFF", "\x05\x00"}) {
        BuiltIndex index(table, {{"NUM", "NUM", ""}});
        index.Patch(index.HeaderOf("NUM") + 12, std::string(length, 2));
        EXPECT_NE(ReasonOf(index, "NUM"), "");
    }
}

TEST(UnusableTag, IsOneWhoseRootIsNoPage) {
    TestTable table = Numbered(10);
    for (const std::string& root : {std::string("\x01\x00\x00\x00", 4), std::string("\x00\x00\x00\x7F", 4),
                                    std::string("\xFF\xFF\xFF\xFF", 4), std::string("\x00\x06\x00\x00", 4)}) {
        BuiltIndex index(table, {{"NAME", "NAME", ""}});
        index.Patch(index.HeaderOf("NAME"), root);
        EXPECT_NE(ReasonOf(index), "");
    }
}

TEST(DamagedIndex, IsRejectedByTheWalkThatMeetsTheFault) {
    TestTable table;
    table.Field("NAME", Storage::Character, 40);
    std::mt19937 random(2);
    for (int i = 0; i < 20000; ++i) {
        std::string name(40, ' ');
        for (char& c : name)
            c = static_cast<char>('A' + random() % 26);
        table.Add({name});
    }
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    CdxFile file(index.memory.Open("test.cdx", {}));
    ASSERT_GT(file.pageCount(), 1024U) << "too small to escape the first look";
    // A leaf that no probe touches, with entries of four bytes: in it one entry leads to the record of
    // another.
    const std::uint32_t leafOffset = 0xA00 + 20 * kPageSize;
    index.Patch(leafOffset + leaf::kEntries, AsText(file.Page(leafOffset).data() + leaf::kEntries + 4, 2));
    IndexSet& indexes = index.Open();
    EXPECT_TRUE(indexes.descriptions()[0].usable);
    try {
        indexes.Walk(0, [](std::uint32_t) { return true; });
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Damaged);
        EXPECT_TRUE(Contains(error.what(), "twice")) << error.what();
        EXPECT_TRUE(Contains(error.what(), "index \"NAME\" of table \"TEST\"")) << error.what();
    }
    EXPECT_FALSE(indexes.descriptions()[0].usable);
    EXPECT_THROW(indexes.Walk(0, [](std::uint32_t) { return true; }), Error);
    EXPECT_FALSE(indexes.Default());
}

TEST(DamagedIndex, ThatIsNoIndexHasNoTagsAndAWarning) {
    TestTable table = Numbered(3);
    for (const std::string& content :
         {std::string(), std::string("x"), std::string(1024, '\0'), std::string(1024, '\xFF'),
          std::string(5000, 'A'), std::string(1023, '\x60')}) {
        files::MemoryFiles memory;
        memory.Put("bad.cdx", std::as_bytes(std::span(content.data(), content.size())));
        const auto indexes = IndexSet::Open(memory.Open("bad.cdx", {}), table.Context());
        EXPECT_TRUE(indexes->descriptions().empty());
        ASSERT_EQ(indexes->warnings().size(), 1U);
        EXPECT_TRUE(Contains(indexes->warnings()[0], "bad.cdx")) << indexes->warnings()[0];
        EXPECT_FALSE(indexes->Default());
    }
}

TEST(DamagedIndex, OfAnotherPageSizeIsRefusedPolitely) {
    TestTable table = Numbered(3);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    index.Patch(16, "\xCD\xAB");
    EXPECT_TRUE(Contains(index.Open().warnings().at(0), "another size"));
    index.Patch(16, std::string("\x00\x08\x00\x04RCHB", 8));
    EXPECT_TRUE(Contains(index.Open().warnings().at(0), "another size"));
    index.Patch(16, std::string("\x00\x04\x00\x02RCHB", 8));
    EXPECT_EQ(index.Open().descriptions().size(), 1U) << "the usual sizes, stated";
}

TEST(CompactIndex, WithoutTagsIsReadAsOneTagNamedLikeTheTable) {
    TestTable table = Numbered(3);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    // The header of the tag in the place of the file's.
    std::array<std::byte, kHeaderSize> bytes{};
    TagHeader header = index.Header("NAME");
    header.options = kCompact;
    header.Store(bytes);
    index.Patch(0, AsText(bytes.data(), bytes.size()));
    EXPECT_EQ(index.Order("test").size(), 3U);
}

TEST(DamagedIndex, OfEverySortNeverCrashesOrHangs) {
    TestTable table = Numbered(300);
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        TagDefinition back{"BACK", "NUM", ""};
        back.descending = true;
        BuiltIndex index(table, {{"NAME", "NAME", ""}, back});
        const auto size = static_cast<std::uint32_t>(index.memory.Get("test.cdx").size());
        for (int change = 0; change < 3; ++change) {
            // Mostly bytes that mean something: the first ones of pages and headers.
            const std::uint32_t start = random() % (size / kPageSize) * kPageSize;
            const std::uint32_t within = random() % (random() % 2 == 0 ? 32 : kPageSize);
            index.Patch(start + within, std::string(1, static_cast<char>(random())));
        }
        if (round % 10 == 0)
            index.memory.Open("test.cdx", {files::Access::ReadWrite})->Truncate(random() % size);
        index.memory.AllowMapping(round % 2 == 0);
        IndexSet& indexes = index.Open();
        for (std::size_t i = 0; i < indexes.descriptions().size(); ++i) {
            std::size_t steps = 0;
            const auto take = [&](std::uint32_t record) {
                EXPECT_TRUE(record >= 1 && record <= 300);
                return ++steps < 10000;
            };
            try {
                indexes.Walk(i, take);
                indexes.Seek(i, {{TextValue(u"1"), false}}, take);
            } catch (const Error& error) {
                EXPECT_NE(std::string(error.what()), "");
            }
            EXPECT_LT(steps, 10000U);
        }
        Records records;
        const auto condition = expression::Program::Compile(u"NUM = 7", table.layout);
        indexes.Candidates(condition, records);
        index.Findings();
    }
}

}  // namespace
}  // namespace zu::dbf::cdx
