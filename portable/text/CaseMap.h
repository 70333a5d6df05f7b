#pragma once

namespace zu::text {

/// The other case of a character of the supported character sets (Latin, Greek, Cyrillic), one to one; a
/// character without such a partner is answered unchanged. Source: simple case mappings of Unicode 15.
char16_t ToUpper(char16_t character) noexcept;
char16_t ToLower(char16_t character) noexcept;

}  // namespace zu::text
