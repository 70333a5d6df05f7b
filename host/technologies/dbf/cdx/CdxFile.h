#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/TagHeader.h"
#include "portable/files/File.h"

namespace zu::dbf::cdx {

/// An index file as pages. The file is mapped whole; where that cannot be, blocks of pages are kept in
/// memory.
class CdxFile {
public:
    explicit CdxFile(std::unique_ptr<files::File> file);

    const std::string& path() const noexcept { return file_->path(); }
    files::File& file() noexcept { return *file_; }
    std::uint64_t size() const noexcept { return size_; }
    /// The number of whole pages, headers included.
    std::size_t pageCount() const noexcept { return static_cast<std::size_t>(size_ / kPageSize); }

    /// The page at `offset`, valid until the next call of any member. Damaged when the offset is no multiple
    /// of the page size or the page is not wholly inside the file.
    PageBytes Page(std::uint32_t offset);
    /// The header of the file or of a tag. Damaged as for `Page`.
    TagHeader Header(std::uint32_t offset);

    /// The counter that every change steps, and the mark of a change that is under way
    /// (transaction/ChangeMark.h), as they are in the file at this moment.
    struct ChangeState {
        std::uint32_t counter = 0;  ///< as TagHeader has it
        std::byte mark{0};
    };
    /// Costs no call of the system. Nothing when the file is not in memory.
    std::optional<ChangeState> changeState() const noexcept;

    /// Takes the file as it is now: other processes may have made it longer or changed it.
    void Refresh();

private:
    struct Block {
        std::uint64_t number = ~std::uint64_t{0};
        std::vector<std::byte> bytes;
    };

    const std::byte* Bytes(std::uint32_t offset, std::size_t length);

    std::unique_ptr<files::File> file_;
    std::unique_ptr<files::Mapping> mapping_;
    std::uint64_t size_ = 0;
    std::vector<Block> blocks_;  ///< used without a mapping; a block's place is its number modulo their count
};

}  // namespace zu::dbf::cdx
