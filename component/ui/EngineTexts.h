#pragma once

#include <string>

#include "com/Bstr.h"

namespace zu::component {

/// The texts of the grid that belong to the engine. Each throws ComError.
com::Bstr PositionText(LONG record, LONG count);
/// The position of a record that is not saved yet.
com::Bstr NewPositionText(LONG record, LONG count);
/// Whether to save the changes of the current record; another text for a new one.
com::Bstr SaveQuestion(bool adding);
/// Has the engine show that a search found nothing.
void ReportNotFound(std::wstring_view searchText);

}  // namespace zu::component
