#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "portable/textio/DateScanner.h"
#include "portable/textio/ImportFormat.h"

namespace zu::textio {

/// What a token turned out to be.
template <class Char>
struct ReadValue {
    enum class Kind : std::uint8_t {
        Integer16,    ///< `integer`
        Integer32,    ///< `integer`
        Single,       ///< `number`
        Double,       ///< `number`
        OtherNumber,  ///< `text` is no plain number: the conversion of the platform decides
        Date,         ///< `integer`, a Julian day
        NoDate,       ///< `text` is blank
        BadDate,      ///< `text` is no date
        Text,         ///< `text`
        Truth         ///< `text`: the engine decides what it means
    };

    Kind kind = Kind::Text;
    std::int32_t integer = 0;
    double number = 0;
    std::basic_string_view<Char> text;  ///< the token, for every kind
};

/// Width and type of the field that a value is read for.
struct ImportField {
    int type = 0;  ///< a FieldType, or another number for values that are taken as text
    int size = 0;  ///< defined width in characters
};

/// Turns tokens into the values that the fields of a record take.
class ValueReader {
public:
    explicit ValueReader(const ImportFormat& format);

    /// Characters of the field in a line of fixed length.
    std::size_t WidthOf(const ImportField& field) const noexcept;

    /// `token` must outlive the answer.
    template <class Char>
    ReadValue<Char> Read(const ImportField& field, std::basic_string_view<Char> token);

private:
    std::size_t maskLength_;
    int booleanLength_;
    int lengthOfSingle_;
    int lengthOfDouble_;
    int lengthOfCurrency_;
    bool stringsTrimmed_;
    DateScanner dates_;
    std::string narrow_;
};

extern template ReadValue<char> ValueReader::Read(const ImportField&, std::string_view);
extern template ReadValue<char16_t> ValueReader::Read(const ImportField&, std::u16string_view);

}  // namespace zu::textio
