#include "host/technologies/dbf/cdx/LeafPlan.h"

#include <algorithm>

namespace zu::dbf::cdx {
namespace {

// The bytes of one key in a page: `alone` as the first key, `after` behind its predecessor.
struct Cost {
    std::size_t alone = 0;
    std::size_t after = 0;
};

Cost CostOf(const TreeEntries& entries, std::size_t index, const KeyShape& shape, const LeafLayout& layout) {
    const std::byte* key = entries.key(index);
    std::size_t used = shape.length;
    while (used > 0 && key[used - 1] == shape.fill)
        --used;
    std::size_t shared = 0;
    if (index > 0) {
        const std::byte* before = entries.key(index - 1);
        while (shared < used && key[shared] == before[shared])
            ++shared;
    }
    return {layout.entrySize + used, layout.entrySize + used - shared};
}

}  // namespace

std::size_t PackedSize(const TreeEntries& entries, const KeyShape& shape, const LeafLayout& layout) {
    std::size_t size = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Cost cost = CostOf(entries, i, shape, layout);
        size += i == 0 ? cost.alone : cost.after;
    }
    return size;
}

std::vector<std::size_t> PlanLeaves(const TreeEntries& entries, const KeyShape& shape,
                                    const LeafLayout& layout, Cut cut) {
    std::vector<std::size_t> ends;
    const std::size_t total = PackedSize(entries, shape, layout);
    // Only the first page is held back; what is left over goes into as few pages as it needs.
    std::size_t room =
        total > leaf::kRoom && cut == Cut::Half ? std::min(total / 2, leaf::kRoom) : leaf::kRoom;
    std::size_t used = 0;
    std::size_t start = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Cost cost = CostOf(entries, i, shape, layout);
        if (i > start && used + cost.after > room) {
            ends.push_back(i);
            start = i;
            used = 0;
            room = leaf::kRoom;
        }
        used += i == start ? cost.alone : cost.after;
    }
    if (!entries.empty()) ends.push_back(entries.size());
    return ends;
}

}  // namespace zu::dbf::cdx
