#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/cdx/CdxChecker.h"
#include "host/technologies/dbf/cdx/LeafPacker.h"
#include "host/technologies/dbf/cdx/OpenTag.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/cdx/SampleTable.h"

namespace zu::dbf::cdx {
namespace {

/// What NAME.orders.txt says about one tag.
struct StatedTag {
    std::string name;
    std::string key;
    std::string filter;
    bool unique = false;
    bool descending = false;
    std::vector<std::uint32_t> order;
};

// Lines of the form "tag ID key ID for - unique 0 descend 0 keys 3000", followed by "order 1715 429 ...".
std::vector<StatedTag> ReadStatedTags(const std::string& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in) << path << " is missing";
    std::vector<StatedTag> tags;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "tag") {
            StatedTag tag;
            const auto between = [&](const std::string& from, const std::string& to) {
                const std::size_t start = line.find(" " + from + " ") + from.size() + 2;
                return line.substr(start, line.find(" " + to + " ", start) - start);
            };
            words >> tag.name;
            tag.key = between("key", "for");
            tag.filter = between("for", "unique");
            if (tag.filter == "-") tag.filter.clear();
            tag.unique = between("unique", "descend") == "1";
            tag.descending = between("descend", "keys") == "1";
            tags.push_back(tag);
        } else if (word == "order" && !tags.empty()) {
            for (std::uint32_t record = 0; words >> record;)
                tags.back().order.push_back(record);
        }
    }
    return tags;
}

std::string Text(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings)
        text += finding.Describe() + "\n";
    return text;
}

class SampleWithStatedOrders : public ::testing::TestWithParam<std::string> {};

TEST_P(SampleWithStatedOrders, YieldsTheStatedOrderOfEveryTag) {
    SampleTable table("xbase/" + GetParam() + ".dbf");
    const auto indexes = IndexSet::Open(OpenSample("xbase/" + GetParam() + ".cdx"), table.Context());
    const std::vector<StatedTag> stated =
        ReadStatedTags(SampleFolder() + "/xbase/" + GetParam() + ".orders.txt");
    ASSERT_EQ(indexes->descriptions().size(), stated.size());
    EXPECT_EQ(indexes->warnings(), std::vector<std::string>{});
    for (const StatedTag& tag : stated) {
        const auto index = indexes->Find(tag.name);
        ASSERT_TRUE(index) << tag.name;
        const auto& description = indexes->descriptions()[*index];
        EXPECT_TRUE(description.usable) << tag.name << ": " << description.reason;
        EXPECT_EQ(description.expression, tag.key);
        EXPECT_EQ(description.filter, tag.filter);
        EXPECT_EQ(description.unique, tag.unique);
        EXPECT_EQ(description.descending, tag.descending);
        std::vector<std::uint32_t> order;
        indexes->Walk(*index, [&](std::uint32_t record) {
            order.push_back(record);
            return true;
        });
        EXPECT_TRUE(order == tag.order) << "tag " << tag.name << " of " << GetParam();
    }
}

TEST_P(SampleWithStatedOrders, IsRebuiltWithTheSameOrders) {
    SampleTable table("xbase/" + GetParam() + ".dbf");
    const std::vector<StatedTag> stated =
        ReadStatedTags(SampleFolder() + "/xbase/" + GetParam() + ".orders.txt");
    std::vector<TagDefinition> definitions;
    definitions.reserve(stated.size());
    for (const StatedTag& tag : stated) {
        definitions.push_back({tag.name, tag.key, tag.filter, tag.unique, false, tag.descending});
    }
    files::MemoryFiles memory;
    {
        const auto file = memory.Open("built.cdx", {files::Access::ReadWrite, files::Creation::CreateNew});
        BuildCdx(*file, definitions, table.Context());
    }
    CdxFile built(memory.Open("built.cdx", {}));
    EXPECT_EQ(Text(CheckCdx(built, table.Context())), "");
    const auto indexes = IndexSet::Open(memory.Open("built.cdx", {}), table.Context());
    EXPECT_EQ(indexes->warnings(), std::vector<std::string>{});
    for (const StatedTag& tag : stated) {
        std::vector<std::uint32_t> order;
        indexes->Walk(indexes->Find(tag.name).value(), [&](std::uint32_t record) {
            order.push_back(record);
            return true;
        });
        EXPECT_TRUE(order == tag.order) << "tag " << tag.name << " of " << GetParam();
    }
}

INSTANTIATE_TEST_SUITE_P(Xbase, SampleWithStatedOrders, ::testing::Values("orders", "deep", "vfp"),
                         [](const ::testing::TestParamInfo<std::string>& sample) { return sample.param; });

struct SamplePair {
    std::string table;
    std::string index;
};

class SampleIndex : public ::testing::TestWithParam<SamplePair> {};

TEST_P(SampleIndex, HasNoFaults) {
    SampleTable table(GetParam().table);
    CdxFile file(OpenSample(GetParam().index));
    const std::vector<Finding> findings = CheckCdx(file, table.Context());
    EXPECT_FALSE(HasFaults(findings)) << Text(findings);
}

TEST_P(SampleIndex, HasOnlyUsableTags) {
    SampleTable table(GetParam().table);
    const auto indexes = IndexSet::Open(OpenSample(GetParam().index), table.Context());
    EXPECT_FALSE(indexes->descriptions().empty());
    EXPECT_EQ(indexes->warnings(), std::vector<std::string>{});
}

TEST_P(SampleIndex, YieldsEveryRecordOnceFromEachPlainTag) {
    SampleTable table(GetParam().table);
    const auto indexes = IndexSet::Open(OpenSample(GetParam().index), table.Context());
    for (std::size_t i = 0; i < indexes->descriptions().size(); ++i) {
        if (indexes->descriptions()[i].unique || !indexes->descriptions()[i].filter.empty()) continue;
        std::set<std::uint32_t> records;
        indexes->Walk(i, [&](std::uint32_t record) { return records.insert(record).second; });
        EXPECT_EQ(records.size(), table.records().Count()) << indexes->descriptions()[i].name;
    }
}

const std::vector<SamplePair> kAllSamples{{"public/contacts.dbf", "public/contacts.CDX"},
                                          {"public/expense reports.dbf", "public/expense reports.CDX"},
                                          {"public/orderdetails.dbf", "public/orderdetails.cdx"},
                                          {"public/orders.dbf", "public/orders.cdx"},
                                          {"xbase/deep.dbf", "xbase/deep.cdx"},
                                          {"xbase/orders.dbf", "xbase/orders.cdx"},
                                          {"xbase/vfp.dbf", "xbase/vfp.cdx"}};

std::string SampleName(const ::testing::TestParamInfo<SamplePair>& info) {
    std::string name = info.param.table.substr(0, info.param.table.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == ' '; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, SampleIndex, ::testing::ValuesIn(kAllSamples), SampleName);

// Every leaf of the tree, packed again with the layout that it states, has the same bytes in front of the
// free space and behind it.
void ExpectSamePages(CdxFile& file, LeafPath path, std::size_t& leaves) {
    path.ToFirst();
    do {
        const PageBytes original = file.Page(path.leaf());
        LeafPage page;
        page.Unpack(original, path.leaf(), path.shape());
        LeafPacker packer(path.shape(), page.layout());
        for (std::size_t i = 0; i < page.size(); ++i)
            ASSERT_TRUE(packer.Add(page.key(i), page.record(i)));
        std::array<std::byte, kPageSize> again{};
        packer.Store(page.header(), again);
        const auto entriesEnd =
            static_cast<std::ptrdiff_t>(leaf::kEntries + page.size() * page.layout().entrySize);
        const auto keysStart = entriesEnd + static_cast<std::ptrdiff_t>(page.countedFree());
        EXPECT_TRUE(std::equal(again.begin(), again.begin() + entriesEnd, original.begin())) << path.leaf();
        EXPECT_TRUE(std::equal(again.begin() + keysStart, again.end(), original.begin() + keysStart))
            << path.leaf();
        ++leaves;
    } while (path.ToNext());
}

TEST(SampleLeaves, AreTheSameBytesWhenPackedAgain) {
    std::size_t leaves = 0;
    for (const SamplePair& sample : kAllSamples) {
        SampleTable table(sample.table);
        CdxFile file(OpenSample(sample.index));
        const TagHeader header = file.Header(0);
        ExpectSamePages(file, LeafPath(file, header.root, {header.keyLength, std::byte{' '}}), leaves);
        for (const DirectoryEntry& entry : ReadTagDirectory(file)) {
            const IndexContext context = table.Context();
            const OpenTag tag(file, entry, context);
            ASSERT_TRUE(tag.isUsable()) << tag.description().reason;
            ExpectSamePages(file, tag.MakePath(), leaves);
        }
    }
    EXPECT_GT(leaves, 150U);
}

}  // namespace
}  // namespace zu::dbf::cdx
