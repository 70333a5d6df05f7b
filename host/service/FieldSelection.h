#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/service/ViewField.h"

namespace zu::host {

/// Which of `fields` a view is to carry, in order, as positions in `fields`; nothing for all of them.
///
/// `choice`: omitted, Empty, Null, blank text or an empty array: all; a text: names separated by commas, each
/// of them plain or in brackets; an array in any form (see com::ReadList): names or numbers counted from 0;
/// the number 0: none (for counting); another number: the one field of that number. A name or number without
/// a field is a NotFound error that names it and `tableName`; any other kind of value is a type mismatch.
std::optional<std::vector<std::size_t>> ChooseFields(const VARIANT& choice, const ViewFields& fields,
                                                     const std::string& tableName);

/// The whole number that `value` holds: any numeric type whose value has no fraction. Nothing for another
/// content.
std::optional<LONG> WholeNumber(const VARIANT& value);

}  // namespace zu::host
