#pragma once

#include <string_view>

#include "runner/TextInput.h"
#include "runner/TextOutput.h"

namespace zu::runner {

/// The three standard streams of the program.
class Console {
public:
    /// Lines end with CR LF as cscript ends them, or with LF alone when the environment variable ZURUN_EOL is
    /// "lf".
    Console();

    /// Tells people why something has failed, in lines of their own: on standard error, or on standard output
    /// where that cannot be written. False when nobody can be told: then only the exit code says it.
    bool Tell(std::wstring_view text) noexcept;

    TextOutput out;
    TextOutput err;
    TextInput in;
};

}  // namespace zu::runner
