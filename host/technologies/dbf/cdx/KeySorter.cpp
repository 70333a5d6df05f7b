#include "host/technologies/dbf/cdx/KeySorter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/technologies/dbf/ByteOrder.h"

namespace zu::dbf::cdx {

namespace {

constexpr std::size_t kChunkSize = 8;

}  // namespace

void KeySorter::Reserve(std::size_t count) {
    keys_.reserve(count * keyLength_);
    records_.reserve(count);
}

std::byte* KeySorter::Add(std::uint32_t record) {
    const std::size_t start = keys_.size();
    keys_.resize(start + keyLength_);
    records_.push_back(record);
    return keys_.data() + start;
}

void KeySorter::LoadChunks(Position first, Position last, std::size_t start) const noexcept {
    const std::size_t size = std::min(kChunkSize, keyLength_ - start);
    for (Position item = first; item != last; ++item) {
        const std::byte* at = keys_.data() + item->index * keyLength_ + start;
        if (size == kChunkSize) {
            item->chunk = LoadBig64(at);
        } else {
            std::uint64_t chunk = 0;
            for (std::size_t i = 0; i < size; ++i)
                chunk = chunk << 8 | std::to_integer<std::uint64_t>(at[i]);
            item->chunk = chunk;
        }
    }
}

// Equal chunks keep the order of the records, which were added in ascending order.
void KeySorter::SortRange(Position first, Position last) {
    const auto before = [](const Item& left, const Item& right) {
        return left.chunk != right.chunk ? left.chunk < right.chunk : left.index < right.index;
    };
    if (!std::is_sorted(first, last, before)) std::sort(first, last, before);
}

void KeySorter::Sort() {
    order_.resize(records_.size());
    for (std::size_t i = 0; i < order_.size(); ++i)
        order_[i].index = i;

    // Sorts by the first eight bytes, then each run of equal ones by the next eight, and so on. The runs wait
    // in a list: recursion would be as deep as keys are long, but the list also keeps the work in one place.
    struct Run {
        std::size_t first;
        std::size_t last;
        std::size_t start;
    };
    std::vector<Run> waiting{{0, order_.size(), 0}};
    while (!waiting.empty()) {
        const Run run = waiting.back();
        waiting.pop_back();
        const Position first = order_.begin() + static_cast<std::ptrdiff_t>(run.first);
        const Position last = order_.begin() + static_cast<std::ptrdiff_t>(run.last);
        LoadChunks(first, last, run.start);
        SortRange(first, last);
        const std::size_t next = run.start + kChunkSize;
        if (next >= keyLength_) continue;
        for (std::size_t i = run.first; i < run.last;) {
            std::size_t end = i + 1;
            while (end < run.last && order_[end].chunk == order_[i].chunk)
                ++end;
            if (end - i > 1) waiting.push_back({i, end, next});
            i = end;
        }
    }
}

}  // namespace zu::dbf::cdx
