#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "portable/files/File.h"

namespace zu::dbf::cdx {

/// Appends pages to a file in large blocks.
class PageStream {
public:
    /// Starts at `offset`, a multiple of the page size.
    PageStream(files::File& file, std::uint32_t offset);

    /// The offset that the next page will have.
    std::uint32_t position() const noexcept { return start_ + static_cast<std::uint32_t>(used_); }

    /// Room for the next page, zeros at first; valid until the next call. Overflow beyond 4 GB.
    PageBuffer Next();
    /// Hands what is in memory to the file.
    void Flush();

private:
    files::File& file_;
    std::uint32_t start_;
    std::size_t used_ = 0;
    std::vector<std::byte> block_;
};

}  // namespace zu::dbf::cdx
