#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace zu::contract {

/// A registry of the test's own: HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER and HKEY_CLASSES_ROOT of this process
/// lead into a scratch key as long as the object lives, so that a registration touches nothing else.
class RegistryTree {
public:
    /// The machine's classes are there with the sections that every Windows has; without `machineWritable`
    /// they are not to be opened, as for a user without rights.
    explicit RegistryTree(bool machineWritable = true);
    ~RegistryTree();
    RegistryTree(const RegistryTree&) = delete;
    RegistryTree& operator=(const RegistryTree&) = delete;

    /// All keys and values below the scratch key:
    /// "machine\Software\Classes\...\InprocServer32|ThreadingModel" leads to the content, as text. A key
    /// itself ends with a backslash.
    std::map<std::wstring, std::wstring> Content() const;

private:
    HKEY scratch_ = nullptr;
    HKEY machine_ = nullptr;
    HKEY user_ = nullptr;
    HKEY classes_ = nullptr;
    std::wstring path_;
};

}  // namespace zu::contract
