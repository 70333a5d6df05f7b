#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "host/expression/RecordLayout.h"
#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// How the values of a key expression become key bytes.
enum class KeyEncoding : std::uint8_t {
    Text,       ///< bytes of the code page, padded with blanks
    Integer32,  ///< four bytes, for an integer field alone
    Double,     ///< eight bytes, for every other number
    Currency,   ///< eight bytes of units, for a currency field alone
    Date,       ///< the Julian day as a double
    DateTime,   ///< Julian day and fraction as a double
    Logical     ///< 'T' or 'F'
};

/// The form of the keys of one tag. The type is stored nowhere in the file: it follows from the expression.
struct KeyForm {
    KeyEncoding encoding = KeyEncoding::Text;
    std::size_t width = 0;  ///< bytes of the value, without the byte that tells nulls apart
    bool nullable = false;  ///< one byte more in front: 0x80, or all bytes zero for null

    std::size_t length() const noexcept { return width + (nullable ? 1 : 0); }
    KeyShape shape() const noexcept {
        return {length(), encoding == KeyEncoding::Text ? std::byte{0x20} : std::byte{0}};
    }
    bool operator==(const KeyForm&) const = default;

    /// The form for a new tag. Unsupported when the expression has no type that an index can hold, Overflow
    /// when its texts are too long.
    static KeyForm ForNewTag(const expression::Program& key, const expression::RecordLayout& layout);

    /// The forms that a present tag of this key length can have, the likeliest first: writers disagree about
    /// currency. None, and the reason, when the length is that of no form.
    static std::vector<KeyForm> ForTag(const expression::Program& key, const expression::RecordLayout& layout,
                                       std::size_t keyLength, bool nullable, std::string& reason);
};

}  // namespace zu::dbf::cdx
