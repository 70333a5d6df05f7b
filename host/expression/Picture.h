#pragma once

#include <string>
#include <string_view>

namespace zu::expression {

// The forms of TRANSFORM. A picture may begin with functions behind "@" up to a blank: "!" upper case,
// "Z" blanks instead of zero, "L" zeros in front.

/// Digits take the places of "9", "#" and "*" (which fills empty places), "." is the decimal point, ","
/// groups; everything else stands as it is. Asterisks when the number does not fit.
void AppendNumberPicture(double value, std::string_view picture, std::string& out);

/// Characters take the places of "X", "A", "N", "9", "#" and "!" (which makes them upper case); everything
/// else stands as it is.
void AppendTextPicture(std::string_view text, std::string_view picture, std::string& out);

}  // namespace zu::expression
