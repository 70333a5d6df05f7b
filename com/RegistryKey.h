#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zu::com {

/// An open registry key.
class RegistryKey {
public:
    RegistryKey() noexcept = default;
    RegistryKey(RegistryKey&& other) noexcept;
    RegistryKey& operator=(RegistryKey&&) = delete;
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey();

    /// Makes the key, with all above it, or opens it for writing. Throws ComError.
    static RegistryKey Create(HKEY root, const std::wstring& path);
    /// Opens a key; an empty object when it is not there or not allowed.
    static RegistryKey Open(HKEY root, const std::wstring& path, REGSAM access = KEY_READ) noexcept;
    /// Removes a key with all below it. A missing key is no error. Throws ComError.
    static void Remove(HKEY root, const std::wstring& path);

    explicit operator bool() const noexcept { return key_ != nullptr; }

    /// Sets a text value; an empty name is the key's default value. Throws ComError.
    void Set(const std::wstring& name, std::wstring_view text) const;
    /// A text value; empty when there is none.
    std::wstring Text(const std::wstring& name) const;

private:
    HKEY key_ = nullptr;
};

}  // namespace zu::com
