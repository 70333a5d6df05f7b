#include "host/technologies/dbf/cdx/TreeEntries.h"

#include <algorithm>
#include <iterator>

namespace zu::dbf::cdx {
namespace {

template <class Container>
auto At(Container& container, std::size_t index) {
    return std::next(container.begin(), static_cast<std::ptrdiff_t>(index));
}

}  // namespace

void TreeEntries::Clear() noexcept {
    keys_.clear();
    records_.clear();
    children_.clear();
}

void TreeEntries::Append(const std::byte* key, std::uint32_t record, std::uint32_t child) {
    keys_.insert(keys_.end(), key, key + keyLength_);
    records_.push_back(record);
    children_.push_back(child);
}

void TreeEntries::Insert(std::size_t index, const std::byte* key, std::uint32_t record, std::uint32_t child) {
    keys_.insert(At(keys_, index * keyLength_), key, key + keyLength_);
    records_.insert(At(records_, index), record);
    children_.insert(At(children_, index), child);
}

void TreeEntries::Erase(std::size_t index) {
    keys_.erase(At(keys_, index * keyLength_), At(keys_, (index + 1) * keyLength_));
    records_.erase(At(records_, index));
    children_.erase(At(children_, index));
}

void TreeEntries::Replace(std::size_t index, const TreeEntries& others) {
    Erase(index);
    keys_.insert(At(keys_, index * keyLength_), others.keys_.begin(), others.keys_.end());
    records_.insert(At(records_, index), others.records_.begin(), others.records_.end());
    children_.insert(At(children_, index), others.children_.begin(), others.children_.end());
}

void TreeEntries::Rename(std::size_t index, const std::byte* key, std::uint32_t record) {
    std::copy(key, key + keyLength_, At(keys_, index * keyLength_));
    records_[index] = record;
}

void TreeEntries::AppendAll(const TreeEntries& others) {
    keys_.insert(keys_.end(), others.keys_.begin(), others.keys_.end());
    records_.insert(records_.end(), others.records_.begin(), others.records_.end());
    children_.insert(children_.end(), others.children_.begin(), others.children_.end());
}

}  // namespace zu::dbf::cdx
