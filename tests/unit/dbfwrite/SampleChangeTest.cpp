// Tables and indexes of other programs, changed by us: the examination finds no more than it did before.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "host/technologies/dbf/maintenance/TableRebuild.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"
#include "portable/files/Path.h"
#include "tests/unit/cdx/SampleTable.h"
#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::test {
namespace {

class SampleChanges : public ::testing::TestWithParam<const char*> {
protected:
    SampleChanges() {
        memory.AllowMapping(false);
        const std::string path = files::Join(cdx::SampleFolder(), GetParam());
        for (const char* extension : {".dbf", ".fpt", ".FPT", ".dbt", ".cdx", ".CDX"})
            Copy(files::WithExtension(path, extension));
    }
    void Copy(const std::string& path) {
        files::FileSystem& system = files::SystemFiles();
        if (!system.Exists(path)) return;
        const auto file = system.Open(path, {});
        std::vector<std::byte> bytes(static_cast<std::size_t>(file->Size()));
        ASSERT_EQ(file->ReadAt(0, bytes), bytes.size());
        const std::string name(files::FileName(path));
        memory.Put("s" + std::string(files::Extension(name)), bytes);
    }
    std::size_t Findings() { return maintenance::CheckTable(memory, "s.dbf", {}, nullptr).findings.size(); }
    void ExpectUsableTags() {
        const auto table = DbfTable::Open(memory, "s.dbf", {});
        for (const auto& index : table->indexes())
            EXPECT_TRUE(index.usable) << index.name << ": " << index.reason;
    }

    // Some of the tables came without their memo file.
    static bool isMemo(const technologies::FieldDescription& field) {
        return field.type == technologies::FieldType::LongText;
    }

    files::MemoryFiles memory;
};

TEST_P(SampleChanges, LeaveTableAndTagsSound) {
    const std::size_t before = Findings();
    {
        const auto table = DbfTable::Open(memory, "s.dbf", {});
        const std::uint32_t count = table->RecordCount();
        technologies::Value value;
        for (std::uint32_t record = 1; record <= count; record += 1 + count / 60) {
            // The values of another record: every key changes, and all of them fit. A tag that wants its keys
            // to be different refuses them; then the record is marked or recalled instead.
            const auto edit = table->EditRecord(record);
            for (std::size_t field = 0; field < table->fields().size(); ++field) {
                if (table->fields()[field].readOnly || isMemo(table->fields()[field])) continue;
                table->ReadValue(count + 1 - record, field, value);
                edit->Set(field, value);
            }
            try {
                ASSERT_TRUE(edit->Save());
            } catch (const Error& error) {
                ASSERT_EQ(error.kind(), ErrorKind::AlreadyExists) << error.what();
                const auto mark = table->EditRecord(record);
                mark->SetDeleted(!mark->isDeleted());
                ASSERT_TRUE(mark->Save());
            }
        }
    }
    EXPECT_EQ(Findings(), before);
    ExpectUsableTags();
    maintenance::Pack(memory, "s.dbf", {});
    EXPECT_EQ(Findings(), before);
    ExpectUsableTags();
}

INSTANTIATE_TEST_SUITE_P(All, SampleChanges,
                         ::testing::Values("public/contacts.dbf", "public/expense reports.dbf",
                                           "public/orderdetails.dbf", "public/orders.dbf", "xbase/deep.dbf",
                                           "xbase/orders.dbf", "xbase/vfp.dbf"),
                         [](const auto& instance) {
                             std::string name;
                             for (const char c : std::string(instance.param))
                                 name += (c >= 'a' && c <= 'z') ? c : '_';
                             return name;
                         });

}  // namespace
}  // namespace zu::dbf::test
