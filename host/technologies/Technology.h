#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Maintenance.h"
#include "host/technologies/Table.h"
#include "host/technologies/Value.h"

namespace zu::technologies {

/// Settings that reach down to the files.
struct TechnologySettings {
    std::string dataFolder;    ///< absolute; relative databases start here
    unsigned codePage = 1252;  ///< for tables that carry no code page mark
    bool showDeleted = false;  ///< selections keep deleted records also without being asked
    bool blankNumbersAreNull = false;
    unsigned lockWait = 5000;        ///< milliseconds that a lock of another process is waited for
    bool clipperLocks = false;       ///< locks as Clipper programs take them; false: as FoxPro does
    bool survivePowerCut = false;    ///< confirmed changes are on the disk, not only with the system
    bool allowStaleIndexes = false;  ///< write also when an index cannot be kept up to date
    std::string newTableFormat{};  ///< "dBASE III", "FoxPro 2", "Visual FoxPro"; empty: what the fields need
};

/// A kind of database: the one door from the database service to files.
class Technology {
public:
    virtual ~Technology() = default;

    /// The name in front of the "|" of a database name, e.g. "DBF".
    virtual const std::string& name() const noexcept = 0;

    /// Opens a table. `database` and `table` are UTF-8 and may be empty as the technology allows.
    virtual std::unique_ptr<Table> OpenTable(std::string_view database, std::string_view table) = 0;

    /// The form of a value that index keys hold for descending order.
    virtual Value Descend(const Value& value) = 0;

    // Work on tables as a whole. All of it needs the table for itself: Locked when another program, or an
    // open table of this one, has it. A failure or a cancelled job leaves the old files as they were.
    // Technologies that do not write need not override any of it: the answer is Unsupported. `progress` may
    // be null.

    /// The names of the tables of a database, sorted. NotFound when there is no such database.
    virtual std::vector<std::string> TableNames(std::string_view database);
    /// Makes an empty table, with an index when `key` is not empty. AlreadyExists, InvalidArgument (a field
    /// that no format can hold, a name that cannot be used, no fields), and the errors of CreateIndex.
    virtual void CreateTable(std::string_view database, std::string_view table,
                             const std::vector<FieldDescription>& fields, const std::vector<IndexField>& key);
    /// Removes a table with all its files.
    virtual void DropTable(std::string_view database, std::string_view table);

    /// Leaves out what is marked deleted, and unused memo space. Answers the number of records left out.
    virtual std::uint32_t Pack(std::string_view database, std::string_view table, Progress* progress);
    /// Leaves out all records.
    virtual void Zap(std::string_view database, std::string_view table);

    /// Makes the table's default index from `key`, or makes it anew. InvalidArgument for an empty key or an
    /// unknown field, Syntax for a faulty expression.
    virtual void CreateIndex(std::string_view database, std::string_view table,
                             const std::vector<IndexField>& key, Progress* progress);
    /// Removes an index; NotFound when there is none of that name.
    virtual void DropIndex(std::string_view database, std::string_view table, std::string_view index);
    /// Builds all indexes anew from the records.
    virtual void Reindex(std::string_view database, std::string_view table, Progress* progress);

    /// Examines table, memos and indexes to the last byte, and changes nothing. Works on damaged tables too:
    /// an error is thrown only when the files cannot be read at all.
    virtual CheckReport Check(std::string_view database, std::string_view table, Progress* progress);
    /// Mends what can be mended, and keeps the old files beside the table. Answers what was done, one
    /// sentence each; empty when there was nothing to mend.
    virtual std::vector<std::string> Repair(std::string_view database, std::string_view table,
                                            Progress* progress);

protected:
    [[noreturn]] void RefuseWork(const char* work) const;
};

}  // namespace zu::technologies
