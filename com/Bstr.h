#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <initializer_list>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace zu::com {

/// The characters of a BSTR; a null BSTR is the empty text.
inline std::wstring_view View(BSTR text) noexcept {
    return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}

/// UTF-16 of the portable code and of Windows are the same bytes.
inline std::u16string_view AsUtf16(std::wstring_view text) noexcept {
    return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}
inline std::wstring_view AsWide(std::u16string_view text) noexcept {
    return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}

/// A BSTR for the caller to own. Throws std::bad_alloc.
[[nodiscard]] inline BSTR NewBstr(std::wstring_view text) {
    BSTR result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!result) throw std::bad_alloc();
    return result;
}

/// Owns a BSTR.
class Bstr {
public:
    Bstr() noexcept = default;
    explicit Bstr(std::wstring_view text) : text_(NewBstr(text)) {}
    Bstr(const Bstr& other) : text_(other.text_ ? NewBstr(other.view()) : nullptr) {}
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    ~Bstr() {
        if (text_) SysFreeString(text_);
    }
    Bstr& operator=(Bstr other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }

    /// The parts one after the other.
    static Bstr Joined(std::initializer_list<std::wstring_view> parts) {
        std::size_t length = 0;
        for (const std::wstring_view part : parts)
            length += part.size();
        BSTR const text = SysAllocStringLen(nullptr, static_cast<UINT>(length));
        if (!text) throw std::bad_alloc();
        wchar_t* end = text;
        for (const std::wstring_view part : parts)
            end = std::copy(part.begin(), part.end(), end);
        return Adopt(text);
    }
    static Bstr Adopt(BSTR text) noexcept {
        Bstr result;
        result.text_ = text;
        return result;
    }

    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept { return View(text_); }
    std::wstring str() const { return std::wstring(view()); }
    bool empty() const noexcept { return view().empty(); }

    /// For [out] parameters: frees the old text.
    BSTR* put() noexcept {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    /// For [in, out] parameters: keeps the old text.
    BSTR* address() noexcept { return &text_; }
    [[nodiscard]] BSTR detach() noexcept { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

}  // namespace zu::com
