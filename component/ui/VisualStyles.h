#pragma once

#include <windows.h>

namespace zu::component {

/// While it lives, new windows of the thread get the looks of the current desktop, whatever the host program
/// asked for: a DLL cannot set its host's manifest, so it activates its own.
class VisualStyles {
public:
    VisualStyles() noexcept;
    ~VisualStyles();
    VisualStyles(const VisualStyles&) = delete;
    VisualStyles& operator=(const VisualStyles&) = delete;

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

}  // namespace zu::component
