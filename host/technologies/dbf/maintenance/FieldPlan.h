#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Table.h"
#include "host/technologies/dbf/FieldDefinition.h"
#include "portable/text/CodePage.h"

namespace zu::dbf::maintenance {

/// The fields of a table to be made, as they lie in the file, and the format that holds them.
struct FieldPlan {
    Format format = Format::DBase3;
    std::vector<FieldDefinition> fields;
};

/// Turns descriptions of fields into fields of a table. A field read from a table comes out as it is there.
///
///     Text                      C of the size; above 254 characters a memo
///     Decimal                   N of size and decimals; size 0: 20
///     Double, Single            F of size and decimals; B for sizes 0 and 20, which doubles are shown with
///     Integer32, 16, Byte       I in Visual FoxPro, N of 11, 6, 3 digits in the other formats
///     Currency                  Y
///     Date                      D; T for sizes above 10, which have room for a time
///     Boolean                   L
///     LongText                  M
///     Binary                    Q of the size; for sizes 0, 10 and above 254 W, in FoxPro 2 G
///
/// The format is the oldest that holds all fields: dBASE III for texts, numbers, dates and truth values,
/// FoxPro 2 for memos (those of dBASE III cannot hold every text), Visual FoxPro for the types I, B, Y, T, Q
/// and for fields that can be null. `wanted` ("dBASE III", "FoxPro 2", "Visual FoxPro", in any case and with
/// or without blanks) overrules that.
///
/// Errors name the field: InvalidArgument for faulty names, sizes and formats, and for a type that no table
/// has; Unsupported for a field that the wanted format does not have. Names are checked by MakeHeader.
FieldPlan PlanFields(const std::vector<technologies::FieldDescription>& fields, std::string_view wanted,
                     const text::CodePage& codePage);

}  // namespace zu::dbf::maintenance
