#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfVersion.h"
#include "portable/calendar/Calendar.h"
#include "portable/files/File.h"

namespace zu::dbf {

/// One field as the header describes it, already reconciled with the record length.
struct FieldDescriptor {
    std::string name;  ///< bytes as stored, without the garbage behind the NUL
    char type = 0;
    std::uint32_t offset = 0;  ///< in the record; counted, never taken from the file
    std::uint32_t width = 0;   ///< bytes, at least 1
    std::uint8_t decimals = 0;
    std::uint8_t flags = 0;          ///< FieldFlag
    std::uint32_t nextNumber = 0;    ///< auto-increment: what the next record gets
    std::uint8_t step = 0;           ///< auto-increment
    bool isSystem() const noexcept;  ///< hidden from users
    bool isNullable() const noexcept;
    bool isBinary() const noexcept;  ///< no character set
};

/// The header of a DBF file, read with the tolerance that real files need.
///
/// Refused (`zu::Error`): files too short for a header, lengths that contradict the file (Damaged), encrypted
/// tables, dBASE II (Unsupported), anything whose first byte is no known version and whose sizes do not fit
/// together (Damaged). Everything that was put up with is in `warnings`.
struct DbfHeader {
    std::uint8_t versionByte = 0;
    DbfVersion version;
    std::optional<calendar::Date> lastChange;  ///< absent when impossible
    std::uint32_t recordCount = 0;             ///< as stated; the file may hold fewer or more
    std::uint32_t headerLength = 0;            ///< where the first record begins
    std::uint32_t recordLength = 0;
    std::uint8_t tableFlags = 0;
    std::uint8_t codePageMark = 0;
    std::string driverName;  ///< dBASE 7: name of the language driver, e.g. "DBWINUS0"
    std::vector<FieldDescriptor> fields;
    bool isConsistent = true;  ///< the fields fill the record exactly; otherwise nothing may be written
    std::vector<std::string> warnings;

    /// Reads the header of `file`; messages name its path.
    static DbfHeader Read(const files::File& file);
};

}  // namespace zu::dbf
