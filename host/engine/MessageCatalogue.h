#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zu::host {

/// Codes of the engine's messages. The high half marks them as automation errors of the engine's own.
enum class MessageCode : std::uint32_t {
    ConditionFault = 0x80041017,    ///< position (from 1), text of the fault
    NoRoutineName = 0x8004102C,     ///< function
    PositionLabel = 0x8004102D,     ///< record (from 1), records
    SaveNewRecord = 0x8004102E,     ///< none
    SaveChanges = 0x8004102F,       ///< none
    TextNotFound = 0x80041030,      ///< text
    UpdateListFault = 0x80041031,   ///< none
    FunctionMissing = 0x8004103C,   ///< function
    NewPositionLabel = 0x80041042,  ///< record (from 1), records
};

/// The text for a code with `arguments` put in for %1, %2, ... (%% is a percent sign). An argument that is
/// not given leaves its place empty. A code that is not in the catalogue gives a text with the code and all
/// arguments.
std::wstring MessageText(std::uint32_t code, const std::vector<std::wstring>& arguments);

/// True for the codes above.
bool IsKnownMessage(std::uint32_t code) noexcept;

}  // namespace zu::host
