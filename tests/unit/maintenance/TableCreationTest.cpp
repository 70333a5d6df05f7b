#include "host/technologies/dbf/maintenance/TableCreation.h"

#include <gtest/gtest.h>

#include "host/technologies/dbf/DbfTechnology.h"
#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "portable/error/Error.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/MemoryFiles.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

using files::FaultyFiles;
using technologies::FieldDescription;
using technologies::FieldType;

FieldDescription Described(const char* name, FieldType type, int size = 0, int decimals = 0) {
    FieldDescription field;
    field.name = name;
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    return field;
}

const std::vector<FieldDescription> kFields{Described("ID", FieldType::Decimal, 8),
                                            Described("NAME", FieldType::Text, 20),
                                            Described("NOTE", FieldType::LongText)};

class Creation : public ::testing::Test {
protected:
    Creation() : technology(memory, Settings()) { memory.Put("data/keep.txt", {}); }

    static technologies::TechnologySettings Settings() {
        technologies::TechnologySettings settings;
        settings.dataFolder = "data";
        return settings;
    }
    std::string Files() {
        std::string names;
        for (const std::string& name : memory.List("data"))
            names += name + " ";
        return names;
    }
    ErrorKind KindOf(const std::vector<FieldDescription>& fields,
                     const std::vector<technologies::IndexField>& key = {}) {
        try {
            technology.CreateTable("", "new", fields, key);
        } catch (const Error& error) {
            return error.kind();
        }
        return ErrorKind::Internal;
    }

    files::MemoryFiles memory;
    DbfTechnology technology;
};

TEST_F(Creation, ANewTableIsEmptySoundAndReadyToWrite) {
    technology.CreateTable("", "new", kFields, {{"NAME", false}, {"ID", true}});
    EXPECT_EQ(Files(), "keep.txt new.cdx new.dbf new.fpt ");
    EXPECT_TRUE(technology.Check("", "new", nullptr).findings.empty());
    {
        const auto table = technology.OpenTable("", "new");
        EXPECT_TRUE(table->warnings().empty());
        EXPECT_EQ(table->RecordCount(), 0U);
        ASSERT_EQ(table->indexes().size(), 1U);
        EXPECT_EQ(table->indexes()[0].name, "NEW");
        EXPECT_EQ(table->DefaultIndex(), std::optional<std::size_t>(0));
        const auto edit = table->NewRecord();
        edit->Set(0, Integer(1));
        edit->Set(1, Text(u"first"));
        edit->Set(2, Text(u"a longer text"));
        EXPECT_TRUE(edit->Save());
    }
    EXPECT_TRUE(technology.Check("", "new", nullptr).findings.empty());
}

TEST_F(Creation, FieldsComeBackAsTheyWereDescribed) {
    const std::vector<FieldDescription> fields{
        Described("T", FieldType::Text, 7),       Described("N", FieldType::Decimal, 9, 3),
        Described("F", FieldType::Double, 15, 5), Described("B", FieldType::Double, 20, 2),
        Described("I", FieldType::Integer32, 11), Described("Y", FieldType::Currency, 21, 4),
        Described("D", FieldType::Date, 8),       Described("M", FieldType::Date, 14),
        Described("L", FieldType::Boolean, 1),    Described("X", FieldType::LongText, 10),
        Described("Q", FieldType::Binary, 30),    Described("W", FieldType::Binary, 10)};
    technology.CreateTable("", "new", fields, {});
    const auto table = technology.OpenTable("", "new");
    ASSERT_EQ(table->fields().size(), fields.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        EXPECT_EQ(table->fields()[i].name, fields[i].name);
        EXPECT_EQ(table->fields()[i].type, fields[i].type) << fields[i].name;
        EXPECT_EQ(table->fields()[i].size, fields[i].size) << fields[i].name;
    }
}

TEST_F(Creation, ATableThatIsThereIsNotReplaced) {
    technology.CreateTable("", "new", kFields, {});
    EXPECT_EQ(KindOf(kFields), ErrorKind::AlreadyExists);
    memory.Put("data/NEW.DBF", memory.Get("data/new.dbf"));
    memory.Remove("data/new.dbf");
    EXPECT_EQ(KindOf(kFields), ErrorKind::AlreadyExists);
}

TEST_F(Creation, FaultyFieldsLeaveNothingBehind) {
    EXPECT_EQ(KindOf({}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("A", FieldType::Text, 0)}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("A", FieldType::Decimal, 21)}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("A", FieldType::Decimal, 5, 4)}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("", FieldType::Boolean)}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("A B", FieldType::Boolean)}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("ELEVENCHARS", FieldType::Boolean)}), ErrorKind::InvalidArgument);
    EXPECT_EQ(KindOf({Described("A", FieldType::Boolean), Described("a", FieldType::Boolean)}),
              ErrorKind::InvalidArgument);
    EXPECT_EQ(Files(), "keep.txt ");
}

TEST_F(Creation, AFaultyKeyLeavesNothingBehind) {
    EXPECT_EQ(KindOf(kFields, {{"NOFIELD", false}}), ErrorKind::Syntax);
    EXPECT_EQ(KindOf(kFields, {{"NAME+", false}}), ErrorKind::Syntax);
    EXPECT_EQ(KindOf(kFields, {{"NOTE", false}}), ErrorKind::Unsupported);
    EXPECT_EQ(Files(), "keep.txt ");
}

TEST_F(Creation, TheCodePageOfTheSettingsIsMarkedInTheHeader) {
    technologies::TechnologySettings settings = Settings();
    settings.codePage = 866;
    maintenance::CreateTable(memory, "data/cyr.dbf", settings, kFields, {});
    EXPECT_EQ(memory.Get("data/cyr.dbf")[29], std::byte{0x65});
    maintenance::CreateTable(memory, "data/win.dbf", Settings(), kFields, {});
    EXPECT_EQ(memory.Get("data/win.dbf")[29], std::byte{0x03});
}

TEST_F(Creation, ADroppedTableIsGoneWithAllItsFiles) {
    technology.CreateTable("", "new", kFields, {{"NAME", false}});
    memory.Put("data/new.cpg", {});
    technology.DropTable("", "new");
    EXPECT_EQ(Files(), "keep.txt ");
    EXPECT_THROW(technology.DropTable("", "new"), Error);
}

TEST_F(Creation, ATableInUseIsNotDropped) {
    technology.CreateTable("", "new", kFields, {});
    const auto table = technology.OpenTable("", "new");
    EXPECT_THROW(technology.DropTable("", "new"), Error);
    EXPECT_EQ(Files(), "keep.txt new.dbf new.fpt ");
}

class FaultyCreation : public Creation, public ::testing::WithParamInterface<FaultyFiles::Fault> {
protected:
    bool isCrash() const {
        return GetParam() == FaultyFiles::Fault::Crash || GetParam() == FaultyFiles::Fault::Torn;
    }
};

TEST_P(FaultyCreation, AFaultAtAnyStepLeavesNoTableOrAWholeOne) {
    std::size_t faults = 0;
    for (std::size_t step = 1; step < 100; ++step) {
        FaultyFiles files(memory);
        files.FailAt(step, GetParam());
        bool finished = true;
        try {
            maintenance::CreateTable(files, "data/new.dbf", Settings(), kFields, {{"NAME", false}});
        } catch (const Error&) {
            finished = false;
            ++faults;
        }
        // A process that has ended cannot clean up; what it leaves is in nobody's way.
        if (!finished && !isCrash()) {
            EXPECT_EQ(Files(), "keep.txt ") << "step " << step;
        }
        if (memory.Exists("data/new.dbf")) {
            EXPECT_TRUE(technology.OpenTable("", "new")->warnings().empty()) << "step " << step;
            EXPECT_TRUE(technology.Check("", "new", nullptr).findings.empty()) << "step " << step;
            technology.DropTable("", "new");
        }
        technology.CreateTable("", "new", kFields, {{"NAME", false}});
        EXPECT_TRUE(technology.Check("", "new", nullptr).findings.empty()) << "step " << step;
        technology.DropTable("", "new");
        ASSERT_EQ(Files(), "keep.txt ") << "step " << step;
        if (finished && !files.fired()) break;
    }
    EXPECT_GT(faults, 5U);
}

TEST_P(FaultyCreation, AFaultAtAnyStepOfARemovalLeavesTheTableOrNothing) {
    std::size_t faults = 0;
    for (std::size_t step = 1; step < 100; ++step) {
        if (!memory.Exists("data/new.dbf")) technology.CreateTable("", "new", kFields, {{"NAME", false}});
        FaultyFiles files(memory);
        files.FailAt(step, GetParam());
        bool finished = true;
        try {
            maintenance::DropTable(files, "data/new.dbf");
        } catch (const Error&) {
            finished = false;
            ++faults;
        }
        try {
            EXPECT_TRUE(technology.OpenTable("", "new")->warnings().empty()) << "step " << step;
            EXPECT_FALSE(finished);
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::NotFound) << error.what();
        }
        if (finished && !files.fired()) break;
    }
    EXPECT_GT(faults, GetParam() == FaultyFiles::Fault::Full ? 0U : 3U);
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyCreation,
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
