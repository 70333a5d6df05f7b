#include "portable/files/PosixFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "portable/error/Error.h"

namespace zu::files {

namespace {

class PosixMapping final : public Mapping {
public:
    PosixMapping(void* address, std::size_t size) noexcept : address_(address), size_(size) {}
    PosixMapping(const PosixMapping&) = delete;
    PosixMapping& operator=(const PosixMapping&) = delete;
    ~PosixMapping() override { munmap(address_, size_); }
    std::span<const std::byte> bytes() const noexcept override {
        return {static_cast<const std::byte*>(address_), size_};
    }

private:
    void* address_;
    std::size_t size_;
};

int Flags(const OpenOptions& options) noexcept {
    int flags = O_CLOEXEC | (options.access == Access::Read ? O_RDONLY : O_RDWR);
    if (options.creation == Creation::CreateNew) flags |= O_CREAT | O_EXCL;
    if (options.creation == Creation::CreateAlways) flags |= O_CREAT;
    return flags;
}

/// Linux counts lock ranges with signed offsets; ranges of other systems end at the last one.
struct flock Range(std::uint64_t offset, std::uint64_t length, short type) noexcept {
    constexpr std::uint64_t kLast = 0x7FFFFFFFFFFFFFFF;
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(std::min(offset, kLast - 1));
    range.l_len = static_cast<off_t>(std::min(length, kLast - static_cast<std::uint64_t>(range.l_start)));
    return range;
}

}  // namespace

void ThrowPosixError(int code, const std::string& path, const char* action) {
    ErrorKind kind = ErrorKind::IoFailure;
    std::string reason;
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            kind = ErrorKind::NotFound;
            reason = "it does not exist";
            break;
        case EEXIST:
            kind = ErrorKind::AlreadyExists;
            reason = "it exists already";
            break;
        case EACCES:
        case EPERM:
        case EROFS:
            kind = ErrorKind::AccessDenied;
            reason = "access is denied";
            break;
        case EISDIR:
            kind = ErrorKind::AccessDenied;
            reason = "it is a folder";
            break;
        case EWOULDBLOCK:
        case ETXTBSY:
        case EBUSY:
            kind = ErrorKind::Locked;
            reason = "another program has it open and denies sharing it";
            break;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            kind = ErrorKind::DiskFull;
            reason = "there is no room on the disk";
            break;
        case EINVAL:
        case ENAMETOOLONG:
            kind = ErrorKind::InvalidArgument;
            reason = "the name cannot be used";
            break;
        default:
            reason = std::generic_category().message(code);
    }
    throw Error(kind, "The file " + path + " cannot be " + action + ": " + reason + ".");
}

PosixFile::PosixFile(std::string path, const OpenOptions& options) : path_(std::move(path)) {
    if (path_.find('\0') != std::string::npos) ThrowPosixError(EINVAL, path_.c_str(), "opened");
    // NONBLOCK keeps a pipe or device of that name from holding the program up; plain files do not notice.
    descriptor_ = open(path_.c_str(), Flags(options) | O_NONBLOCK, 0666);
    if (descriptor_ < 0) ThrowPosixError(errno, path_, "opened");
    try {
        struct stat status {};
        if (fstat(descriptor_, &status) != 0) ThrowPosixError(errno, path_, "opened");
        if (S_ISDIR(status.st_mode)) ThrowPosixError(EISDIR, path_, "opened");
        if (!S_ISREG(status.st_mode)) {
            throw Error(ErrorKind::Unsupported,
                        "The file " + path_ + " cannot be opened: it is no plain file.");
        }
        // A file system without flock is one without the agreement: open all the same.
        if (flock(descriptor_, (options.exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0 &&
            errno == EWOULDBLOCK) {
            ThrowPosixError(EWOULDBLOCK, path_, "opened");
        }
        // Emptied only now: while another denies access, its content stays.
        if (options.creation == Creation::CreateAlways) Truncate(0);
    } catch (...) {
        close(descriptor_);
        throw;
    }
}

PosixFile::~PosixFile() {
    close(descriptor_);
}

std::uint64_t PosixFile::Size() const {
    struct stat status {};
    if (fstat(descriptor_, &status) != 0) ThrowPosixError(errno, path_, "read");
    return static_cast<std::uint64_t>(status.st_size);
}

std::size_t PosixFile::ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t got =
            pread(descriptor_, buffer.data() + done, buffer.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) ThrowPosixError(errno, path_, "read");
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

void PosixFile::WriteAt(std::uint64_t offset, std::span<const std::byte> data) {
    std::size_t done = 0;
    while (done < data.size()) {
        const ssize_t put =
            pwrite(descriptor_, data.data() + done, data.size() - done, static_cast<off_t>(offset + done));
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) ThrowPosixError(errno, path_, "written");
        if (put == 0) ThrowPosixError(ENOSPC, path_, "written");
        done += static_cast<std::size_t>(put);
    }
}

void PosixFile::Truncate(std::uint64_t size) {
    if (ftruncate(descriptor_, static_cast<off_t>(size)) != 0) ThrowPosixError(errno, path_, "resized");
}

void PosixFile::Flush() {
    if (fsync(descriptor_) != 0) ThrowPosixError(errno, path_, "written");
}

std::unique_ptr<Mapping> PosixFile::Map() const {
    const std::uint64_t size = Size();
    if (size == 0 || size > SIZE_MAX / 2) return nullptr;
    void* address = mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED, descriptor_, 0);
    if (address == MAP_FAILED) return nullptr;
    return std::make_unique<PosixMapping>(address, static_cast<std::size_t>(size));
}

bool PosixFile::TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) {
    struct flock range = Range(offset, length, mode == LockMode::Exclusive ? F_WRLCK : F_RDLCK);
    if (fcntl(descriptor_, F_OFD_SETLK, &range) == 0) return true;
    if (errno == EAGAIN || errno == EACCES) return false;
    ThrowPosixError(errno, path_, "locked");
}

void PosixFile::Unlock(std::uint64_t offset, std::uint64_t length) {
    struct flock range = Range(offset, length, F_UNLCK);
    if (fcntl(descriptor_, F_OFD_SETLK, &range) != 0) ThrowPosixError(errno, path_, "unlocked");
}

}  // namespace zu::files
