#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

#include "com/ComError.h"
#include "host/technologies/Value.h"

namespace zu::host {

/// Why a value does not become one of a type, for people: `place` ("Field CREDIT of table customers") is the
/// beginning, for example
///
///     Field SINCE of table customers takes a date, not "tomorrow"
///     Field COUNT of table customers cannot hold 99999: the number is too great
///
/// Errors of other kinds keep their own text behind the place.
com::ComError RefusedValue(const com::ComError& error, const std::wstring& place,
                           technologies::FieldType type, const VARIANT& value);

}  // namespace zu::host
