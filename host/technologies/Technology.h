#pragma once

#include <memory>
#include <string>
#include <string_view>

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
};

}  // namespace zu::technologies
