#pragma once

#include <string>

namespace zu::expression {

/// `value` rounded to `places` decimal places (negative: to tens, hundreds, ...), halves away from zero as
/// the number's shortest decimal form shows them: 1.005 rounds to 1.01 although the double lies below.
double RoundDecimal(double value, int places) noexcept;

/// Appends `value` right-justified in `width` characters with up to `decimals` places: fewer where the whole
/// number needs the room, asterisks where even that does not fit. `fill` stands on the left, behind a sign
/// when it is '0'.
void AppendStr(double value, std::size_t width, std::size_t decimals, char fill, std::string& out);

/// Appends the shortest text that reads back as `value`, without an exponent up to 10^15.
void AppendShortest(double value, std::string& out);

}  // namespace zu::expression
