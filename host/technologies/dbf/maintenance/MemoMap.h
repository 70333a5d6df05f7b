#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfVersion.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Which blocks of a memo file are in use, to find contents that lie one over the other.
class MemoMap {
public:
    /// Reads the header of `file`, whose format is `format`.
    MemoMap(const files::File& file, MemoFormat format);

    /// The content of a field of `record` begins at `block` and has `length` bytes.
    void Add(std::uint32_t block, std::uint64_t length, std::uint32_t record);
    /// What is wrong, one sentence each.
    std::vector<std::string> Findings();

private:
    struct Use {
        std::uint32_t first = 0;
        std::uint32_t blocks = 0;
        std::uint32_t record = 0;
    };

    std::string path_;
    std::uint32_t blockSize_ = 0;
    std::uint32_t overhead_ = 0;
    std::uint32_t nextFree_ = 0;
    std::vector<Use> uses_;
};

}  // namespace zu::dbf::maintenance
