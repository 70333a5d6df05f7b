#pragma once

#include <cstdint>

namespace zu::textio {

/// A field that lies as text in a record, one byte a character of the text file's code page. Its content is
/// what the table's technology takes it for; what is odd in it is for the technology to say.
struct StoredField {
    enum class Form : std::uint8_t {
        Text,     ///< padded with blanks or NULs at the end, which are no content
        Number,   ///< a decimal, as text::DigitsField finds it; anything else is odd
        Date,     ///< yyyymmdd; everything that is no day from the year 100 on is no value
        Logical,  ///< T t Y y is true; what is not true is written as false
    };

    Form form = Form::Text;
    std::uint8_t decimals = 0;  ///< of numbers
    std::uint32_t offset = 0;   ///< in the record
    std::uint32_t width = 0;    ///< bytes
};

}  // namespace zu::textio
