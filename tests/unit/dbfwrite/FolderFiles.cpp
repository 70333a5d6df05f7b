#include "tests/unit/dbfwrite/FolderFiles.h"

#include <filesystem>
#include <random>
#include <utility>

namespace zu::dbf::test {

class FolderFiles::CountedFile final : public files::File {
public:
    CountedFile(std::unique_ptr<files::File> file, std::string name, std::shared_ptr<Filter> filter,
                std::shared_ptr<std::size_t> calls)
        : file_(std::move(file)),
          name_(std::move(name)),
          filter_(std::move(filter)),
          calls_(std::move(calls)) {}

    const std::string& path() const noexcept override { return name_; }
    std::uint64_t Size() const override { return file_->Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        return file_->ReadAt(offset, buffer);
    }
    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override {
        std::vector<std::byte> bytes(data.begin(), data.end());
        if (!*filter_ || (*filter_)(name_, offset, bytes)) file_->WriteAt(offset, bytes);
    }
    void Truncate(std::uint64_t size) override { file_->Truncate(size); }
    void Flush() override { file_->Flush(); }
    std::unique_ptr<files::Mapping> Map() const override { return file_->Map(); }
    bool TryLock(std::uint64_t offset, std::uint64_t length, files::LockMode mode) override {
        ++*calls_;
        return file_->TryLock(offset, length, mode);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override { file_->Unlock(offset, length); }

private:
    std::unique_ptr<files::File> file_;
    std::string name_;
    std::shared_ptr<Filter> filter_;
    std::shared_ptr<std::size_t> calls_;
};

FolderFiles::FolderFiles() : isOwner_(true) {
    const auto folder =
        std::filesystem::temp_directory_path() / ("zu-table-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder);
    folder_ = folder.string();
}

FolderFiles::FolderFiles(const FolderFiles& first) : folder_(first.folder_), isOwner_(false) {}

FolderFiles::~FolderFiles() {
    std::error_code ignored;
    if (isOwner_) std::filesystem::remove_all(folder_, ignored);
}

std::string FolderFiles::In(const std::string& path) const {
    return (std::filesystem::path(folder_) / path).string();
}

std::unique_ptr<files::File> FolderFiles::Open(const std::string& path, const files::OpenOptions& options) {
    ++*calls_;
    return std::make_unique<CountedFile>(system_.Open(In(path), options), path, filter_, calls_);
}

bool FolderFiles::Exists(const std::string& path) {
    ++*calls_;
    return system_.Exists(In(path));
}

}  // namespace zu::dbf::test
