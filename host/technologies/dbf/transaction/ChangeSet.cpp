#include "host/technologies/dbf/transaction/ChangeSet.h"

#include <algorithm>

#include "portable/error/Error.h"

namespace zu::dbf::transaction {
namespace {

// Above this number of ranges a hash finds a range faster than a walk.
constexpr std::size_t kWalkLimit = 24;

bool Overlaps(const ChangeSet::Range& range, std::uint64_t offset, std::uint64_t length) {
    return offset < range.offset + range.length && range.offset < offset + length;
}

}  // namespace

const ChangeSet::Range* ChangeSet::Exact(Part part, std::uint64_t offset) const {
    const auto& ranges = ranges_[Index(part)];
    if (ranges.size() <= kWalkLimit) {
        const auto found =
            std::find_if(ranges.begin(), ranges.end(), [&](const Range& r) { return r.offset == offset; });
        return found == ranges.end() ? nullptr : &*found;
    }
    const auto& map = byOffset_[Index(part)];
    const auto found = map.find(offset);
    return found == map.end() ? nullptr : &ranges[found->second];
}

void ChangeSet::Write(Part part, std::uint64_t offset, std::span<const std::byte> data) {
    if (data.empty()) return;
    auto& ranges = ranges_[Index(part)];
    if (const Range* same = Exact(part, offset); same && same->length == data.size()) {
        std::copy(data.begin(), data.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(same->position));
        return;
    }
    if (ranges.size() <= kWalkLimit && std::any_of(ranges.begin(), ranges.end(), [&](const Range& r) {
            return Overlaps(r, offset, data.size());
        }))
        throw Error(ErrorKind::Internal, "two writes of one change overlap in part");
    auto& map = byOffset_[Index(part)];
    if (ranges.size() == kWalkLimit)
        for (std::size_t i = 0; i < ranges.size(); ++i)
            map.emplace(ranges[i].offset, i);
    if (ranges.size() >= kWalkLimit) map.emplace(offset, ranges.size());
    ranges.push_back({offset, static_cast<std::uint32_t>(data.size()), bytes_.size()});
    bytes_.insert(bytes_.end(), data.begin(), data.end());
    ends_[Index(part)] = std::max(ends_[Index(part)], offset + data.size());
}

void ChangeSet::Overlay(Part part, std::uint64_t offset, std::span<std::byte> buffer) const {
    const auto& ranges = ranges_[Index(part)];
    if (ranges.size() > kWalkLimit) {
        if (const Range* same = Exact(part, offset); same && same->length <= buffer.size()) {
            const auto bytes = data(*same);
            std::copy(bytes.begin(), bytes.end(), buffer.begin());
        }
        return;
    }
    for (const Range& range : ranges) {
        if (!Overlaps(range, offset, buffer.size())) continue;
        const std::uint64_t from = std::max(range.offset, offset);
        const std::uint64_t to = std::min(range.offset + range.length, offset + buffer.size());
        const std::byte* source = bytes_.data() + range.position + (from - range.offset);
        std::copy(source, source + (to - from), buffer.begin() + static_cast<std::ptrdiff_t>(from - offset));
    }
}

std::span<const std::byte> ChangeSet::Find(Part part, std::uint64_t offset) const {
    const Range* range = Exact(part, offset);
    return range ? data(*range) : std::span<const std::byte>();
}

std::uint64_t ChangeSet::SizeAfter(Part part, std::uint64_t size) const noexcept {
    return std::max(size, ends_[Index(part)]);
}

bool ChangeSet::empty() const noexcept {
    return bytes_.empty();
}

void ChangeSet::Clear() noexcept {
    for (auto& ranges : ranges_)
        ranges.clear();
    for (auto& map : byOffset_)
        map.clear();
    ends_.fill(0);
    bytes_.clear();
}

}  // namespace zu::dbf::transaction
