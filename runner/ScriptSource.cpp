#include "runner/ScriptSource.h"

#include <windows.h>

#include <algorithm>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/ErrorTexts.h"
#include "runner/TextEncoding.h"
#include "runner/WinHandle.h"

namespace zu::runner {
namespace {

// Far above any script, far below what would hurt.
constexpr LONGLONG kLargestScript = 64 * 1024 * 1024;

[[noreturn]] void Refuse(ErrorKind kind, const std::wstring& text) {
    throw Error(kind, text::ToUtf8(com::AsUtf16(text)));
}

[[noreturn]] void RefuseFile(const std::wstring& path, DWORD reason) {
    const bool missing = reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND ||
                         reason == ERROR_INVALID_NAME || reason == ERROR_BAD_PATHNAME;
    const ErrorKind kind = missing                         ? ErrorKind::NotFound
                           : reason == ERROR_ACCESS_DENIED ? ErrorKind::AccessDenied
                                                           : ErrorKind::IoFailure;
    Refuse(kind, L"cannot read " + path + L": " + SystemErrorText(HRESULT_FROM_WIN32(reason)));
}

std::string ReadWholeFile(const std::wstring& path) {
    const WinHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) RefuseFile(path, GetLastError());
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size)) RefuseFile(path, GetLastError());
    if (size.QuadPart > kLargestScript) Refuse(ErrorKind::Unsupported, path + L" is too large for a script");

    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        DWORD count = 0;
        if (!ReadFile(file.get(), bytes.data() + filled, static_cast<DWORD>(bytes.size() - filled), &count,
                      nullptr)) {
            RefuseFile(path, GetLastError());
        }
        if (count == 0) break;
        filled += count;
    }
    bytes.resize(filled);
    return bytes;
}

std::wstring FullPathOf(const std::wstring& path) {
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (needed == 0) return path;
    std::wstring result(needed, L'\0');
    result.resize(GetFullPathNameW(path.c_str(), needed, result.data(), nullptr));
    return result;
}

// The script engines take a text that ends at the first zero character: a script would silently be cut there.
void RefuseZeroCharacters(const std::wstring& name, const std::wstring& text) {
    const std::size_t zero = text.find(L'\0');
    if (zero == std::wstring::npos) return;
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(zero), L'\n');
    Refuse(ErrorKind::Unsupported,
           name + L" is no script text: line " + std::to_wstring(line) + L" contains a zero character");
}

}  // namespace

ScriptSource::ScriptSource(std::wstring name, std::wstring fullPath, std::wstring text, Language language)
    : name_(std::move(name)), fullPath_(std::move(fullPath)), text_(std::move(text)), language_(language) {
    RefuseZeroCharacters(name_, text_);
}

ScriptSource ScriptSource::FromFile(const std::wstring& path, std::optional<Language> language) {
    const std::string bytes = ReadWholeFile(path);
    if (!language) language = LanguageByExtension(path);
    if (!language) {
        Refuse(ErrorKind::InvalidArgument,
               L"the language of " + path +
                   L" is not clear from its extension (.vbs, .js); state it with --language");
    }
    return {path, FullPathOf(path), DecodeFile(bytes), *language};
}

ScriptSource ScriptSource::FromText(std::wstring name, std::wstring text, std::optional<Language> language) {
    if (!language) language = GuessLanguage(text);
    std::wstring path = name;
    return {std::move(name), std::move(path), std::move(text), *language};
}

ScriptSource ScriptSource::FromBytes(std::wstring name, std::string_view bytes,
                                     std::optional<Language> language) {
    return FromText(std::move(name), DecodeFile(bytes), language);
}

std::wstring ScriptSource::fileName() const {
    const std::size_t slash = fullPath_.find_last_of(L"/\\");
    return slash == std::wstring::npos ? fullPath_ : fullPath_.substr(slash + 1);
}

std::wstring_view ScriptSource::Line(unsigned number) const noexcept {
    std::wstring_view rest = text_;
    for (unsigned line = 1; line < number; ++line) {
        const std::size_t end = rest.find_first_of(L"\r\n");
        if (end == std::wstring_view::npos) return {};
        const bool pair = rest[end] == L'\r' && end + 1 < rest.size() && rest[end + 1] == L'\n';
        rest.remove_prefix(end + (pair ? 2 : 1));
    }
    return rest.substr(0, rest.find_first_of(L"\r\n"));
}

}  // namespace zu::runner
