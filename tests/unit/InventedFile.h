#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "portable/files/File.h"

namespace zu::test {

/// A file that exists nowhere, for readers: what it holds is up to the class that is made from it. It takes
/// no writes and refuses no lock.
class InventedFile : public files::File {
public:
    explicit InventedFile(std::string path) : path_(std::move(path)) {}

    const std::string& path() const noexcept override { return path_; }
    void WriteAt(std::uint64_t, std::span<const std::byte>) override {}
    void Truncate(std::uint64_t) override {}
    void Flush() override {}
    std::unique_ptr<files::Mapping> Map() const override { return nullptr; }
    bool TryLock(std::uint64_t, std::uint64_t, files::LockMode) override { return true; }
    void Unlock(std::uint64_t, std::uint64_t) override {}

private:
    std::string path_;
};

}  // namespace zu::test
