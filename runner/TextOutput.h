#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zu::runner {

/// Standard output or standard error: characters on a console, UTF-8 elsewhere. Nothing is held back, so that
/// what a script has written is there whatever happens next.
class TextOutput {
public:
    /// `which` is STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
    TextOutput(DWORD which, std::wstring lineEnd);

    /// Throws com::ComError when the other end takes no more.
    void Write(std::wstring_view text);
    /// Writes the text and a line end; '\n' inside the text becomes a line end too.
    void WriteLines(std::wstring_view text);
    /// Writes the text as it is and a line end.
    void WriteLine(std::wstring_view text);

    /// There is somebody at the other end, as far as can be known before writing.
    bool isOpen() const noexcept { return handle_ && handle_ != INVALID_HANDLE_VALUE; }
    bool isConsole() const noexcept { return console_; }
    const std::wstring& lineEnd() const noexcept { return lineEnd_; }

private:
    void WriteConsoleText(std::wstring_view text);
    void WriteBytes(std::string_view bytes);

    HANDLE handle_;
    bool console_;
    std::wstring lineEnd_;
};

}  // namespace zu::runner
