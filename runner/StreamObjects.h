#pragma once

#include "runner/NamedMembers.h"

namespace zu::runner {

class TextInput;
class TextOutput;

/// Standard output or error for scripts: Write, WriteLine, WriteBlankLines, Close.
class OutputObject final : public NamedMembers {
public:
    explicit OutputObject(TextOutput& stream);
};

/// Standard input for scripts: Read, ReadLine, ReadAll, Skip, SkipLine, AtEndOfStream, AtEndOfLine, Close.
class InputObject final : public NamedMembers {
public:
    explicit InputObject(TextInput& stream);
};

}  // namespace zu::runner
