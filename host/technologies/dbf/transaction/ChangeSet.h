#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "host/technologies/dbf/transaction/TableParts.h"

namespace zu::dbf::transaction {

/// The writes of one change, collected in memory until all of them are known.
///
/// Two ranges of one part are either the same range (the later write replaces the earlier one) or have no
/// byte in common; a partial overlap is a mistake of the caller and throws Internal.
class ChangeSet {
public:
    struct Range {
        std::uint64_t offset = 0;
        std::uint32_t length = 0;
        std::size_t position = 0;  ///< of the bytes inside the set
    };

    void Write(Part part, std::uint64_t offset, std::span<const std::byte> data);

    /// Lays the collected writes over `buffer`, which holds the bytes of the file from `offset` on. For the
    /// index part `offset` and length must be those of a page that was written, or touch no written page.
    void Overlay(Part part, std::uint64_t offset, std::span<std::byte> buffer) const;

    /// The bytes written at exactly this offset; empty when there is no such write.
    std::span<const std::byte> Find(Part part, std::uint64_t offset) const;

    const std::vector<Range>& ranges(Part part) const noexcept { return ranges_[Index(part)]; }
    std::span<const std::byte> data(const Range& range) const noexcept {
        return {bytes_.data() + range.position, range.length};
    }
    /// The size that the part will have when it has `size` bytes now.
    std::uint64_t SizeAfter(Part part, std::uint64_t size) const noexcept;

    bool empty() const noexcept;
    /// All bytes that are to be written.
    std::size_t size() const noexcept { return bytes_.size(); }
    /// Forgets all writes and keeps the memory for the next change.
    void Clear() noexcept;

private:
    static std::size_t Index(Part part) noexcept { return static_cast<std::size_t>(part); }
    const Range* Exact(Part part, std::uint64_t offset) const;

    std::array<std::vector<Range>, kPartCount> ranges_;
    // Only used when a part has many ranges: most changes have a handful, where a walk is faster.
    std::array<std::unordered_map<std::uint64_t, std::size_t>, kPartCount> byOffset_;
    std::array<std::uint64_t, kPartCount> ends_{};
    std::vector<std::byte> bytes_;
};

}  // namespace zu::dbf::transaction
