#include "host/technologies/dbf/cdx/CdxBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/TagDirectory.h"
#include "portable/error/Error.h"
#include "tests/unit/cdx/BuiltIndex.h"

namespace zu::dbf::cdx {
namespace {

using expression::Storage;

// Four people, two of one name; number, birthday and a mark.
TestTable People() {
    TestTable table;
    table.Field("NAME", Storage::Character, 10)
        .Field("AGE", Storage::NumberText, 6, 2)
        .Field("BORN", Storage::DateText, 8)
        .Field("ACTIVE", Storage::LogicalText, 1);
    table.Add({"Miller", "30", "19940310", "T"})
        .Add({"Abel", "-1.5", "20010101", "F"})
        .Add({"Miller", "7.25", "", "?"})
        .Add({"zorn", "", "19931231", "T"}, true);
    return table;
}

ErrorKind BuildError(TestTable& table, const std::vector<TagDefinition>& tags, std::string* text = nullptr) {
    try {
        BuiltIndex index(table, tags);
    } catch (const Error& error) {
        if (text != nullptr) *text = error.what();
        return error.kind();
    }
    ADD_FAILURE() << "no error";
    return ErrorKind::Internal;
}

TEST(CdxBuilder, OrdersTextsByBytesAndEqualKeysByRecord) {
    TestTable table = People();
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    EXPECT_EQ(index.Order("NAME"), (Records{2, 1, 3, 4}));
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, OrdersNumbersByValue) {
    TestTable table = People();
    BuiltIndex index(table, {{"AGE", "AGE", ""}});
    EXPECT_EQ(index.Order("AGE"), (Records{2, 4, 3, 1}));
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, OrdersDatesWithTheEmptyDateFirst) {
    TestTable table = People();
    BuiltIndex index(table, {{"BORN", "BORN", ""}});
    EXPECT_EQ(index.Order("BORN"), (Records{3, 4, 1, 2}));
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, PutsLogicalValuesThatAreNotSetToTheFalseOnes) {
    TestTable table = People();
    BuiltIndex index(table, {{"ACTIVE", "ACTIVE", ""}});
    EXPECT_EQ(index.Order("ACTIVE"), (Records{2, 3, 1, 4}));
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, WalksDescendingTagsBackwardsAlsoAmongEqualKeys) {
    TestTable table = People();
    TagDefinition tag{"NAME", "NAME", ""};
    tag.descending = true;
    BuiltIndex index(table, {tag});
    EXPECT_EQ(index.Order("NAME"), (Records{4, 3, 1, 2}));
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, KeepsTheFirstRecordOfEqualKeysInAUniqueTag) {
    TestTable table = People();
    TagDefinition tag{"NAME", "NAME", ""};
    tag.unique = true;
    BuiltIndex index(table, {tag});
    EXPECT_EQ(index.Order("NAME"), (Records{2, 1, 4}));
    EXPECT_EQ(index.Header("NAME").options, 0x61);
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, RefusesEqualKeysInACandidateTag) {
    TestTable table = People();
    TagDefinition tag{"NAME", "NAME", ""};
    tag.candidate = true;
    std::string text;
    EXPECT_EQ(BuildError(table, {tag}, &text), ErrorKind::AlreadyExists);
    EXPECT_NE(text.find("records 1 and 3"), std::string::npos) << text;
    tag.key = "BORN";
    BuiltIndex index(table, {tag});
    EXPECT_EQ(index.Header("NAME").options, 0x64);
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, TakesOnlyRecordsThatMeetTheForCondition) {
    TestTable table = People();
    BuiltIndex index(table, {{"LIVE", "NAME", ".NOT. DELETED()"}, {"OLD", "AGE", "AGE > 7"}});
    EXPECT_EQ(index.Order("LIVE"), (Records{2, 1, 3}));
    EXPECT_EQ(index.Order("OLD"), (Records{3, 1}));
    EXPECT_EQ(index.Header("LIVE").options, 0x68);
    EXPECT_EQ(index.Header("LIVE").filter, ".NOT. DELETED()");
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, IndexesExpressionsOfSeveralFields) {
    TestTable table = People();
    BuiltIndex index(table, {{"BOTH", "UPPER(NAME)+DTOS(BORN)", ""}, {"STRS", "STR(AGE,6,2)+NAME", ""}});
    EXPECT_EQ(index.Order("BOTH"), (Records{2, 3, 1, 4}));
    EXPECT_EQ(index.Header("BOTH").keyLength, 18);
    EXPECT_EQ(index.Header("STRS").keyLength, 16);
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, StoresIntegersDoublesCurrenciesAndMomentsInTheirOrder) {
    TestTable table;
    table.Field("I", Storage::Integer32, 4)
        .Field("B", Storage::Double, 8)
        .Field("Y", Storage::Currency, 8)
        .Field("T", Storage::DateTime, 8);
    const auto add = [&](std::int32_t i, double b, std::int64_t y, std::int32_t day, std::int32_t ms) {
        table.Add({Int32Bytes(i), DoubleBytes(b), Int64Bytes(y), MomentBytes(day, ms)});
    };
    add(0, 0.0, 0, 0, 0);
    add(-1, -0.0, -1, 2451545, 1000);
    add(1, 1e300, 1, 2451545, 0);
    add(std::numeric_limits<std::int32_t>::min(), -1e-300, std::numeric_limits<std::int64_t>::min(), 2415386,
        5);
    add(std::numeric_limits<std::int32_t>::max(), 0.5, std::numeric_limits<std::int64_t>::max(), 2488069, 0);
    BuiltIndex index(table,
                     {{"I", "I", ""}, {"B", "B", ""}, {"Y", "Y", ""}, {"T", "T", ""}, {"I1", "I+1", ""}});
    EXPECT_EQ(index.Order("I"), (Records{4, 2, 1, 3, 5}));
    EXPECT_EQ(index.Header("I").keyLength, 4);
    EXPECT_EQ(index.Order("I1"), (Records{4, 2, 1, 3, 5}));
    EXPECT_EQ(index.Header("I1").keyLength, 8);
    EXPECT_EQ(index.Order("B"), (Records{4, 1, 2, 5, 3})) << "minus zero is zero";
    EXPECT_EQ(index.Order("Y"), (Records{4, 2, 1, 3, 5}));
    EXPECT_EQ(index.Order("T"), (Records{1, 4, 3, 2, 5}));
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, PutsNullsBeforeEveryValue) {
    TestTable table;
    table.NullableField("NAME", Storage::Character, 5).NullableField("I", Storage::Integer32, 4);
    table.NullableField("D", Storage::DateText, 8);
    table.Add({"", Int32Bytes(-5), "20200101"})
        .Add({"A", Int32Bytes(2), ""})
        .Add({"B", Int32Bytes(1), "20200101"});
    for (const std::size_t field : {0U, 1U, 2U})
        table.SetNull(3, field);
    BuiltIndex index(table, {{"NAME", "NAME", ""}, {"I", "I", ""}, {"D", "D", ""}});
    EXPECT_EQ(index.Order("NAME"), (Records{3, 1, 2}));
    EXPECT_EQ(index.Order("I"), (Records{3, 1, 2}));
    EXPECT_EQ(index.Order("D"), (Records{3, 2, 1}));
    EXPECT_EQ(index.Header("NAME").keyLength, 6);
    EXPECT_EQ(index.Header("I").keyLength, 5);
    EXPECT_EQ(index.Header("D").options, 0x62);
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, BuildsIndexesOfEmptyTables) {
    TestTable table;
    table.Field("NAME", Storage::Character, 10);
    BuiltIndex index(table, {{"NAME", "NAME", ""}});
    EXPECT_EQ(index.Order("NAME"), Records{});
    EXPECT_EQ(index.Findings(), "");
    EXPECT_TRUE(index.Open().descriptions()[0].usable);
}

TEST(CdxBuilder, BuildsAnIndexWithoutTags) {
    TestTable table = People();
    BuiltIndex index(table, {});
    EXPECT_TRUE(index.Open().descriptions().empty());
    EXPECT_EQ(index.Open().warnings(), std::vector<std::string>{});
    EXPECT_EQ(index.Findings(), "");
}

TEST(CdxBuilder, LaysTheFileOutLikeItsMakersDo) {
    TestTable table = People();
    BuiltIndex index(table, {{"second", "NAME", ""}, {"First", "AGE", ""}});
    CdxFile file(index.memory.Open("test.cdx", {}));
    const TagHeader header = file.Header(0);
    EXPECT_EQ(header.root, 0x400U);
    EXPECT_EQ(header.options, 0xE0);
    EXPECT_EQ(header.keyLength, 10);
    const std::vector<DirectoryEntry> tags = ReadTagDirectory(file);
    ASSERT_EQ(tags.size(), 2U);
    EXPECT_EQ(tags[0].name, "SECOND");
    EXPECT_EQ(tags[0].header, 0x600U);
    EXPECT_EQ(tags[1].name, "FIRST");
    EXPECT_EQ(file.Header(0x600).root, 0xA00U);
    EXPECT_EQ(file.size(), 0x600U + 2 * (kHeaderSize + kPageSize));
}

TEST(CdxBuilder, SplitsADirectoryThatOnePageCannotHold) {
    TestTable table = People();
    std::vector<TagDefinition> tags;
    tags.reserve(200);
    for (int i = 0; i < 200; ++i)
        tags.push_back({"T" + std::to_string(7919 * i % 100003), "NAME", ""});
    BuiltIndex index(table, tags);
    EXPECT_EQ(index.Open().descriptions().size(), 200U);
    EXPECT_EQ(index.Open().warnings(), std::vector<std::string>{});
    for (const TagDefinition& tag : tags)
        EXPECT_TRUE(index.Open().Find(tag.name));
    CdxFile file(index.memory.Open("test.cdx", {}));
    EXPECT_FALSE(HasFaults(CheckCdx(file, table.Context())));
}

TEST(CdxBuilder, RefusesNamesThatATagCannotHave) {
    TestTable table = People();
    for (const char* name : {"", "TOOLONGNAME", "A B", "1A", "A-B", "\xC4"}) {
        EXPECT_EQ(BuildError(table, {{name, "NAME", ""}}), ErrorKind::InvalidArgument) << name;
    }
    EXPECT_EQ(BuildError(table, {{"A", "NAME", ""}, {"a", "AGE", ""}}), ErrorKind::InvalidArgument);
}

TEST(CdxBuilder, RefusesKeysThatNoIndexCanHold) {
    TestTable table;
    table.Field("NOTES", Storage::Memo, 10)
        .Field("WIDE", Storage::Character, 241)
        .Field("RAW", Storage::Opaque, 4);
    std::string text;
    EXPECT_EQ(BuildError(table, {{"A", "NOTES", ""}}, &text), ErrorKind::Unsupported);
    EXPECT_NE(text.find("index tag \"A\" of table \"TEST\""), std::string::npos) << text;
    EXPECT_EQ(BuildError(table, {{"A", "WIDE", ""}}, &text), ErrorKind::Overflow);
    EXPECT_NE(text.find("241"), std::string::npos) << text;
    EXPECT_EQ(BuildError(table, {{"A", "MISSING", ""}}), ErrorKind::Syntax);
    TestTable people = People();
    EXPECT_EQ(BuildError(people, {{"A", "NAME", "LEN("}}), ErrorKind::Syntax);
    EXPECT_EQ(BuildError(people, {{"A", "NAME", "AGE"}}), ErrorKind::TypeMismatch);
}

TEST(CdxBuilder, RefusesExpressionsLongerThanTheHeader) {
    TestTable table = People();
    std::string longFilter = "AGE > 1";
    while (longFilter.size() < 510)
        longFilter += " .AND. AGE > 1";
    EXPECT_EQ(BuildError(table, {{"A", "NAME", longFilter}}), ErrorKind::Overflow);
}

TEST(CdxBuilder, BuildsTheSameOrderAsAPlainSortForManyRecords) {
    TestTable table;
    table.Field("NAME", Storage::Character, 30).Field("NUM", Storage::NumberText, 9, 2);
    std::mt19937 random(3);
    std::vector<std::string> names;
    std::vector<double> numbers;
    for (int i = 0; i < 20000; ++i) {
        std::string name(random() % 30, 'a');
        for (char& c : name)
            c = static_cast<char>("abc"[random() % 3]);
        const int cents = static_cast<int>(random() % 2000000) - 1000000;
        char text[32];
        std::snprintf(text, sizeof text, "%9.2f", cents / 100.0);
        names.push_back(name);
        numbers.push_back(cents / 100.0);
        table.Add({name, text});
    }
    BuiltIndex index(table, {{"NAME", "NAME", ""}, {"NUM", "NUM", ""}});
    EXPECT_EQ(index.Findings(), "");
    Records expected(names.size());
    std::iota(expected.begin(), expected.end(), 1);
    std::stable_sort(expected.begin(), expected.end(),
                     [&](auto a, auto b) { return names[a - 1] < names[b - 1]; });
    EXPECT_EQ(index.Order("NAME"), expected);
    std::iota(expected.begin(), expected.end(), 1);
    std::stable_sort(expected.begin(), expected.end(),
                     [&](auto a, auto b) { return numbers[a - 1] < numbers[b - 1]; });
    EXPECT_EQ(index.Order("NUM"), expected);
}

}  // namespace
}  // namespace zu::dbf::cdx
