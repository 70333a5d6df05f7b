#pragma once

#include <cstdint>
#include <string>

namespace zu::dbf {

/// A field of a table to be made.
struct FieldDefinition {
    std::string name;       ///< 1 to 10 bytes of the table's code page: letters, digits, underscores
    char type = 'C';        ///< C N F D L M; with FoxPro 2 also G I B Y T; with Visual FoxPro also V Q W
    int width = 0;          ///< bytes; of no account for types that have one width only
    int decimals = 0;       ///< N, F, B
    bool nullable = false;  ///< Visual FoxPro only
};

/// The family of programs that a new table is for.
enum class Format : std::uint8_t { DBase3, FoxPro2, VisualFoxPro };

}  // namespace zu::dbf
