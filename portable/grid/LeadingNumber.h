#pragma once

#include <string_view>

namespace zu::grid {

/// A number at the front of a typed text.
struct LeadingNumber {
    double value = 0;
    /// Whether the text held a number and nothing else; blanks do not count.
    bool whole = false;
};

/// Reads digits from the left and ignores what follows them: "12 apples" is 12, a text without a number is 0.
/// Blanks, tabs and line ends are passed over anywhere; a sign, a decimal point and an exponent (E or D)
/// belong to the number; "&H" leads hexadecimal and "&O" octal digits. A number too great for a double is
/// infinite.
LeadingNumber ReadLeadingNumber(std::u16string_view text);

}  // namespace zu::grid
