#pragma once

#include <string>
#include <string_view>

namespace zu::test {

/// A folder that goes with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::wstring& path() const { return path_; }
    /// Writes a file with these bytes and answers its path.
    std::wstring Write(const std::wstring& name, std::string_view bytes) const;
    std::string Read(const std::wstring& name) const;

private:
    std::wstring path_;
};

}  // namespace zu::test
