#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/expression/RecordLayout.h"
#include "host/technologies/Table.h"
#include "host/technologies/dbf/DbfHeader.h"
#include "portable/text/CodePage.h"

namespace zu::dbf {

/// How the bytes of a field become a value.
enum class FieldKind : std::uint8_t {
    Character,
    Varchar,
    Varbinary,
    Number,
    Float,
    Date,
    Logical,
    Integer,
    Integer7,  ///< dBASE 7: big-endian, sign bit flipped; all zero is no value
    Double,
    Double7,  ///< dBASE 7: big-endian, sign bit flipped for positive, all bits for negative numbers
    Currency,
    DateTime,
    MemoText,
    MemoBinary,
    Raw  ///< bytes of an unknown type
};

/// What is known of the fields of a table, by position. Hidden columns are left out; position n of `record`,
/// `descriptions` and `kinds` is the same field.
struct TableLayout {
    expression::RecordLayout record;
    std::vector<technologies::FieldDescription> descriptions;
    std::vector<FieldKind> kinds;
    std::vector<std::string> warnings;

    /// Works out the layout. `codePage` must outlive it.
    static TableLayout Make(const DbfHeader& header, const text::CodePage& codePage,
                            const std::string& tableName);

    bool hasMemos() const noexcept;
};

}  // namespace zu::dbf
