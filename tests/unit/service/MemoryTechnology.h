#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Table.h"
#include "host/technologies/Technology.h"
#include "portable/files/File.h"

namespace zu::test {

/// What a table in memory holds, and what was asked of it. Shared by all tables opened under its name.
struct MemoryData {
    std::string name;
    std::vector<technologies::FieldDescription> fields;
    std::vector<std::vector<technologies::Value>> rows;
    std::vector<bool> deleted;
    std::vector<technologies::IndexDescription> indexes;
    std::vector<std::string> warnings;
    std::string file;  ///< opened with the table, when it is not empty
    bool writable = false;
    std::function<bool()> onSave;  ///< see MemoryEdit
    int saves = 0;

    int opened = 0;
    int open = 0;  ///< tables alive now
    technologies::Selection lastSelection;
    std::vector<technologies::KeyCriterion> lastCriteria;
    std::size_t lastIndex = 0;
    std::uint32_t lastLimit = 0;
    bool lastDeletedWanted = false;
};

/// The technology "MEM" for tests of everything above the files: its tables live in memory and answer a
/// fixed set of conditions: "even" and "odd" (by record number), "broken" (a syntax error at position 4) and
/// "unreadable" (an I/O failure). Work on whole tables is noted only; it answers Locked while the table is
/// open, and NotFound for the table "MISSING".
class MemoryTechnology final : public technologies::Technology {
public:
    /// Makes the technology known and forgets all tables.
    static void Install();
    /// The table `name`, made at first use with the fields NAME C(10), AGE N(3), PAY N(10,2), BORN D, ACTIVE
    /// L and five records, the third of them deleted.
    static MemoryData& Table(const std::string& name);

    MemoryTechnology(files::FileSystem& files, const technologies::TechnologySettings& settings)
        : files_(files), settings_(settings) {}

    const std::string& name() const noexcept override { return name_; }
    std::unique_ptr<technologies::Table> OpenTable(std::string_view database,
                                                   std::string_view table) override;
    technologies::Value Descend(const technologies::Value& value) override;

    std::vector<std::string> TableNames(std::string_view database) override;
    void CreateTable(std::string_view database, std::string_view table,
                     const std::vector<technologies::FieldDescription>& fields,
                     const std::vector<technologies::IndexField>& key) override;
    void DropTable(std::string_view database, std::string_view table) override;
    std::uint32_t Pack(std::string_view database, std::string_view table,
                       technologies::Progress* progress) override;
    void Zap(std::string_view database, std::string_view table) override;
    void CreateIndex(std::string_view database, std::string_view table,
                     const std::vector<technologies::IndexField>& key,
                     technologies::Progress* progress) override;
    void DropIndex(std::string_view database, std::string_view table, std::string_view index) override;
    void Reindex(std::string_view database, std::string_view table,
                 technologies::Progress* progress) override;
    technologies::CheckReport Check(std::string_view database, std::string_view table,
                                    technologies::Progress* progress) override;
    std::vector<std::string> Repair(std::string_view database, std::string_view table,
                                    technologies::Progress* progress) override;

    /// What was asked for last: the operation with its names, "Pack folder PEOPLE".
    static inline std::string lastWork;
    static inline std::vector<technologies::FieldDescription> lastFields;
    static inline std::vector<technologies::IndexField> lastKey;
    static inline technologies::CheckReport report;  ///< what Check answers; Repair answers its findings

    static inline technologies::TechnologySettings lastSettings;
    static inline std::string lastDatabase;

private:
    void Note(const char* work, std::string_view database, std::string_view table);

    files::FileSystem& files_;
    technologies::TechnologySettings settings_;
    std::string name_ = "MEM";
};

technologies::Value TextValue(std::u16string_view text);
technologies::Value DecimalValue(std::uint64_t units, std::uint8_t scale);

}  // namespace zu::test
