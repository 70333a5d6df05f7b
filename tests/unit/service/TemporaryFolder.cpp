#include "TemporaryFolder.h"

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zu::test {

TemporaryFolder::TemporaryFolder() {
    static std::atomic<int> number{0};
    const auto folder =
        std::filesystem::temp_directory_path() /
        ("zu-service-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number));
    std::filesystem::create_directories(folder);
    path_ = folder.wstring();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::wstring TemporaryFolder::Write(const std::wstring& name, std::string_view bytes) const {
    const std::filesystem::path path = std::filesystem::path(path_) / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path.wstring();
}

std::string TemporaryFolder::Read(const std::wstring& name) const {
    std::ifstream file(std::filesystem::path(path_) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace zu::test
