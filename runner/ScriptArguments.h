#pragma once

#include <string>
#include <vector>

#include "runner/NamedMembers.h"

namespace zu::runner {

/// The script's arguments as a collection: Item (also without its name), Count, length, For Each; Named and
/// Unnamed sort out arguments of the form /name:value, /name+, /name- and /name.
class ScriptArguments final : public NamedMembers {
public:
    explicit ScriptArguments(const std::vector<std::wstring>& arguments);
};

}  // namespace zu::runner
