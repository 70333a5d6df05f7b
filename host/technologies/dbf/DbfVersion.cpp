#include "host/technologies/dbf/DbfVersion.h"

namespace zu::dbf {

namespace {

constexpr DbfVersion kVersions[] = {
    {.byte = 0x02, .name = "dBASE II or FoxBASE", .doubtful = true},
    {.byte = 0x03, .name = "dBASE III"},
    {.byte = 0x04, .name = "dBASE 7", .dBase7 = true},
    {.byte = 0x05, .name = "dBASE V"},
    {.byte = 0x06, .name = "SIx, encrypted", .encrypted = true},
    {.byte = 0x07, .name = "Visual Objects"},
    {.byte = 0x30, .name = "Visual FoxPro", .memo = MemoFormat::Fpt, .visualFoxPro = true},
    {.byte = 0x31,
     .name = "Visual FoxPro with auto-increment",
     .memo = MemoFormat::Fpt,
     .visualFoxPro = true},
    {.byte = 0x32, .name = "Visual FoxPro with Varchar", .memo = MemoFormat::Fpt, .visualFoxPro = true},
    {.byte = 0x43, .name = "dBASE IV SQL table", .dBase4 = true},
    {.byte = 0x63, .name = "dBASE IV SQL system table", .dBase4 = true},
    {.byte = 0x7B, .name = "dBASE IV with memo", .memo = MemoFormat::Dbt4, .dBase4 = true},
    {.byte = 0x83, .name = "dBASE III with memo", .memo = MemoFormat::Dbt3},
    {.byte = 0x86, .name = "SIx, encrypted, with memo", .encrypted = true},
    {.byte = 0x87, .name = "Visual Objects with memo", .memo = MemoFormat::Dbt3},
    {.byte = 0x8B, .name = "dBASE IV with memo", .memo = MemoFormat::Dbt4, .dBase4 = true},
    {.byte = 0x8C, .name = "dBASE 7 with memo", .memo = MemoFormat::Dbt4, .dBase7 = true},
    {.byte = 0x8E, .name = "dBASE IV SQL table with memo", .memo = MemoFormat::Dbt4, .dBase4 = true},
    {.byte = 0xCB, .name = "dBASE IV SQL table with memo", .memo = MemoFormat::Dbt4, .dBase4 = true},
    {.byte = 0xE5, .name = "SIx with memo", .memo = MemoFormat::Smt},
    {.byte = 0xE6, .name = "SIx, encrypted, with memo", .memo = MemoFormat::Smt, .encrypted = true},
    {.byte = 0xF5, .name = "FoxPro 2 with memo", .memo = MemoFormat::Fpt},
    {.byte = 0xF6, .name = "FoxPro 2, encrypted by SIx", .memo = MemoFormat::Fpt, .encrypted = true},
    {.byte = 0xFB, .name = "FoxBASE", .doubtful = true},
};

constexpr DbfVersion kUnknown = {.name = "unknown", .doubtful = true, .known = false};

}  // namespace

const DbfVersion& VersionOf(std::uint8_t byte) noexcept {
    for (const DbfVersion& version : kVersions) {
        if (version.byte == byte) return version;
    }
    return kUnknown;
}

}  // namespace zu::dbf
