#include "host/technologies/dbf/maintenance/TableRepair.h"

#include <gtest/gtest.h>

#include <cstring>

#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;

class Repair : public ::testing::Test {
protected:
    Repair() {
        memory.AllowMapping(false);
        MakeTable(memory);
        const auto table = OpenTable(memory);
        for (int i = 1; i <= 30; ++i) {
            const auto edit = table->NewRecord();
            edit->Set(kId, Integer(i));
            edit->Set(kName, Text(u"name"));
            edit->Set(kAmount, Integer(i));
            edit->Set(kNote, Text(std::u16string(static_cast<std::size_t>(i) * 10, u'n')));
            edit->SetDeleted(i % 3 == 0);
            EXPECT_TRUE(edit->Save());
        }
    }

    std::string Mend(files::FileSystem& files) {
        std::string all;
        for (const std::string& sentence : maintenance::RepairTable(files, kTablePath, {}, nullptr))
            all += sentence + "\n";
        return all;
    }
    std::string Content() {
        std::string content;
        const auto table = OpenTable(memory);
        for (std::uint32_t record = 1; record <= table->RecordCount(); ++record)
            content += ShownRecord(*table, record) + "\n";
        return content;
    }
    void ExpectSound() {
        const auto report = maintenance::CheckTable(memory, kTablePath, {}, nullptr);
        EXPECT_TRUE(report.findings.empty()) << report.findings.front();
    }
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

    files::MemoryFiles memory;
};

TEST_F(Repair, ASoundTableIsLeftAlone) {
    const auto before = memory.Get(kTablePath);
    EXPECT_EQ(Mend(memory), "");
    EXPECT_EQ(memory.Get(kTablePath), before);
    EXPECT_FALSE(memory.Exists("people.dbf.bak"));
}

TEST_F(Repair, TheCountIsMendedAndTheOldFilesAreKept) {
    const std::string content = Content();
    Spoil(kTablePath, 4, std::string_view("\x05\0\0\0", 4));
    const auto spoilt = memory.Get(kTablePath);
    const std::string done = Mend(memory);
    EXPECT_NE(done.find("counted 5 records; the table has 30"), std::string::npos) << done;
    EXPECT_NE(done.find("people.dbf.bak, people.fpt.bak, people.cdx.bak"), std::string::npos) << done;
    EXPECT_EQ(memory.Get("people.dbf.bak"), spoilt);
    EXPECT_EQ(Content(), content);
    ExpectSound();
}

TEST_F(Repair, APartOfARecordAtTheEndIsLeftOut) {
    auto bytes = memory.Get(kTablePath);
    bytes.resize(bytes.size() - 30);
    memory.Put(kTablePath, bytes);
    EXPECT_NE(Mend(memory).find("the table has 29"), std::string::npos);
    EXPECT_EQ(OpenTable(memory)->RecordCount(), 29U);
    ExpectSound();
}

TEST_F(Repair, AMemoThatCannotBeReadIsEmptyAfterwards) {
    Spoil(kTablePath, At(4, kNote), "     99999");
    Spoil(kTablePath, At(5, kNote), "   garbage");
    const std::string done = Mend(memory);
    EXPECT_NE(done.find("Record 4: the memo NOTE"), std::string::npos) << done;
    EXPECT_NE(done.find("Record 5: the memo NOTE"), std::string::npos) << done;
    EXPECT_EQ(Shown(*OpenTable(memory), 4, kNote), "");
    EXPECT_EQ(Shown(*OpenTable(memory), 6, kNote), std::string(60, 'n'));
    ExpectSound();
}

TEST_F(Repair, MemosThatLieOverEachOtherEachGetTheirOwn) {
    const auto bytes = memory.Get(kTablePath);
    const std::string block(reinterpret_cast<const char*>(bytes.data()) + At(1, kNote), 10);
    Spoil(kTablePath, At(3, kNote), block);
    Mend(memory);
    EXPECT_EQ(Shown(*OpenTable(memory), 3, kNote), std::string(10, 'n'));
    const auto table = OpenTable(memory);
    const auto edit = table->EditRecord(3);
    edit->Set(kNote, Text(u"x"));
    EXPECT_TRUE(edit->Save());
    EXPECT_EQ(Shown(*table, 1, kNote), std::string(10, 'n'));
}

TEST_F(Repair, AMissingMemoFileIsMadeAnew) {
    memory.Remove("people.fpt");
    Mend(memory);
    ExpectSound();
    const auto table = OpenTable(memory);
    EXPECT_TRUE(table->warnings().empty());
    const auto edit = table->EditRecord(1);
    edit->Set(kNote, Text(u"new"));
    EXPECT_TRUE(edit->Save());
}

TEST_F(Repair, ADeletionMarkThatIsNoneBecomesABlank) {
    Spoil(kTablePath, At(5, 0) - 1, "x");
    EXPECT_NE(Mend(memory).find("1 records had no valid deletion mark"), std::string::npos);
    EXPECT_FALSE(OpenTable(memory)->IsDeleted(5));
    ExpectSound();
}

TEST_F(Repair, AnIndexThatIsNotUpToDateIsBuiltAnew) {
    Spoil(kTablePath, At(7, kId), "     777");
    EXPECT_NE(Mend(memory).find("The index was built anew."), std::string::npos);
    EXPECT_EQ(OpenTable(memory)->indexes().size(), 5U);
    ExpectSound();
}

TEST_F(Repair, AMissingIndexFileIsNoLongerAnnounced) {
    memory.Remove("people.cdx");
    Mend(memory);
    ExpectSound();
    EXPECT_TRUE(OpenTable(memory)->warnings().empty());
}

TEST_F(Repair, AnUnreadableIndexIsTakenAwayAndKeptAside) {
    const auto old = memory.Get("people.cdx");
    Spoil("people.cdx", 0, std::string_view("\xFF\xFF\xFF\x7F", 4));
    const std::string done = Mend(memory);
    EXPECT_NE(done.find("The index file could not be read"), std::string::npos) << done;
    EXPECT_FALSE(memory.Exists("people.cdx"));
    EXPECT_TRUE(memory.Exists("people.cdx.bak"));
    ExpectSound();
}

TEST_F(Repair, AJournalThatContradictsItselfIsSetAside) {
    // A whole journal by its checksum is needed to get as far as its contradiction: the part it names is not.
    Append(*OpenTable(memory), 99, u"last");
    std::string journal("ZUJRNL1\0", 8);
    journal += std::string("\x01\0\0\0\0\0\0\0", 8);
    const std::string body("\x09", 1);
    std::uint64_t hash = 0x9E3779B97F4A7C15ULL ^ 1;
    hash = (hash ^ 9) * 0x9E3779B97F4A7C15ULL;
    hash ^= hash >> 29;
    for (int i = 0; i < 8; ++i)
        journal += static_cast<char>(hash >> (8 * i));
    journal += body;
    memory.Put("people.zuj", std::as_bytes(std::span(journal.data(), journal.size())));
    EXPECT_THROW(OpenTable(memory), Error);
    EXPECT_FALSE(maintenance::CheckTable(memory, kTablePath, {}, nullptr).findings.empty());
    const std::string done = Mend(memory);
    EXPECT_NE(done.find("people.zuj.bak"), std::string::npos) << done;
    EXPECT_EQ(OpenTable(memory)->RecordCount(), 31U);
    ExpectSound();
}

TEST_F(Repair, ATableThatCannotBeReadIsRefused) {
    memory.Put(kTablePath, {});
    EXPECT_THROW(Mend(memory), Error);
}

TEST_F(Repair, EarlierCopiesAreNotReplaced) {
    for (int round = 0; round < 3; ++round) {
        Spoil(kTablePath, 4, std::string_view("\x05\0\0\0", 4));
        Mend(memory);
    }
    EXPECT_TRUE(memory.Exists("people.dbf.bak"));
    EXPECT_TRUE(memory.Exists("people.dbf.bak2"));
    EXPECT_TRUE(memory.Exists("people.dbf.bak3"));
}

class FaultyRepair : public Repair, public ::testing::WithParamInterface<FaultyFiles::Fault> {};

TEST_P(FaultyRepair, AFaultAtAnyStepLeavesTheOldTableOrTheMendedOne) {
    Spoil(kTablePath, 4, std::string_view("\x05\0\0\0", 4));
    Spoil(kTablePath, At(7, kId), "     777");
    const std::string content = Content();
    const auto table = memory.Get(kTablePath);
    const auto memo = memory.Get("people.fpt");
    const auto index = memory.Get("people.cdx");
    std::size_t faults = 0;
    for (std::size_t step = 1; step < 100; ++step) {
        for (const std::string& name : memory.List(""))
            memory.Remove(name);
        memory.Put(kTablePath, table);
        memory.Put("people.fpt", memo);
        memory.Put("people.cdx", index);
        FaultyFiles files(memory);
        files.FailAt(step, GetParam());
        bool finished = true;
        try {
            Mend(files);
        } catch (const Error&) {
            finished = false;
            ++faults;
        }
        ASSERT_EQ(Content(), content) << "step " << step;
        if (finished) ExpectSound();
        if (finished && !files.fired()) break;
        Mend(memory);
        ExpectSound();
        ASSERT_EQ(Content(), content) << "step " << step;
    }
    EXPECT_GT(faults, 5U);
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyRepair,
                         ::testing::Values(FaultyFiles::Fault::Refuse, FaultyFiles::Fault::Full,
                                           FaultyFiles::Fault::Crash, FaultyFiles::Fault::Torn),
                         [](const auto& instance) {
                             switch (instance.param) {
                                 case FaultyFiles::Fault::Refuse:
                                     return "WriteError";
                                 case FaultyFiles::Fault::Full:
                                     return "FullDisk";
                                 case FaultyFiles::Fault::Crash:
                                     return "EndOfTheProcess";
                                 default:
                                     return "EndInTheMiddleOfAWrite";
                             }
                         });

}  // namespace
}  // namespace zu::dbf::test
