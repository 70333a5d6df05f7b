#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zu::dbf::cdx {

/// The entries of one page while it is being changed: keys in full length, record numbers, and for interior
/// pages the children.
class TreeEntries {
public:
    explicit TreeEntries(std::size_t keyLength) : keyLength_(keyLength) {}

    std::size_t size() const noexcept { return records_.size(); }
    bool empty() const noexcept { return records_.empty(); }
    std::size_t keyLength() const noexcept { return keyLength_; }
    const std::byte* key(std::size_t index) const noexcept { return keys_.data() + index * keyLength_; }
    std::uint32_t record(std::size_t index) const noexcept { return records_[index]; }
    std::uint32_t child(std::size_t index) const noexcept { return children_[index]; }

    void Clear() noexcept;
    void Append(const std::byte* key, std::uint32_t record, std::uint32_t child = 0);
    void Insert(std::size_t index, const std::byte* key, std::uint32_t record, std::uint32_t child = 0);
    void Erase(std::size_t index);
    /// Puts all entries of `others` in the place of the entry at `index`.
    void Replace(std::size_t index, const TreeEntries& others);
    /// Gives an entry another key and record number; its child stays.
    void Rename(std::size_t index, const std::byte* key, std::uint32_t record);
    void AppendAll(const TreeEntries& others);

private:
    std::size_t keyLength_;
    std::vector<std::byte> keys_;
    std::vector<std::uint32_t> records_;
    std::vector<std::uint32_t> children_;
};

}  // namespace zu::dbf::cdx
