#pragma once

#include <string>

namespace zu::runner::commands {

/// An empty file with a name of its own in the system's folder for temporary files; gone with the object.
class TemporaryTextFile {
public:
    /// Throws com::ComError.
    TemporaryTextFile();
    ~TemporaryTextFile();
    TemporaryTextFile(const TemporaryTextFile&) = delete;
    TemporaryTextFile& operator=(const TemporaryTextFile&) = delete;

    const std::wstring& path() const noexcept { return path_; }

private:
    std::wstring path_;
};

}  // namespace zu::runner::commands
