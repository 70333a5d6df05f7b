#pragma once

#include <optional>
#include <string_view>

namespace zu::expression {

/// The truth that a text stands for, in any case and padded or not: T, TRUE, Y, YES, .T., .Y., ON and numbers
/// other than 0 are true; F, FALSE, N, NO, .F., .N., OFF, 0 and blank texts are false; nothing for all
/// others.
std::optional<bool> TruthOfText(std::string_view text) noexcept;

}  // namespace zu::expression
