#pragma once

#include <string>
#include <string_view>

#include "host/technologies/Value.h"

namespace zu::interop {

/// Appends `utf8` as a JSON string.
void AppendJsonText(std::string_view utf8, std::string& out);

/// Appends a value as JSON: null, true/false, integers and doubles as numbers (doubles with all their
/// digits), decimals and currency as strings of digits ("-12.50"), dates as "YYYY-MM-DD hh:mm:ss.mmm", texts,
/// bytes as {"hex": "..."}.
void AppendJsonValue(const technologies::Value& value, std::string& out);

}  // namespace zu::interop
