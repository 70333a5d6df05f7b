#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/technologies/Value.h"
#include "portable/text/CodePage.h"

namespace zu::dbf::cdx {

// What callers search for, turned into the type that a key part has. Texts that look like a number, a date or
// a truth value are taken as such; anything else is a TypeMismatch. Null is none of these and not passed
// here.

/// A day and the milliseconds since its midnight.
struct Moment {
    std::int32_t julianDay = 0;  ///< 0: the empty date
    std::int32_t milliseconds = 0;
};

double NumberOf(const technologies::Value& value);
/// Understands YYYYMMDD, YYYY-MM-DD, DD.MM.YYYY, each also followed by a time H:MM or H:MM:SS.
Moment MomentOf(const technologies::Value& value);
bool TruthOf(const technologies::Value& value);
/// The bytes of the code page; nothing when it lacks one of the characters.
std::optional<std::string> BytesOf(const technologies::Value& value, const text::CodePage& codePage);
/// The value is a text of nothing but blanks.
bool IsBlankText(const technologies::Value& value) noexcept;

}  // namespace zu::dbf::cdx
