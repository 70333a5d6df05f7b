#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "host/technologies/dbf/DbfVersion.h"
#include "host/technologies/dbf/transaction/ChangeSet.h"
#include "portable/files/File.h"

namespace zu::dbf::write {

/// What a memo holds, for formats that tell the difference.
enum class MemoContent : std::uint8_t { Text, Binary };

/// Puts memo contents into a memo file, as writes of a change set.
///
/// A content that fits into the blocks that its field has already is written over the old one; any other gets
/// blocks at the end. Space that is left over comes back when the table is packed, as with the programs that
/// made these formats. An updater must go when the lock of the memo file does: it remembers where the file
/// ends.
class MemoUpdater {
public:
    virtual ~MemoUpdater() = default;

    /// The writer for the format of `file`, which must outlive it. Damaged when the header makes no sense,
    /// Unsupported for formats that are not written.
    static std::unique_ptr<MemoUpdater> Open(const files::File& file, MemoFormat format);

    /// Writes `content` and answers the number of its first block. `oldBlock` is the block of the field's old
    /// content, 0 for none. InvalidArgument when the format cannot hold the content; Overflow when the file
    /// has no more block numbers.
    virtual std::uint32_t Store(std::string_view content, MemoContent kind, std::uint32_t oldBlock,
                                transaction::ChangeSet& changes) = 0;
    /// Lets the header count all blocks that are in the file.
    virtual void CountBlocks(transaction::ChangeSet& changes) = 0;
};

}  // namespace zu::dbf::write
