#pragma once

#include "com/ComError.h"

namespace zu::runner::commands {

/// The reader of the output has gone, as `head` does when it has seen enough: no failure, but the end.
inline bool IsBrokenPipe(const com::ComError& error) noexcept {
    return error.code() == HRESULT_FROM_WIN32(ERROR_BROKEN_PIPE) ||
           error.code() == HRESULT_FROM_WIN32(ERROR_NO_DATA) ||
           error.code() == HRESULT_FROM_WIN32(ERROR_PIPE_NOT_CONNECTED);
}

}  // namespace zu::runner::commands
