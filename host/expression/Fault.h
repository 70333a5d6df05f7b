#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zu::expression {

/// Ends compiling with a Syntax error: `expected EXPECTED, found FOUND (character N)`, N counted from 1.
[[noreturn]] void FailExpected(std::size_t position, std::string_view expected, std::string_view found);

/// Ends compiling with a Syntax error of another form; the character's number is added.
[[noreturn]] void FailSyntax(std::size_t position, std::string_view message);

/// The one of `names` that `name` was probably meant to be (at most two letters different, fewer for short
/// names, without regard to case); an empty text when there is none.
std::string NearestName(std::string_view name, const std::vector<std::string_view>& names);

/// `text` in quotation marks, shortened when it is long.
std::string Quoted(std::string_view text);
std::string Quoted(std::u16string_view text);

}  // namespace zu::expression
