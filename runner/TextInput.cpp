#include "runner/TextInput.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "portable/text/Utf.h"
#include "runner/TextEncoding.h"

namespace zu::runner {
namespace {

constexpr HRESULT kInputPastEnd = static_cast<HRESULT>(0x800A003E);
constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr wchar_t kConsoleEnd = 0x1A;  // Ctrl+Z at the start of a line

// Bytes of the UTF-8 sequence that a byte begins; 1 for a byte that begins none.
std::size_t SequenceLength(unsigned char lead) noexcept {
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    return 1;
}

}  // namespace

TextInput::TextInput() : handle_(GetStdHandle(STD_INPUT_HANDLE)) {
    DWORD mode = 0;
    console_ = GetConsoleMode(handle_, &mode) != FALSE;
    ended_ = !handle_ || handle_ == INVALID_HANDLE_VALUE;
}

std::string TextInput::ReadConsoleLine() {
    wchar_t characters[1024];
    DWORD count = 0;
    if (!ReadConsoleW(handle_, characters, static_cast<DWORD>(std::size(characters)), &count, nullptr))
        return {};
    if (count > 0 && characters[0] == kConsoleEnd) return {};
    return text::ToUtf8(com::AsUtf16({characters, count}));
}

bool TextInput::Fill() {
    if (!Receive()) return false;
    // The mark is skipped once it is complete; nobody waits for more than what looks like one.
    while (!begun_ && kMark.starts_with(buffer_) && buffer_.size() < kMark.size() && Receive()) {
    }
    if (!begun_ && buffer_.starts_with(kMark)) next_ = kMark.size();
    begun_ = true;
    return true;
}

bool TextInput::Receive() {
    if (ended_) return false;
    buffer_.erase(0, next_);
    next_ = 0;
    if (console_) {
        const std::string line = ReadConsoleLine();
        ended_ = line.empty();
        buffer_ += line;
        return !ended_;
    }
    char bytes[16 * 1024];
    DWORD count = 0;
    // A pipe whose writer is gone answers an error at its end.
    ended_ = !ReadFile(handle_, bytes, sizeof bytes, &count, nullptr) || count == 0;
    if (!ended_) buffer_.append(bytes, count);
    return !ended_;
}

bool TextInput::Available(std::size_t bytes) {
    while (buffer_.size() - next_ < bytes) {
        if (!Fill()) break;
    }
    return buffer_.size() - next_ >= bytes;
}

void TextInput::RequireInput() {
    if (AtEnd()) throw com::ComError(kInputPastEnd, L"Input past end of file");
}

bool TextInput::AtEnd() {
    return !Available(1);
}

bool TextInput::AtEndOfLine() {
    return AtEnd() || buffer_[next_] == '\r' || buffer_[next_] == '\n';
}

std::wstring TextInput::NextCharacter() {
    const std::size_t length = SequenceLength(static_cast<unsigned char>(buffer_[next_]));
    if (length > 1 && Available(length)) {
        // A sequence that is none counts as single bytes of the ANSI code page.
        std::wstring character = DecodePiece(std::string_view(buffer_).substr(next_, length));
        const bool wellFormed = character.size() == (length == 4 ? 2U : 1U);
        if (wellFormed) {
            next_ += length;
            return character;
        }
    }
    return DecodePiece(std::string_view(buffer_).substr(next_++, 1));
}

std::wstring TextInput::Read(std::size_t count) {
    RequireInput();
    std::wstring text;
    while (text.size() < count && !AtEnd())
        text += NextCharacter();
    return text;
}

std::string TextInput::TakeLine() {
    std::size_t searched = 0;
    for (;;) {
        const std::size_t end = buffer_.find('\n', next_ + searched);
        if (end != std::string::npos) {
            std::string line = buffer_.substr(next_, end - next_);
            next_ = end + 1;
            if (line.ends_with('\r')) line.pop_back();
            return line;
        }
        searched = buffer_.size() - next_;
        if (!Fill()) {
            std::string line = buffer_.substr(next_);
            next_ = buffer_.size();
            return line;
        }
    }
}

std::wstring TextInput::ReadLine() {
    RequireInput();
    return DecodePiece(TakeLine());
}

void TextInput::SkipLine() {
    RequireInput();
    TakeLine();
}

std::string TextInput::ReadBytes() {
    while (Fill()) {
    }
    std::string bytes = buffer_.substr(next_);
    next_ = buffer_.size();
    return bytes;
}

std::wstring TextInput::ReadAll() {
    RequireInput();
    return DecodePiece(ReadBytes());
}

}  // namespace zu::runner
