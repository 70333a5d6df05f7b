#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "host/technologies/dbf/maintenance/TableRebuild.h"
#include "host/technologies/dbf/maintenance/TagDefinitions.h"
#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;

class Maintenance : public ::testing::Test {
protected:
    Maintenance() {
        memory.AllowMapping(false);
        MakeTable(memory);
        const auto table = OpenTable(memory);
        for (int i = 1; i <= 60; ++i) {
            const auto edit = table->NewRecord();
            edit->Set(kId, Integer(i));
            edit->Set(kName, Text(u"name"));
            edit->Set(kAmount, Integer(i));
            if (i % 2) edit->Set(kNote, Text(std::u16string(static_cast<std::size_t>(i) * 10, u'n')));
            edit->SetDeleted(i % 3 == 0);
            EXPECT_TRUE(edit->Save());
        }
    }

    // The whole content of the table, and whether its index is sound.
    std::string State() {
        ExpectSoundIndex(memory);
        std::string state;
        const auto table = OpenTable(memory);
        for (std::uint32_t record = 1; record <= table->RecordCount(); ++record)
            state += ShownRecord(*table, record) + "\n";
        return state;
    }
    // Every file that lies beside the table.
    std::string Files() {
        std::string names;
        for (const std::string& name : memory.List(""))
            names += name + " ";
        return names;
    }

    files::MemoryFiles memory;
};

TEST_F(Maintenance, PackLeavesOutTheDeletedRecordsAndKeepsTheOthersWhole) {
    std::string expected;
    {
        const auto before = OpenTable(memory);
        for (std::uint32_t record = 1; record <= 60; ++record)
            if (!before->IsDeleted(record)) expected += ShownRecord(*before, record) + "\n";
    }
    const auto memoSize = memory.Get("people.fpt").size();
    EXPECT_EQ(maintenance::Pack(memory, kTablePath, {}), 20U);
    EXPECT_EQ(State(), expected);
    EXPECT_LT(memory.Get("people.fpt").size(), memoSize);
    EXPECT_EQ(maintenance::Pack(memory, kTablePath, {}), 0U);
    EXPECT_EQ(State(), expected);
}

TEST_F(Maintenance, ZapLeavesNoRecord) {
    maintenance::Zap(memory, kTablePath, {});
    EXPECT_EQ(State(), "");
    EXPECT_EQ(Append(*OpenTable(memory), 1, u"first"), 1U);
    EXPECT_EQ(State(), "1|first|0|(null)|(null)||\n");
}

TEST_F(Maintenance, ReindexMakesAStaleIndexUsableAgain) {
    const std::string state = State();
    auto bytes = memory.Get(kTablePath);
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (std::size_t at = text.find("name"); at != std::string::npos; at = text.find("name", at + 1))
        bytes[at] = std::byte{'N'};
    memory.Put(kTablePath, bytes);
    bool usable = true;
    {
        const auto table = OpenTable(memory);
        for (const auto& index : table->indexes())
            usable = usable && index.usable;
    }
    EXPECT_FALSE(usable);
    maintenance::Reindex(memory, kTablePath, {});
    EXPECT_NE(State(), state);
}

TEST_F(Maintenance, ATagIsAddedOrReplaced) {
    auto table = OpenTable(memory);
    auto tag = maintenance::DefaultTag(table->content().layout, {{"AMOUNT", false}, {"NAME", false}});
    table.reset();
    EXPECT_EQ(tag.name, "PEOPLE");
    EXPECT_EQ(tag.key, "STR(AMOUNT,12,2)+NAME");
    maintenance::CreateTag(memory, kTablePath, {}, tag);
    EXPECT_EQ(OpenTable(memory)->indexes().size(), 6U);
    table = OpenTable(memory);
    EXPECT_EQ(table->indexes()[*table->DefaultIndex()].name, "PEOPLE");
    tag = maintenance::DefaultTag(table->content().layout, {{"recno", true}});
    table.reset();
    EXPECT_EQ(tag.key, "RECNO()");
    EXPECT_TRUE(tag.descending);
    maintenance::CreateTag(memory, kTablePath, {}, tag);
    table = OpenTable(memory);
    EXPECT_EQ(table->indexes().size(), 6U);
    technologies::Selection selection;
    selection.index = table->DefaultIndex();
    selection.maxRecords = 3;
    selection.includeDeleted = true;
    EXPECT_EQ(table->Select(selection), (std::vector<std::uint32_t>{60, 59, 58}));
    table.reset();
    State();
}

TEST_F(Maintenance, ATableWithoutIndexGetsOne) {
    TableWriter writer(memory, "plain.dbf", Format::DBase3, 0x03, {{"A", 'C', 5, 0, false}}, {2024, 1, 1});
    for (const char16_t* text : {u"b", u"c", u"a"}) {
        writer.SetText(0, text);
        writer.Append();
    }
    writer.Close();
    maintenance::CreateTag(memory, "plain.dbf", {}, {"PLAIN", "A", "", false, false, false});
    const auto table = DbfTable::Open(memory, "plain.dbf", {});
    technologies::Selection selection;
    selection.index = table->DefaultIndex();
    ASSERT_TRUE(selection.index);
    EXPECT_EQ(table->Select(selection), (std::vector<std::uint32_t>{3, 1, 2}));
}

TEST_F(Maintenance, AnOpenTableIsNotRebuilt) {
    const auto table = OpenTable(memory);
    try {
        maintenance::Pack(memory, kTablePath, {});
        FAIL() << "a table in use was packed";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Locked);
    }
    EXPECT_EQ(table->RecordCount(), 60U);
}

TEST_F(Maintenance, AFaultyTagLeavesTheIndexAsItWas) {
    const std::string state = State();
    EXPECT_THROW(maintenance::CreateTag(memory, kTablePath, {}, {"BAD", "NOFIELD", "", false, false, false}),
                 Error);
    EXPECT_THROW(maintenance::CreateTag(memory, kTablePath, {}, {"TWICE", "NAME", "", false, true, false}),
                 Error);
    EXPECT_EQ(OpenTable(memory)->indexes().size(), 5U);
    EXPECT_EQ(State(), state);
    EXPECT_EQ(Files().find(".zun"), std::string::npos) << Files();
}

TEST_F(Maintenance, ATagThatReadsMemosIsRefused) {
    for (const char* key : {"NOTE", "LEFT(note,10)", "NAME+SUBSTR(NOTE,1,5)"}) {
        try {
            maintenance::CreateTag(memory, kTablePath, {}, {"MEMO", key, "", false, false, false});
            ADD_FAILURE() << key;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Unsupported) << error.what();
        }
    }
    EXPECT_THROW(maintenance::CreateTag(memory, kTablePath, {}, {"MEMO", "NAME", "EMPTY(NOTE)"}), Error);
    maintenance::CreateTag(memory, kTablePath, {}, {"FINE", "NAME+'NOTES'", ""});
}

TEST_F(Maintenance, ProgressIsToldAndAListenerCanStopTheWork) {
    class Listener final : public technologies::Progress {
    public:
        explicit Listener(bool stops) : stops_(stops) {}
        void Report(std::uint64_t done, std::uint64_t total) override {
            ++reports;
            EXPECT_LE(done, total);
            if (stops_) throw Error(ErrorKind::Cancelled, "enough");
        }
        int reports = 0;

    private:
        bool stops_;
    };
    const auto before = memory.Get(kTablePath);
    const auto index = memory.Get("people.cdx");
    Listener stopping(true);
    EXPECT_THROW(maintenance::Pack(memory, kTablePath, {}, &stopping), Error);
    EXPECT_THROW(maintenance::Reindex(memory, kTablePath, {}, &stopping), Error);
    EXPECT_THROW(maintenance::CreateDefaultTag(memory, kTablePath, {}, {{"NAME", false}}, &stopping), Error);
    EXPECT_EQ(memory.Get(kTablePath), before);
    EXPECT_EQ(memory.Get("people.cdx"), index);
    EXPECT_EQ(Files().find(".zu"), std::string::npos) << Files();
    Listener patient(false);
    maintenance::Pack(memory, kTablePath, {}, &patient);
    EXPECT_GT(patient.reports, 0);
}

TEST_F(Maintenance, ADroppedTagIsGoneAndTheOthersStay) {
    const std::string state = State();
    maintenance::DropTag(memory, kTablePath, {}, "name");
    EXPECT_EQ(OpenTable(memory)->indexes().size(), 4U);
    EXPECT_FALSE(OpenTable(memory)->FindIndex("NAME"));
    EXPECT_EQ(State(), state);
    EXPECT_THROW(maintenance::DropTag(memory, kTablePath, {}, "NAME"), Error);
}

TEST_F(Maintenance, TheIndexFileGoesWithTheLastTag) {
    for (const char* tag : {"ID", "NAME", "NAMEDATE", "AMOUNT", "CODE"})
        maintenance::DropTag(memory, kTablePath, {}, tag);
    EXPECT_FALSE(memory.Exists("people.cdx"));
    const auto table = OpenTable(memory);
    EXPECT_TRUE(table->warnings().empty());
    EXPECT_TRUE(table->indexes().empty());
    Append(*table, 1, u"still writable");
}

TEST_F(Maintenance, MemosOfDBase4AreCompacted) {
    // A table of dBASE IV: the memo file of dBASE III made over by hand.
    TableWriter writer(memory, "four.dbf", Format::DBase3, 0x03, {{"A", 'C', 5, 0}, {"M", 'M', 10, 0}},
                       {2024, 1, 1});
    writer.Close();
    auto bytes = memory.Get("four.dbf");
    bytes[0] = std::byte{0x8B};
    memory.Put("four.dbf", bytes);
    std::vector<std::byte> memo(512);
    memo[0] = std::byte{1};
    memo[21] = std::byte{2};
    memory.Put("four.dbt", memo);
    {
        const auto table = DbfTable::Open(memory, "four.dbf", {});
        for (int i = 0; i < 20; ++i) {
            const auto edit = table->NewRecord();
            edit->Set(1, Text(std::u16string(static_cast<std::size_t>(600 + i), u'm')));
            edit->SetDeleted(i % 2 == 0);
            ASSERT_TRUE(edit->Save());
        }
    }
    const auto size = memory.Get("four.dbt").size();
    EXPECT_EQ(maintenance::Pack(memory, "four.dbf", {}), 10U);
    EXPECT_LT(memory.Get("four.dbt").size(), size * 6 / 10);
    const auto table = DbfTable::Open(memory, "four.dbf", {});
    EXPECT_EQ(Shown(*table, 3, 1), std::string(605, 'm'));
}

using Work = std::function<void(files::FileSystem&)>;

class FaultyMaintenance : public Maintenance, public ::testing::WithParamInterface<FaultyFiles::Fault> {};

TEST_P(FaultyMaintenance, AFaultAtAnyStepLeavesTheOldTableOrTheNewOne) {
    const std::vector<Work> works{
        [](files::FileSystem& files) { maintenance::Pack(files, kTablePath, {}); },
        [](files::FileSystem& files) { maintenance::Reindex(files, kTablePath, {}); },
        [](files::FileSystem& files) {
            maintenance::CreateTag(files, kTablePath, {}, {"EXTRA", "CODE", "", false, false, false});
        },
        [](files::FileSystem& files) { maintenance::DropTag(files, kTablePath, {}, "AMOUNT"); }};
    const std::string before = State();
    const auto table = memory.Get(kTablePath);
    const auto memo = memory.Get("people.fpt");
    const auto index = memory.Get("people.cdx");
    const auto restore = [&] {
        memory.Put(kTablePath, table);
        memory.Put("people.fpt", memo);
        memory.Put("people.cdx", index);
    };
    for (const Work& work : works) {
        restore();
        work(memory);
        const std::string after = State();
        std::size_t faults = 0;
        for (std::size_t step = 1; step < 100; ++step) {
            restore();
            FaultyFiles files(memory);
            files.FailAt(step, GetParam());
            bool finished = true;
            try {
                work(files);
            } catch (const Error&) {
                finished = false;
                ++faults;
            }
            const std::string state = State();
            EXPECT_TRUE(state == before || state == after) << "step " << step;
            ASSERT_FALSE(HasFailure()) << "step " << step;
            if (finished && !files.fired()) {
                EXPECT_EQ(state, after);
                break;
            }
        }
        EXPECT_GT(faults, 5U);
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyMaintenance,
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
