#include "runner/TextEncoding.h"

#include <windows.h>

#include <cstring>

namespace zu::runner {
namespace {

std::wstring Decode(UINT codePage, DWORD flags, std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, flags, bytes.data(), size, result.data(), length);
    return result;
}

std::wstring DecodeUtf16(std::string_view bytes, bool bigEndian) {
    std::wstring result(bytes.size() / 2, L'\0');
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        result[i] = static_cast<wchar_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return result;
}

}  // namespace

std::wstring DecodePiece(std::string_view bytes) {
    if (bytes.empty()) return {};
    std::wstring utf8 = Decode(CP_UTF8, MB_ERR_INVALID_CHARS, bytes);
    return utf8.empty() ? Decode(CP_ACP, 0, bytes) : utf8;
}

std::wstring DecodeFile(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return DecodePiece(bytes.substr(3));
    if (bytes.starts_with("\xFF\xFE")) return DecodeUtf16(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF")) return DecodeUtf16(bytes.substr(2), true);
    if (bytes.size() >= 2 && bytes[0] != 0 && bytes[1] == 0) return DecodeUtf16(bytes, false);
    if (bytes.size() >= 2 && bytes[0] == 0 && bytes[1] != 0) return DecodeUtf16(bytes, true);
    return DecodePiece(bytes);
}

}  // namespace zu::runner
