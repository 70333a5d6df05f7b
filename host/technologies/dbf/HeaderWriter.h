#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/DbfVersion.h"
#include "host/technologies/dbf/FieldDefinition.h"
#include "portable/calendar/Calendar.h"

namespace zu::dbf {

/// The complete header of a table without records, as the programs of `format` write it.
///
/// Errors (messages name the field): InvalidArgument for names that are empty, too long, repeated or have
/// other characters than letters, digits and underscores, for widths and decimals out of range, for a record
/// beyond 65,500 bytes or too many fields; Unsupported for a type or a nullable field that `format` does not
/// have.
std::vector<std::byte> MakeHeader(Format format, std::uint8_t codePageMark,
                                  const std::vector<FieldDefinition>& fields,
                                  const calendar::Date& lastChange);

/// The memo file that goes with `format`.
MemoFormat MemoFormatOf(Format format) noexcept;
/// The field's content lies in the memo file.
bool IsMemoType(char type) noexcept;

}  // namespace zu::dbf
