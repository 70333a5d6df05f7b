#include "com/RegistryKey.h"

#include <utility>
#include <vector>

#include "com/ComError.h"

namespace zu::com {
namespace {

void CheckSystem(LSTATUS status, const std::wstring& path) {
    if (status == ERROR_SUCCESS) return;
    throw ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)),
                   L"Registry key " + path + L" cannot be changed");
}

}  // namespace

RegistryKey::RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}

RegistryKey::~RegistryKey() {
    if (key_) RegCloseKey(key_);
}

RegistryKey RegistryKey::Create(HKEY root, const std::wstring& path) {
    RegistryKey result;
    CheckSystem(RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE,
                                nullptr, &result.key_, nullptr),
                path);
    return result;
}

RegistryKey RegistryKey::Open(HKEY root, const std::wstring& path, REGSAM access) noexcept {
    RegistryKey result;
    if (RegOpenKeyExW(root, path.c_str(), 0, access, &result.key_) != ERROR_SUCCESS) result.key_ = nullptr;
    return result;
}

void RegistryKey::Remove(HKEY root, const std::wstring& path) {
    const LSTATUS status = RegDeleteTreeW(root, path.c_str());
    if (status != ERROR_FILE_NOT_FOUND) CheckSystem(status, path);
}

void RegistryKey::Set(const std::wstring& name, std::wstring_view text) const {
    const std::wstring value(text);
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    CheckSystem(RegSetValueExW(key_, name.empty() ? nullptr : name.c_str(), 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(value.c_str()), bytes),
                name);
}

std::wstring RegistryKey::Text(const std::wstring& name) const {
    DWORD bytes = 0;
    const wchar_t* const value = name.empty() ? nullptr : name.c_str();
    if (RegGetValueW(key_, nullptr, value, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
        return {};
    std::vector<wchar_t> buffer(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
    if (RegGetValueW(key_, nullptr, value, RRF_RT_REG_SZ, nullptr, buffer.data(), &bytes) != ERROR_SUCCESS) {
        return {};
    }
    return buffer.data();
}

}  // namespace zu::com
