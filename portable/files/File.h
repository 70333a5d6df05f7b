#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace zu::files {

/// How a file is opened. Every mode lets other processes read and write the file at the same time
/// unless `exclusive` is asked for.
enum class Access { Read, ReadWrite };
enum class Creation { OpenExisting, CreateNew, CreateAlways };

struct OpenOptions {
    Access access = Access::Read;
    Creation creation = Creation::OpenExisting;
    bool exclusive = false;  ///< deny all others
    bool passing = false;    ///< a look into a file that comes and goes: what is open does not stand on it
};

/// A read-only view of a whole file in memory. Destroying it unmaps the file.
class Mapping {
public:
    virtual ~Mapping() = default;
    virtual std::span<const std::byte> bytes() const noexcept = 0;
};

enum class LockMode { Shared, Exclusive };

/// One open file. All offsets and sizes are bytes. Failures are `zu::Error`s that name the file.
class File {
public:
    virtual ~File() = default;

    virtual const std::string& path() const noexcept = 0;
    virtual std::uint64_t Size() const = 0;

    /// Reads up to `buffer.size()` bytes at `offset`; answers how many there were (fewer at the end).
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const = 0;
    /// Writes all of `data` at `offset`, growing the file as needed.
    virtual void WriteAt(std::uint64_t offset, std::span<const std::byte> data) = 0;
    virtual void Truncate(std::uint64_t size) = 0;
    /// Waits until everything written is on the disk.
    virtual void Flush() = 0;

    /// Maps the whole file as it is now; null where the system cannot (too large for the address space,
    /// an empty file, a file system without mappings): the caller then reads.
    virtual std::unique_ptr<Mapping> Map() const = 0;

    /// Takes a byte-range lock without waiting; false when another holder is in the way.
    virtual bool TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) = 0;
    virtual void Unlock(std::uint64_t offset, std::uint64_t length) = 0;
};

/// The one door to the file system. Paths are UTF-8 in the form of the platform.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    virtual std::unique_ptr<File> Open(const std::string& path, const OpenOptions& options) = 0;
    virtual bool Exists(const std::string& path) = 0;
    virtual bool IsFolder(const std::string& path) = 0;
    virtual void Remove(const std::string& path) = 0;
    /// Puts `from` in the place of `to` in one step, also when `to` exists.
    virtual void Replace(const std::string& from, const std::string& to) = 0;
    /// The names (not paths) of the files in a folder, in no particular order.
    virtual std::vector<std::string> List(const std::string& folder) = 0;
};

/// The platform's file system (Windows or POSIX).
FileSystem& SystemFiles();

}  // namespace zu::files
