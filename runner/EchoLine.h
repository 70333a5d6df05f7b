#pragma once

#include <string>

#include "runner/CallArguments.h"

namespace zu::runner {

/// The arguments of an Echo call as one line, joined by blanks; `text` renders one value.
inline std::wstring EchoLine(const CallArguments& call, std::wstring (*text)(const VARIANT&)) {
    std::wstring line;
    for (std::size_t i = 0; i < call.count(); ++i) {
        if (i > 0) line += L' ';
        line += text(call[i]);
    }
    return line;
}

}  // namespace zu::runner
