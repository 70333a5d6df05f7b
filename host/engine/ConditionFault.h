#pragma once

#include <string>
#include <string_view>

#include "com/ComError.h"
#include "portable/error/Error.h"

namespace zu::host {

/// What is wrong with an expression and, shortened when it is long, the expression itself; its position is
/// told beside it.
std::wstring FaultReason(const Error& fault, std::wstring_view expression);

/// The fault of an expression as the engine's message. `where` follows the expression, for example
/// " for table orders".
com::ComError ConditionFault(const Error& fault, std::wstring_view expression, std::wstring_view where = {});

}  // namespace zu::host
