#pragma once

#include <string_view>

#include "portable/textio/Cell.h"
#include "portable/textio/ValueReader.h"

namespace zu::textio {

/// Turns tokens that are written plainly into cells, without a conversion of the platform. Such a cell
/// denotes the value that the field takes when it is given what ValueReader makes of the token.
class CellReader {
public:
    /// `reader` must outlive the object.
    explicit CellReader(ValueReader& reader) : reader_(reader) {}

    /// False: the token, or the type of the field, needs a closer look. The cell of a Boolean field holds the
    /// token: what it means is for the engine to say. `token` must outlive the cell.
    bool Read(const ImportField& field, std::string_view token, Cell& cell);

    /// Makes a cell of digits of a token that a number field can take as it stands. False: Read tells what it
    /// is.
    static bool ReadDigits(std::string_view token, Cell& cell) noexcept;

private:
    ValueReader& reader_;
};

}  // namespace zu::textio
