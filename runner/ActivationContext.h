#pragma once

#include <windows.h>

namespace zu::runner {

/// While one lives, the calling thread finds the classes of the DLLs beside the program without any
/// registration. When one of the DLLs is missing there, nothing changes and the registered ones are used.
class ActivationContext {
public:
    ActivationContext();
    ~ActivationContext();
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
};

}  // namespace zu::runner
