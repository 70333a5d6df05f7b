#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf::test {

/// Real files, which the system maps, in a folder of their own under names without a folder; removed at the
/// end. One object is one process.
class FolderFiles final : public files::FileSystem {
public:
    /// Makes the folder.
    FolderFiles();
    /// Another process that works in the folder of `first`, which must outlive it.
    explicit FolderFiles(const FolderFiles& first);
    FolderFiles& operator=(const FolderFiles&) = delete;
    ~FolderFiles() override;

    std::unique_ptr<files::File> Open(const std::string& path, const files::OpenOptions& options) override;
    bool Exists(const std::string& path) override;
    bool IsFolder(const std::string& path) override { return system_.IsFolder(In(path)); }
    void Remove(const std::string& path) override { system_.Remove(In(path)); }
    void Replace(const std::string& from, const std::string& to) override {
        system_.Replace(In(from), In(to));
    }
    std::vector<std::string> List(const std::string&) override { return system_.List(folder_); }

    /// May change what is written to a file, or answer false to leave it out.
    using Filter =
        std::function<bool(const std::string& path, std::uint64_t offset, std::vector<std::byte>&)>;
    void FilterWrites(Filter filter) { *filter_ = std::move(filter); }
    /// Locks that were asked for, files that were opened or looked for, so far.
    std::size_t calls() const noexcept { return *calls_; }

private:
    class CountedFile;
    std::string In(const std::string& path) const;

    files::FileSystem& system_ = files::SystemFiles();
    std::string folder_;
    bool isOwner_;
    std::shared_ptr<Filter> filter_ = std::make_shared<Filter>();
    std::shared_ptr<std::size_t> calls_ = std::make_shared<std::size_t>(0);
};

}  // namespace zu::dbf::test
