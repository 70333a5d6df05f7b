#include "host/technologies/dbf/cdx/LeafSearch.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "host/technologies/dbf/cdx/Damage.h"
#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "host/technologies/dbf/cdx/LeafEntries.h"

namespace zu::dbf::cdx {

namespace {

/// Where the keys of a leaf, one after the other, stand to a bound.
class Comparison {
public:
    Comparison(const KeyBuffer& bound, std::byte fill) noexcept
        : bound_(bound.data()), length_(bound.size()), fill_(fill) {}

    /// The next key repeats `duplicate` bytes of the one before; `fresh` follow, the rest is fill.
    void Next(std::size_t duplicate, const std::byte* fresh, std::size_t count) noexcept {
        // Where the last key left the bound, this one is the same.
        if (duplicate > shared_) return;
        const std::size_t end = duplicate + count;
        for (shared_ = duplicate; shared_ < length_; ++shared_) {
            const std::byte byte = shared_ < end ? fresh[shared_ - duplicate] : fill_;
            if (byte == bound_[shared_]) continue;
            order_ = byte < bound_[shared_] ? -1 : 1;
            return;
        }
        order_ = 0;
    }
    /// Below zero: the key is less than the bound.
    int order() const noexcept { return order_; }

private:
    const std::byte* bound_;
    std::size_t length_;
    std::byte fill_;
    std::size_t shared_ = 0;  ///< bytes that the last key has in common with the bound
    int order_ = -1;
};

}  // namespace

void LeafSearch::Find(const KeyBounds& bounds, std::vector<std::uint32_t>& records) {
    records.clear();
    below_ = above_ = kNoRecord;
    GoToLeaf(bounds.low.data());
    Scan(bounds, records);
}

void LeafSearch::GoToLeaf(const std::byte* key) {
    std::uint32_t page = root_;
    for (std::size_t depth = 0; depth <= kMaxDepth; ++depth) {
        const PageBytes bytes = file_.Page(page);
        if (PageHeader::Parse(bytes, page).isLeaf()) {
            leaf_ = page;
            std::copy(bytes.begin(), bytes.end(), page_.begin());
            return;
        }
        const InteriorPage interior(bytes, page, shape_);
        page = interior.child(std::min(interior.LowerBound(key, 0), interior.size() - 1));
    }
    FailDamaged(page, "the tree is deeper than " + std::to_string(kMaxDepth) + " levels");
}

void LeafSearch::Scan(const KeyBounds& bounds, std::vector<std::uint32_t>& records) {
    LeafEntries entries(page_, leaf_, shape_.length);
    isFirst_ = entries.header().left == kNoPage;
    isLast_ = entries.header().right == kNoPage;
    Comparison low(bounds.low, shape_.fill);
    Comparison high(bounds.high, shape_.fill);
    const bool isOneKey = bounds.low == bounds.high;
    while (entries.Next()) {
        low.Next(entries.duplicate(), entries.fresh(), entries.freshCount());
        if (!isOneKey) high.Next(entries.duplicate(), entries.fresh(), entries.freshCount());
        if (low.order() < 0) {
            below_ = entries.record();
        } else if ((isOneKey ? low : high).order() <= 0) {
            records.push_back(entries.record());
        } else {
            above_ = entries.record();
            return;
        }
    }
}

bool LeafSearch::IsUnchanged() {
    const std::byte* const now = file_.Page(leaf_).data();
    std::uint64_t differences = 0;  // a loop that the processor takes in a few steps, without a call
    for (std::size_t at = 0; at < kPageSize; at += sizeof differences) {
        std::uint64_t before = 0;
        std::uint64_t after = 0;
        std::memcpy(&before, page_.data() + at, sizeof before);
        std::memcpy(&after, now + at, sizeof after);
        differences |= before ^ after;
    }
    return differences == 0;
}

}  // namespace zu::dbf::cdx
