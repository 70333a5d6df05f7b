#pragma once

#include <windows.h>

#include <memory>

namespace zu::runner {

/// Owns a kernel object's handle; both invalid values of the system count as none.
class WinHandle {
public:
    explicit WinHandle(HANDLE handle) noexcept : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}

    HANDLE get() const noexcept { return handle_.get(); }
    explicit operator bool() const noexcept { return handle_ != nullptr; }

private:
    struct Closer {
        void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
    };
    std::unique_ptr<void, Closer> handle_;
};

}  // namespace zu::runner
