#include "host/technologies/dbf/locking/FileLock.h"

#include <exception>
#include <string>
#include <thread>
#include <utility>

#include "portable/error/Error.h"

namespace zu::dbf::locking {

FileLock::FileLock(FileLock&& other) noexcept
    : file_(std::exchange(other.file_, nullptr)), ranges_(other.ranges_) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        Release();
        file_ = std::exchange(other.file_, nullptr);
        ranges_ = other.ranges_;
    }
    return *this;
}

FileLock FileLock::TryTake(files::File& file, const LockRanges& ranges, files::LockMode mode) {
    FileLock lock;
    for (std::size_t i = 0; i < ranges.count; ++i) {
        if (!file.TryLock(ranges.ranges[i].offset, ranges.ranges[i].length, mode)) {
            for (std::size_t taken = i; taken-- > 0;)
                file.Unlock(ranges.ranges[taken].offset, ranges.ranges[taken].length);
            return lock;
        }
    }
    lock.file_ = &file;
    lock.ranges_ = ranges;
    return lock;
}

FileLock FileLock::Take(files::File& file, const LockRanges& ranges, files::LockMode mode, LockWait wait,
                        std::string_view what) {
    FileLock lock;
    if (!RetryUntil(wait, [&] { return static_cast<bool>(lock = TryTake(file, ranges, mode)); }))
        throw Error(ErrorKind::Locked, std::string(what) +
                                           " is locked by another program; it was not free within " +
                                           std::to_string(wait.count()) + " milliseconds.");
    return lock;
}

void FileLock::Release() noexcept {
    files::File* file = std::exchange(file_, nullptr);
    if (!file) return;
    for (std::size_t i = ranges_.count; i-- > 0;) {
        try {
            file->Unlock(ranges_.ranges[i].offset, ranges_.ranges[i].length);
        } catch (...) {
            // The lock goes with the handle at the latest; there is nobody to tell here.
            static_cast<void>(std::current_exception());
        }
    }
}

void PauseFor(std::chrono::milliseconds pause) {
    std::this_thread::sleep_for(pause);
}

}  // namespace zu::dbf::locking
