#include "portable/files/MemoryFiles.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::files {

namespace {

struct HeldLock {
    const void* owner;
    std::uint64_t first;
    std::uint64_t last;
    LockMode mode;
};

constexpr std::uint64_t LastOf(std::uint64_t offset, std::uint64_t length) noexcept {
    constexpr std::uint64_t kEnd = std::numeric_limits<std::uint64_t>::max();
    return length == 0 || length - 1 > kEnd - offset ? kEnd : offset + length - 1;
}

class MemoryMapping final : public Mapping {
public:
    explicit MemoryMapping(const std::vector<std::byte>& content)
        : size_(content.size()), copy_(std::make_unique<std::byte[]>(content.size())) {
        std::memcpy(copy_.get(), content.data(), size_);
    }
    std::span<const std::byte> bytes() const noexcept override { return {copy_.get(), size_}; }

private:
    std::size_t size_;
    std::unique_ptr<std::byte[]> copy_;
};

/// Names in the map: every separator of the platform is "/".
std::string Key(std::string path) {
    std::replace_if(path.begin(), path.end(), IsSeparator, '/');
    return path;
}

std::string FolderPrefix(const std::string& folder) {
    std::string prefix = Key(folder);
    if (!prefix.empty() && prefix.back() != '/') prefix.push_back('/');
    return prefix;
}

}  // namespace

struct MemoryFiles::Content {
    std::vector<std::byte> bytes;
    std::vector<HeldLock> locks;
    std::size_t handles = 0;
    bool denied = false;
};

namespace {

class MemoryFile final : public File {
public:
    MemoryFile(std::string path, std::shared_ptr<MemoryFiles::Content> content, const OpenOptions& options,
               bool mapping, std::shared_ptr<std::size_t> reads)
        : path_(std::move(path)),
          content_(std::move(content)),
          writable_(options.access == Access::ReadWrite),
          exclusive_(options.exclusive),
          mapping_(mapping),
          reads_(std::move(reads)) {
        ++content_->handles;
        content_->denied = exclusive_;
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() override {
        --content_->handles;
        if (exclusive_) content_->denied = false;
        std::erase_if(content_->locks, [this](const HeldLock& lock) { return lock.owner == this; });
    }

    const std::string& path() const noexcept override { return path_; }
    std::uint64_t Size() const override { return content_->bytes.size(); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        ++*reads_;
        const std::vector<std::byte>& bytes = content_->bytes;
        if (offset >= bytes.size()) return 0;
        const auto start = static_cast<std::size_t>(offset);
        const std::size_t count = std::min(buffer.size(), bytes.size() - start);
        if (count > 0) std::memcpy(buffer.data(), bytes.data() + start, count);
        return count;
    }

    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override {
        RequireWritable();
        if (data.empty()) return;
        const auto start = static_cast<std::size_t>(offset);
        if (start + data.size() > content_->bytes.size()) content_->bytes.resize(start + data.size());
        std::memcpy(content_->bytes.data() + start, data.data(), data.size());
    }

    void Truncate(std::uint64_t size) override {
        RequireWritable();
        content_->bytes.resize(static_cast<std::size_t>(size));
    }

    void Flush() override {}

    std::unique_ptr<Mapping> Map() const override {
        if (!mapping_ || content_->bytes.empty()) return nullptr;
        return std::make_unique<MemoryMapping>(content_->bytes);
    }

    bool TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) override {
        const std::uint64_t last = LastOf(offset, length);
        for (const HeldLock& lock : content_->locks) {
            const bool overlaps = lock.first <= last && offset <= lock.last;
            const bool excludes = mode == LockMode::Exclusive || lock.mode == LockMode::Exclusive;
            if (overlaps && excludes && lock.owner != this) return false;
        }
        content_->locks.push_back({this, offset, last, mode});
        return true;
    }

    void Unlock(std::uint64_t offset, std::uint64_t length) override {
        const std::uint64_t last = LastOf(offset, length);
        auto& locks = content_->locks;
        const auto held = std::find_if(locks.begin(), locks.end(), [&](const HeldLock& lock) {
            return lock.owner == this && lock.first == offset && lock.last == last;
        });
        if (held == locks.end()) {
            throw Error(ErrorKind::IoFailure,
                        "The file " + path_ + " cannot be unlocked: no such lock is held.");
        }
        locks.erase(held);
    }

private:
    void RequireWritable() const {
        if (!writable_) {
            throw Error(ErrorKind::AccessDenied,
                        "The file " + path_ + " cannot be written: access is denied.");
        }
    }

    std::string path_;
    std::shared_ptr<MemoryFiles::Content> content_;
    bool writable_;
    bool exclusive_;
    bool mapping_;
    std::shared_ptr<std::size_t> reads_;
};

}  // namespace

MemoryFiles::MemoryFiles() : reads_(std::make_shared<std::size_t>(0)) {}
MemoryFiles::~MemoryFiles() = default;

std::unique_ptr<File> MemoryFiles::Open(const std::string& path, const OpenOptions& options) {
    const std::string key = Key(path);
    auto found = files_.find(key);
    if (found == files_.end()) {
        if (options.creation == Creation::OpenExisting) {
            throw Error(ErrorKind::NotFound, "The file " + path + " cannot be opened: it does not exist.");
        }
        found = files_.emplace(key, std::make_shared<Content>()).first;
    } else if (options.creation == Creation::CreateNew) {
        throw Error(ErrorKind::AlreadyExists, "The file " + path + " cannot be opened: it exists already.");
    }
    Content& content = *found->second;
    if (content.denied || (options.exclusive && content.handles > 0)) {
        throw Error(
            ErrorKind::Locked,
            "The file " + path + " cannot be opened: another program has it open and denies sharing it.");
    }
    if (options.creation == Creation::CreateAlways) content.bytes.clear();
    return std::make_unique<MemoryFile>(path, found->second, options, mapping_, reads_);
}

bool MemoryFiles::Exists(const std::string& path) {
    return files_.contains(Key(path));
}

bool MemoryFiles::IsFolder(const std::string& path) {
    const std::string prefix = FolderPrefix(path);
    const auto next = files_.lower_bound(prefix);
    return next != files_.end() && next->first.starts_with(prefix);
}

void MemoryFiles::Remove(const std::string& path) {
    if (files_.erase(Key(path)) == 0) {
        throw Error(ErrorKind::NotFound, "The file " + path + " cannot be deleted: it does not exist.");
    }
}

void MemoryFiles::Replace(const std::string& from, const std::string& to) {
    const auto found = files_.find(Key(from));
    if (found == files_.end()) {
        throw Error(ErrorKind::NotFound, "The file " + from + " cannot be renamed: it does not exist.");
    }
    auto content = std::move(found->second);
    files_.erase(found);
    files_[Key(to)] = std::move(content);
}

std::vector<std::string> MemoryFiles::List(const std::string& folder) {
    const std::string prefix = FolderPrefix(folder);
    std::vector<std::string> names;
    for (auto at = files_.lower_bound(prefix); at != files_.end() && at->first.starts_with(prefix); ++at) {
        std::string name = at->first.substr(prefix.size());
        if (name.find('/') == std::string::npos) names.push_back(std::move(name));
    }
    if (names.empty() && !IsFolder(folder)) {
        throw Error(ErrorKind::NotFound, "The file " + folder + " cannot be listed: it does not exist.");
    }
    return names;
}

void MemoryFiles::Put(const std::string& path, std::span<const std::byte> content) {
    std::shared_ptr<Content>& file = files_[Key(path)];
    if (!file) file = std::make_shared<Content>();
    file->bytes.assign(content.begin(), content.end());
}

std::vector<std::byte> MemoryFiles::Get(const std::string& path) const {
    const auto found = files_.find(Key(path));
    if (found == files_.end()) throw Error(ErrorKind::NotFound, "The file " + path + " does not exist.");
    return found->second->bytes;
}

}  // namespace zu::files
