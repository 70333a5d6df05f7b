#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/technologies/Value.h"

namespace zu::dbf::write {

/// A moment as tables keep it.
struct Moment {
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;  ///< since midnight
};

/// The general text of a value: the shortest digits that show a number, dates as yyyy-mm-dd (and hh:mm:ss
/// where there is a time), True and False; empty for Null.
std::u16string TextOf(const technologies::Value& value);

/// The decimal digits of a number without its sign, at least `scale` + 1 of them; the last `scale` ones are
/// decimal places.
std::string DigitsOf(const technologies::Decimal& decimal);

/// Rounds half away from zero to `places` decimal places; a decimal with fewer places stays as it is.
technologies::Decimal Rounded(technologies::Decimal decimal, unsigned places);

/// The number that a text denotes; nothing when it is none. Blanks around it do not matter.
std::optional<technologies::Decimal> DecimalIn(std::u16string_view text);

/// The moment that a text denotes: yyyymmdd or yyyy-mm-dd (also with / or .), and a time hh:mm or hh:mm:ss
/// behind a blank or T. Nothing when it is none.
std::optional<Moment> MomentIn(std::u16string_view text);

/// The truth value that a text denotes: T, TRUE, Y, YES, ON, .T., .Y. and F, FALSE, N, NO, OFF, .F., .N. in
/// any case, and numbers. Nothing when it is none.
std::optional<bool> TruthIn(std::u16string_view text);

/// Only blanks, or nothing at all.
bool IsBlankText(std::u16string_view text) noexcept;

}  // namespace zu::dbf::write
