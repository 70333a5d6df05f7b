#pragma once

#include <string_view>

namespace zu::runner::commands {

/// The text holds a `*` or a `?`.
bool HasWildcard(std::wstring_view text) noexcept;

/// `*` stands for any characters, `?` for one; letters match without regard to case. Takes time in
/// proportion to the product of both lengths at most.
bool WildcardMatch(std::wstring_view pattern, std::wstring_view name) noexcept;

}  // namespace zu::runner::commands
