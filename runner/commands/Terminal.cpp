#include "runner/commands/Terminal.h"

#include <string>

#include "runner/TextOutput.h"

namespace zu::runner::commands {
namespace {

constexpr WORD kColours = FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE | FOREGROUND_INTENSITY;

bool ColoursAreWanted() {
    wchar_t first = 0;
    // A value longer than the room for it answers the length that it needs.
    return GetEnvironmentVariableW(L"NO_COLOR", &first, 1) == 0;
}

}  // namespace

Terminal::Terminal(TextOutput& out)
    : out_(out), handle_(GetStdHandle(STD_OUTPUT_HANDLE)), input_(GetStdHandle(STD_INPUT_HANDLE)) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!isConsole() || !GetConsoleScreenBufferInfo(handle_, &info)) return;
    usual_ = info.wAttributes;
    colours_ = ColoursAreWanted();
}

bool Terminal::isConsole() const noexcept {
    return out_.isConsole();
}

bool Terminal::isInteractive() const noexcept {
    DWORD mode = 0;
    return isConsole() && GetConsoleMode(input_, &mode);
}

std::size_t Terminal::width() const {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(handle_, &info)) return 80;
    const int columns = info.srWindow.Right - info.srWindow.Left + 1;
    return static_cast<std::size_t>(columns);
}

std::size_t Terminal::height() const {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(handle_, &info)) return 25;
    const int rows = info.srWindow.Bottom - info.srWindow.Top + 1;
    return static_cast<std::size_t>(rows);
}

WORD Terminal::AttributesOf(Style style) const noexcept {
    const WORD ground = usual_ & static_cast<WORD>(~kColours);
    switch (style) {
        case Style::Heading:
            return usual_ | FOREGROUND_INTENSITY;
        case Style::Faint:
            return ground | FOREGROUND_GREEN | FOREGROUND_BLUE;
        case Style::Good:
            return ground | FOREGROUND_GREEN | FOREGROUND_INTENSITY;
        case Style::Bad:
            return ground | FOREGROUND_RED | FOREGROUND_INTENSITY;
        default:
            return usual_;
    }
}

void Terminal::Line(std::wstring_view text, Style style) {
    const bool coloured = colours_ && style != Style::Plain;
    if (coloured) SetConsoleTextAttribute(handle_, AttributesOf(style));
    out_.Write(text);
    if (coloured) SetConsoleTextAttribute(handle_, usual_);
    out_.WriteLine(L"");
}

void Terminal::ShowPrompt(std::wstring_view text) {
    if (colours_) SetConsoleTextAttribute(handle_, AttributesOf(Style::Faint));
    out_.Write(text);
    if (colours_) SetConsoleTextAttribute(handle_, usual_);
    prompt_ = text.size();
}

void Terminal::ErasePrompt() {
    out_.Write(L"\r" + std::wstring(prompt_, L' ') + L"\r");
}

wchar_t Terminal::ReadKey() {
    for (;;) {
        INPUT_RECORD record{};
        DWORD count = 0;
        if (!ReadConsoleInputW(input_, &record, 1, &count) || count == 0) return L'q';
        if (record.EventType != KEY_EVENT || !record.Event.KeyEvent.bKeyDown) continue;
        const wchar_t key = record.Event.KeyEvent.uChar.UnicodeChar;
        if (key != 0) return key;
    }
}

}  // namespace zu::runner::commands
