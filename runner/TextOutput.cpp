#include "runner/TextOutput.h"

#include <algorithm>
#include <utility>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "portable/text/Utf.h"
#include "runner/ErrorTexts.h"

namespace zu::runner {
namespace {

// Consoles refuse very long texts in one call.
constexpr std::size_t kConsolePiece = 8000;

[[noreturn]] void Refuse() {
    const HRESULT code = HRESULT_FROM_WIN32(GetLastError());
    throw com::ComError(code, L"the output cannot be written: " + SystemErrorText(code));
}

}  // namespace

TextOutput::TextOutput(DWORD which, std::wstring lineEnd)
    : handle_(GetStdHandle(which)), console_(false), lineEnd_(std::move(lineEnd)) {
    DWORD mode = 0;
    console_ = GetConsoleMode(handle_, &mode) != FALSE;
}

void TextOutput::Write(std::wstring_view text) {
    if (text.empty() || !isOpen()) return;
    if (console_) {
        WriteConsoleText(text);
    } else {
        WriteBytes(text::ToUtf8(com::AsUtf16(text)));
    }
}

void TextOutput::WriteLine(std::wstring_view text) {
    Write(std::wstring(text) + lineEnd_);
}

void TextOutput::WriteLines(std::wstring_view text) {
    std::wstring lines;
    for (const wchar_t character : text) {
        if (character == L'\n') {
            lines += lineEnd_;
        } else {
            lines += character;
        }
    }
    WriteLine(lines);
}

void TextOutput::WriteConsoleText(std::wstring_view text) {
    while (!text.empty()) {
        const auto length = static_cast<DWORD>(std::min(text.size(), kConsolePiece));
        DWORD written = 0;
        if (!WriteConsoleW(handle_, text.data(), length, &written, nullptr) || written == 0) Refuse();
        text.remove_prefix(written);
    }
}

void TextOutput::WriteBytes(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1U << 20));
        if (!WriteFile(handle_, bytes.data(), length, &written, nullptr)) Refuse();
        bytes.remove_prefix(written);
    }
}

}  // namespace zu::runner
