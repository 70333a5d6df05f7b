#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zu::dbf::cdx {

/// Collects the keys of a tag in memory and puts them in the order of the tree.
class KeySorter {
public:
    explicit KeySorter(std::size_t keyLength) : keyLength_(keyLength) {}

    void Reserve(std::size_t count);
    /// Room for the key of `record`, to be filled before the next call. Records come in ascending order.
    std::byte* Add(std::uint32_t record);
    void Sort();

    std::size_t size() const noexcept { return records_.size(); }
    /// The entries in order, once sorted.
    const std::byte* key(std::size_t position) const noexcept {
        return keys_.data() + order_[position].index * keyLength_;
    }
    /// The entry will be asked for soon: in memory they lie far from each other.
    void Expect(std::size_t position) const noexcept {
        if (position < order_.size()) __builtin_prefetch(key(position));
    }
    std::uint32_t record(std::size_t position) const noexcept { return records_[order_[position].index]; }

private:
    /// Eight bytes of a key as one number, which compare in a register, and the key that they are from.
    struct Item {
        std::uint64_t chunk;
        std::size_t index;
    };
    using Position = std::vector<Item>::iterator;

    void LoadChunks(Position first, Position last, std::size_t start) const noexcept;
    void SortRange(Position first, Position last);

    std::size_t keyLength_;
    std::vector<std::byte> keys_;
    std::vector<std::uint32_t> records_;
    std::vector<Item> order_;
};

}  // namespace zu::dbf::cdx
