#pragma once

#include <cstdint>

namespace zu::dbf {

/// The kinds of file that memo fields point into.
enum class MemoFormat : std::uint8_t {
    None,  ///< this version has no memo file of its own; a file that lies there is taken by its extension
    Dbt3,  ///< dBASE III: blocks of 512 bytes, texts end with 1A
    Dbt4,  ///< dBASE IV and 7: blocks with a length
    Fpt,   ///< FoxPro
    Smt    ///< SIx; not read
};

/// What the first byte of a table says.
struct DbfVersion {
    std::uint8_t byte = 0;
    const char* name = "";
    MemoFormat memo = MemoFormat::None;
    bool visualFoxPro = false;
    bool dBase4 = false;     ///< bytes 14 and 15 mean transaction and encryption
    bool dBase7 = false;     ///< descriptors of 48 bytes
    bool encrypted = false;  ///< by design of the version
    bool doubtful = false;   ///< accepted only when the sizes in the header fit together
    bool known = true;
};

/// Every byte has an answer; unknown ones are `!known` and doubtful.
const DbfVersion& VersionOf(std::uint8_t byte) noexcept;

}  // namespace zu::dbf
