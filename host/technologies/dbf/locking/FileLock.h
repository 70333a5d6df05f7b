#pragma once

#include <algorithm>
#include <chrono>
#include <string_view>

#include "host/technologies/dbf/locking/LockScheme.h"
#include "portable/files/File.h"

namespace zu::dbf::locking {

/// How long a lock is waited for before the change is given up.
using LockWait = std::chrono::milliseconds;

/// Holds byte-range locks of one file until it is destroyed.
class FileLock {
public:
    FileLock() noexcept = default;
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock() { Release(); }

    /// All ranges or none, without waiting; an empty lock when one of them is taken.
    static FileLock TryTake(files::File& file, const LockRanges& ranges, files::LockMode mode);
    /// All ranges; waits up to `wait`. After that a Locked error says that `what` ("record 12 of orders.dbf")
    /// is held by another program.
    static FileLock Take(files::File& file, const LockRanges& ranges, files::LockMode mode, LockWait wait,
                         std::string_view what);

    explicit operator bool() const noexcept { return file_ != nullptr; }
    void Release() noexcept;

private:
    files::File* file_ = nullptr;
    LockRanges ranges_;
};

/// Calls `attempt` until it answers true or `wait` is over, with growing pauses in between (1 to 32 ms).
template <class Attempt>
bool RetryUntil(LockWait wait, Attempt&& attempt);

/// The pause of RetryUntil, apart so that the header needs no thread library.
void PauseFor(std::chrono::milliseconds pause);

template <class Attempt>
bool RetryUntil(LockWait wait, Attempt&& attempt) {
    const auto limit = std::chrono::steady_clock::now() + wait;
    for (std::chrono::milliseconds pause{1};; pause = std::min(pause * 2, std::chrono::milliseconds{32})) {
        if (attempt()) return true;
        if (std::chrono::steady_clock::now() >= limit) return false;
        PauseFor(pause);
    }
}

}  // namespace zu::dbf::locking
