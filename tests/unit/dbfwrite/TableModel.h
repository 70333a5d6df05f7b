#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfTable.h"
#include "portable/files/File.h"

namespace zu::dbf::test {

/// What a table should hold, kept in memory, and random changes made to both.
class TableModel {
public:
    TableModel(files::FileSystem& files, unsigned seed) : files_(files), random_(seed) {}

    /// Makes one random change through `table`: append, update, delete or recall. Errors come through; the
    /// model then holds the state before, and `intended()` the state that the change would have led to.
    void Change(DbfTable& table);

    /// Compares every record with the table, and every tag with the records.
    void ExpectEqual() const;
    /// The table holds the state before or after the change that was tried last; takes over the one it has.
    void ExpectBeforeOrAfter();

    std::size_t size() const noexcept { return records_.size(); }

private:
    struct Record {
        std::int64_t id = 0;
        std::string name;
        std::int64_t cents = 0;
        std::string note;
        std::string code;
        int day = 0;
        bool deleted = false;
        bool operator==(const Record&) const = default;
    };

    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    std::string Word(std::size_t longest);
    void Vary(Record& record);
    static void Put(technologies::RecordEdit& edit, const Record& before, const Record& after);
    static std::string Shown(const Record& record);

    files::FileSystem& files_;
    std::mt19937 random_;
    std::vector<Record> records_;
    std::vector<Record> intended_;
};

}  // namespace zu::dbf::test
