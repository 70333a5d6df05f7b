#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace zu {

/// What went wrong, for code that must decide; people read the message.
enum class ErrorKind {
    InvalidArgument,  ///< a value or name that cannot be used
    NotFound,         ///< file, table, index, field or routine does not exist
    AlreadyExists,    ///< the thing to be made is there already
    AccessDenied,     ///< the system refuses access
    Locked,           ///< another process holds the file or the record
    DiskFull,         ///< no room to write
    IoFailure,        ///< the system reports a read or write error
    Damaged,          ///< the bytes of a file contradict each other
    Unsupported,      ///< a known format or feature that is not handled
    Syntax,           ///< a condition or expression cannot be understood
    TypeMismatch,     ///< a value of the wrong type
    Overflow,         ///< a value outside the range of its target
    Conflict,         ///< another process changed the data meanwhile
    Cancelled,        ///< the user ended the job
    Internal          ///< a mistake of our own
};

/// The one exception type of the portable code.
///
/// `what()` is UTF-8 text for people: it names the file, field or position and what was expected.
/// `position()` is the zero-based character position in a source text, for syntax errors.
class Error : public std::runtime_error {
public:
    Error(ErrorKind kind, const std::string& message, std::optional<std::size_t> position = std::nullopt)
        : std::runtime_error(message), kind_(kind), position_(position) {}

    ErrorKind kind() const noexcept { return kind_; }
    std::optional<std::size_t> position() const noexcept { return position_; }

private:
    ErrorKind kind_;
    std::optional<std::size_t> position_;
};

}  // namespace zu
