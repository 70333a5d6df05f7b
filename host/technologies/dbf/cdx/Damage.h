#pragma once

#include <cstdint>
#include <string>

#include "portable/error/Error.h"

namespace zu::dbf::cdx {

/// Ends the work on a page whose bytes contradict each other. The callers that know file and tag put them in
/// front of the text.
[[noreturn]] inline void FailDamaged(std::uint32_t offset, const std::string& text) {
    throw Error(ErrorKind::Damaged, "page at offset " + std::to_string(offset) + ": " + text);
}

}  // namespace zu::dbf::cdx
