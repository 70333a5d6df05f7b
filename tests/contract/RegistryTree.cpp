#include "tests/contract/RegistryTree.h"

namespace zu::contract {

namespace {

HKEY CreateKey(HKEY parent, const std::wstring& path) {
    HKEY key = nullptr;
    RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return key;
}

std::wstring ContentOf(HKEY key, const wchar_t* name) {
    wchar_t text[1024] = {};
    DWORD size = sizeof(text) - sizeof(wchar_t);
    DWORD type = 0;
    RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    return type == REG_SZ || type == REG_EXPAND_SZ ? text : L"(binary)";
}

void Collect(HKEY key, const std::wstring& path, std::map<std::wstring, std::wstring>& content) {
    wchar_t name[512];
    for (DWORD index = 0;; ++index) {
        DWORD size = 512;
        if (RegEnumValueW(key, index, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        std::wstring entry = path;
        entry += L'|';
        entry += name;
        content[entry] = ContentOf(key, name);
    }
    for (DWORD index = 0;; ++index) {
        DWORD size = 512;
        if (RegEnumKeyExW(key, index, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        HKEY child = nullptr;
        if (RegOpenKeyExW(key, name, 0, KEY_READ, &child) != ERROR_SUCCESS) continue;
        std::wstring entry = path;
        entry += name;
        entry += L'\\';
        content[entry] = L"";
        Collect(child, entry, content);
        RegCloseKey(child);
    }
}

}  // namespace

RegistryTree::RegistryTree(bool machineWritable)
    : path_(L"Software\\ZuRegistrationTest-" + std::to_wstring(GetCurrentProcessId())) {
    scratch_ = CreateKey(HKEY_CURRENT_USER, path_);
    machine_ = CreateKey(scratch_, L"machine");
    user_ = CreateKey(scratch_, L"user");
    classes_ = CreateKey(scratch_, machineWritable ? L"machine\\Software\\Classes" : L"classes");
    for (const wchar_t* section : {L"CLSID", L"TypeLib", L"Interface", L"Wow6432Node\\Interface"}) {
        RegCloseKey(CreateKey(classes_, section));
        RegCloseKey(CreateKey(user_, std::wstring(L"Software\\Classes\\") + section));
    }
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_);
    RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_);
    RegOverridePredefKey(HKEY_CURRENT_USER, user_);
}

RegistryTree::~RegistryTree() {
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT, HKEY_CURRENT_USER}) {
        RegOverridePredefKey(root, nullptr);
    }
    for (HKEY key : {classes_, user_, machine_, scratch_})
        RegCloseKey(key);
    RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
}

std::map<std::wstring, std::wstring> RegistryTree::Content() const {
    std::map<std::wstring, std::wstring> content;
    Collect(scratch_, L"", content);
    return content;
}

}  // namespace zu::contract
