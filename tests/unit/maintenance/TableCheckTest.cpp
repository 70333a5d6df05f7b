#include "host/technologies/dbf/maintenance/TableCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>

#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using technologies::CheckReport;

class Check : public ::testing::TestWithParam<Format> {
protected:
    Check() {
        memory.AllowMapping(false);
        MakeTable(memory, GetParam());
        const auto table = OpenTable(memory);
        for (int i = 1; i <= 30; ++i) {
            const auto edit = table->NewRecord();
            edit->Set(kId, Integer(i));
            edit->Set(kName, Text(u"name"));
            edit->Set(kAmount, Integer(i));
            edit->Set(kBorn, Day(2024, 1, i));
            edit->Set(kPaid, Truth(i % 2 == 0));
            if (i % 2) edit->Set(kNote, Text(std::u16string(static_cast<std::size_t>(i) * 10, u'n')));
            edit->SetDeleted(i % 3 == 0);
            EXPECT_TRUE(edit->Save());
        }
    }

    CheckReport Report() { return maintenance::CheckTable(memory, kTablePath, {}, nullptr); }
    // Where a field of a record lies in the table file.
    std::size_t At(std::uint32_t record, std::size_t field) {
        const auto table = OpenTable(memory);
        const DbfHeader& header = table->header();
        return header.headerLength + (record - 1) * header.recordLength + header.fields[field].offset;
    }
    void Spoil(const std::string& path, std::size_t at, std::string_view bytes) {
        auto content = memory.Get(path);
        ASSERT_LE(at + bytes.size(), content.size());
        std::memcpy(content.data() + at, bytes.data(), bytes.size());
        memory.Put(path, content);
    }
    void ExpectFinding(const std::string& text, bool repairable) {
        const CheckReport report = Report();
        EXPECT_TRUE(
            std::any_of(report.findings.begin(), report.findings.end(),
                        [&](const std::string& finding) { return finding.find(text) != std::string::npos; }))
            << text << " is not among " << report.findings.size()
            << " findings: " << (report.findings.empty() ? "" : report.findings.front());
        EXPECT_EQ(report.repairable, repairable) << text;
    }
    std::string MemoPath() const { return GetParam() == Format::DBase3 ? "people.dbt" : "people.fpt"; }

    files::MemoryFiles memory;
};

TEST_P(Check, ASoundTableHasNoFindings) {
    const CheckReport report = Report();
    EXPECT_TRUE(report.findings.empty()) << report.findings.front();
    EXPECT_TRUE(report.repairable);
}

TEST_P(Check, AnExaminationChangesNothing) {
    const auto table = memory.Get(kTablePath);
    const auto index = memory.Get("people.cdx");
    Spoil("people.cdx", 2048, "xxxx");
    const auto spoilt = memory.Get("people.cdx");
    Report();
    EXPECT_EQ(memory.Get(kTablePath), table);
    EXPECT_EQ(memory.Get("people.cdx"), spoilt);
}

TEST_P(Check, AWrongCountIsFound) {
    Spoil(kTablePath, 4, std::string_view("\x1D\0\0\0", 4));
    ExpectFinding("counts 29 records, but the file holds 30", true);
}

TEST_P(Check, ACutTableIsFound) {
    auto bytes = memory.Get(kTablePath);
    bytes.resize(bytes.size() - 20);
    memory.Put(kTablePath, bytes);
    ExpectFinding("counts 30 records, but the file holds 29 whole ones", true);
}

TEST_P(Check, AByteThatIsNoDeletionMarkIsFound) {
    Spoil(kTablePath, At(5, 0) - 1, "x");
    ExpectFinding("record 5: the deletion mark is the byte 120", true);
}

TEST_P(Check, BytesThatAreNoValueAreFound) {
    Spoil(kTablePath, At(2, kId), "  12a   ");
    ExpectFinding("record 2: the field ID holds", false);
    Spoil(kTablePath, At(2, kId), "********");
    ExpectFinding("holds stars", false);
    Spoil(kTablePath, At(2, kBorn), "20230230");
    ExpectFinding("\"20230230\", which is no date", false);
    Spoil(kTablePath, At(2, kPaid), "x");
    ExpectFinding("no logical value", false);
}

TEST_P(Check, AMemoOutsideTheFileIsFound) {
    Spoil(kTablePath, At(1, kNote),
          GetParam() == Format::VisualFoxPro ? std::string_view("\xFF\xFF\0\0", 4) : "     99999");
    ExpectFinding("record 1: the memo NOTE cannot be read", true);
}

TEST_P(Check, MemosThatLieOverEachOtherAreFound) {
    const std::size_t width = GetParam() == Format::VisualFoxPro ? 4 : 10;
    const auto bytes = memory.Get(kTablePath);
    const std::string block(reinterpret_cast<const char*>(bytes.data()) + At(1, kNote), width);
    Spoil(kTablePath, At(3, kNote), block);
    ExpectFinding("lies over one of record", true);
}

TEST_P(Check, AMemoHeaderThatCountsTooFewBlocksIsFound) {
    Spoil(MemoPath(), 0, std::string_view("\0\0\0\0", 4));
    ExpectFinding("the header counts 0 blocks", true);
}

TEST_P(Check, AMissingMemoFileIsFound) {
    memory.Remove(MemoPath());
    ExpectFinding("the memo file is missing", true);
}

TEST_P(Check, AKeyThatIsNotTheRecordsIsFound) {
    Spoil(kTablePath, At(7, kId), "     777");
    ExpectFinding("the key of record 7 is not the one that the record has now", true);
}

TEST_P(Check, AMissingIndexFileIsFound) {
    memory.Remove("people.cdx");
    ExpectFinding("the index file that the header announces is missing", true);
}

TEST_P(Check, AnUnreadableDirectoryOfTheIndexIsFoundAndCannotBeMendedWithoutLoss) {
    Spoil("people.cdx", 0, std::string_view("\xFF\xFF\xFF\x7F", 4));
    ExpectFinding("people.cdx", false);
}

TEST_P(Check, AFileThatIsNoTableIsAFinding) {
    Spoil(kTablePath, 8, std::string_view("\xFF\xFF\0\0", 4));
    ExpectFinding("people.dbf", false);
    memory.Put(kTablePath, {});
    ExpectFinding("it is empty", false);
}

TEST_P(Check, AnOpenTableIsNotExamined) {
    const auto table = OpenTable(memory);
    try {
        Report();
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Locked);
    }
}

TEST_P(Check, FindingsAboutRecordsAreBounded) {
    {
        const auto table = OpenTable(memory);
        for (int i = 0; i < 150; ++i)
            Append(*table, i, u"more");
    }
    const std::size_t first = At(1, kPaid);
    const std::size_t step = At(2, kPaid) - first;
    auto bytes = memory.Get(kTablePath);
    for (std::size_t i = 0; i < 180; ++i)
        bytes[first + i * step] = std::byte{'x'};
    memory.Put(kTablePath, bytes);
    EXPECT_EQ(Report().findings.size(), 100U);
}

INSTANTIATE_TEST_SUITE_P(Formats, Check,
                         ::testing::Values(Format::DBase3, Format::FoxPro2, Format::VisualFoxPro),
                         [](const auto& instance) {
                             return instance.param == Format::DBase3    ? "DBase3"
                                    : instance.param == Format::FoxPro2 ? "FoxPro2"
                                                                        : "VisualFoxPro";
                         });

}  // namespace
}  // namespace zu::dbf::test
