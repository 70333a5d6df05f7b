#include "runner/commands/HeaderLine.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "com/Bstr.h"
#include "portable/files/File.h"
#include "portable/text/Utf.h"
#include "runner/TextEncoding.h"
#include "runner/TextOutput.h"

namespace zu::runner::commands {
namespace {

constexpr std::size_t kPiece = 1U << 18;
/// A first line longer than this is no header.
constexpr std::size_t kLongestHeader = 1U << 16;

std::unique_ptr<files::File> OpenToRead(const std::wstring& path) {
    return files::SystemFiles().Open(text::ToUtf8(com::AsUtf16(path)), {});
}

std::unique_ptr<files::File> OpenToWrite(const std::wstring& path) {
    return files::SystemFiles().Open(text::ToUtf8(com::AsUtf16(path)),
                                     {files::Access::ReadWrite, files::Creation::CreateAlways, false});
}

std::string Encode(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

std::wstring Decode(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), length);
    return text;
}

/// Hands the rest of a file from `offset` on to `take`, piece by piece.
template <class Take>
void ReadOn(const files::File& file, std::uint64_t offset, Take&& take) {
    std::string piece(kPiece, '\0');
    for (;;) {
        const std::size_t count = file.ReadAt(offset, std::as_writable_bytes(std::span(piece)));
        if (count == 0) return;
        take(std::string_view(piece).substr(0, count));
        offset += count;
    }
}

/// Appends the rest of a file to another one.
void Append(const files::File& from, std::uint64_t offset, files::File& to, std::uint64_t at) {
    ReadOn(from, offset, [&](std::string_view piece) {
        to.WriteAt(at, std::as_bytes(std::span(piece)));
        at += piece.size();
    });
}

std::wstring_view Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

}  // namespace

std::wstring HeaderLine(const std::vector<std::wstring>& names, std::wstring_view separator,
                        std::wstring_view quote) {
    std::wstring line;
    for (const std::wstring& name : names) {
        if (!line.empty()) line += separator;
        line += quote;
        line += name;
        line += quote;
    }
    return line;
}

std::vector<std::wstring> NamesInHeader(std::wstring_view line, std::wstring_view separator,
                                        std::wstring_view quote) {
    std::vector<std::wstring> names;
    for (bool last = false; !last;) {
        const std::size_t end = separator.empty() ? std::wstring_view::npos : line.find(separator);
        last = end == std::wstring_view::npos;
        std::wstring_view name = Trimmed(line.substr(0, end));
        if (!quote.empty() && name.size() >= 2 * quote.size() && name.starts_with(quote) &&
            name.ends_with(quote))
            name = name.substr(quote.size(), name.size() - 2 * quote.size());
        names.emplace_back(Trimmed(name));
        if (!last) line.remove_prefix(end + separator.size());
    }
    return names;
}

void CopyWithHeader(const std::wstring& from, std::wstring_view header, const std::wstring& to) {
    const auto source = OpenToRead(from);
    const auto target = OpenToWrite(to);
    const std::string line = Encode(header) + "\r\n";
    target->WriteAt(0, std::as_bytes(std::span(line)));
    Append(*source, 0, *target, line.size());
}

std::wstring CopyWithoutHeader(const std::wstring& from, const std::wstring& to) {
    const auto source = OpenToRead(from);
    const auto target = OpenToWrite(to);
    std::string start(kLongestHeader, '\0');
    start.resize(source->ReadAt(0, std::as_writable_bytes(std::span(start))));
    const std::size_t end = start.find('\n');
    const std::size_t behind = end == std::string::npos ? start.size() : end + 1;
    std::string_view line = std::string_view(start).substr(0, end);
    if (line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    if (line.ends_with('\r')) line.remove_suffix(1);
    Append(*source, behind, *target, 0);
    return DecodePiece(line);
}

void WriteLinesTo(TextOutput& out, const std::wstring& path) {
    const auto file = OpenToRead(path);
    std::string rest;
    ReadOn(*file, 0, [&](std::string_view piece) {
        rest += piece;
        const std::size_t end = rest.rfind('\n');
        if (end == std::string::npos) return;
        std::wstring lines;
        for (const wchar_t c : Decode(std::string_view(rest).substr(0, end + 1))) {
            if (c == L'\n' && lines.ends_with(L'\r')) {
                lines.pop_back();
                lines += out.lineEnd();
            } else {
                lines += c;
            }
        }
        out.Write(lines);
        rest.erase(0, end + 1);
    });
    if (!rest.empty()) out.Write(Decode(rest));
}

}  // namespace zu::runner::commands
