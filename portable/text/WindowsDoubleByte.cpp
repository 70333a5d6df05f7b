#include <windows.h>

#include "portable/text/DoubleByteSet.h"

namespace zu::text {

namespace {

class WindowsConverter final : public DoubleByteConverter {
public:
    explicit WindowsConverter(UINT codePage) : codePage_(codePage) {}

    void Decode(std::string_view bytes, std::u16string& out) override {
        // Pieces are converted one character at a time only when the whole is not well-formed, so that an
        // undefined pair costs one replacement character and nothing behind it.
        if (DecodeWhole(bytes, out)) return;
        for (std::size_t at = 0; at < bytes.size();) {
            const bool lead = IsDBCSLeadByteEx(codePage_, static_cast<BYTE>(bytes[at])) != FALSE;
            const std::size_t length = lead && at + 1 < bytes.size() ? 2 : 1;
            if (DecodeWhole(bytes.substr(at, length), out)) {
                at += length;
            } else {
                out.push_back(u'\uFFFD');
                ++at;
            }
        }
    }

    bool Encode(std::u16string_view characters, std::string& out, std::size_t& firstBad) override {
        for (std::size_t at = 0; at < characters.size(); ++at) {
            char bytes[8];
            BOOL replaced = FALSE;
            const int written = WideCharToMultiByte(
                codePage_, WC_NO_BEST_FIT_CHARS, reinterpret_cast<const wchar_t*>(characters.data() + at), 1,
                bytes, static_cast<int>(sizeof bytes), nullptr, &replaced);
            if (written <= 0 || replaced) {
                firstBad = at;
                return false;
            }
            out.append(bytes, static_cast<std::size_t>(written));
        }
        return true;
    }

private:
    bool DecodeWhole(std::string_view bytes, std::u16string& out) {
        const std::size_t start = out.size();
        out.resize(start + bytes.size());
        const int units = MultiByteToWideChar(
            codePage_, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
            reinterpret_cast<wchar_t*>(out.data() + start), static_cast<int>(bytes.size()));
        out.resize(start + static_cast<std::size_t>(units > 0 ? units : 0));
        return units > 0;
    }

    UINT codePage_;
};

}  // namespace

std::unique_ptr<DoubleByteConverter> MakeDoubleByteConverter(unsigned number) {
    if (!IsValidCodePage(number)) return nullptr;
    return std::make_unique<WindowsConverter>(number);
}

}  // namespace zu::text
