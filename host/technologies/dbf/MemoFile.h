#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfVersion.h"
#include "portable/files/File.h"

namespace zu::dbf {

enum class MemoOutcome : std::uint8_t {
    Found,      ///< there is content, possibly empty
    None,       ///< the field points nowhere
    Unreadable  ///< the file is missing or contradicts the pointer
};

/// A file of memo contents, addressed by block number.
class MemoFile {
public:
    virtual ~MemoFile() = default;

    /// Replaces `out` by the content at block `block` (not 0). Unreadable when the block lies outside the
    /// file or holds no content; allocations are bounded by the file's size.
    virtual MemoOutcome Read(std::uint32_t block, std::string& out) = 0;

    /// Opens `file` as `format`. Null, with the reason added to `warnings`, when it cannot be used.
    static std::unique_ptr<MemoFile> Open(std::unique_ptr<files::File> file, MemoFormat format,
                                          std::vector<std::string>& warnings);
};

}  // namespace zu::dbf
