#pragma once

#include <string>
#include <string_view>

#include "com/ComError.h"

namespace zu::component {

/// What a function tells the engine's log about an error that ended it: the error's number, " - ", its
/// description, and where it happened, for example
///
///     13 - Type mismatch in DbfFromDbf
///
/// Errors of the automation run time show the numbers that scripts know; other failures show their HRESULT as
/// a signed number. Call it only inside a catch block.
std::wstring RunTimeErrorText(std::wstring_view function);

/// The exception being handled as a ComError, whatever it is. The thread's error information is taken along.
com::ComError CurrentRunTimeError();

/// The error's own text; where it has none, what its number means. Never empty.
std::wstring DescriptionOf(const com::ComError& error);

/// The same for an error that is no longer being handled.
std::wstring RunTimeErrorText(const com::ComError& error, std::wstring_view function);

}  // namespace zu::component
