#pragma once

#include "runner/TextInput.h"
#include "runner/TextOutput.h"

namespace zu::runner {

/// The three standard streams of the program.
class Console {
public:
    /// Lines end with CR LF as cscript ends them, or with LF alone when the environment variable ZURUN_EOL is
    /// "lf".
    Console();

    TextOutput out;
    TextOutput err;
    TextInput in;
};

}  // namespace zu::runner
