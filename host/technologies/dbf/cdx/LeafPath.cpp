#include "host/technologies/dbf/cdx/LeafPath.h"

#include <algorithm>

#include "host/technologies/dbf/cdx/Damage.h"
#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "host/technologies/dbf/cdx/PageHeader.h"

namespace zu::dbf::cdx {

template <typename Choose>
void LeafPath::Descend(std::uint32_t page, Choose choose) {
    for (;;) {
        const PageBytes bytes = file_.Page(page);
        if (PageHeader::Parse(bytes, page).isLeaf()) break;
        if (depth_ == kMaxDepth) {
            FailDamaged(page, "the tree is deeper than " + std::to_string(kMaxDepth) + " levels");
        }
        const InteriorPage interior(bytes, page, shape_);
        Step& step = steps_[depth_++];
        step.page = page;
        step.count = interior.size();
        step.index = choose(interior);
        page = interior.child(step.index);
    }
    leaf_ = page;
}

void LeafPath::ToFirst() {
    depth_ = 0;
    moves_ = 0;
    Descend(root_, [](const InteriorPage&) { return std::size_t{0}; });
}

void LeafPath::ToLast() {
    depth_ = 0;
    moves_ = 0;
    Descend(root_, [](const InteriorPage& interior) { return interior.size() - 1; });
}

void LeafPath::To(const std::byte* key, std::uint32_t record) {
    depth_ = 0;
    moves_ = 0;
    Descend(root_, [&](const InteriorPage& interior) {
        return std::min(interior.LowerBound(key, record), interior.size() - 1);
    });
}

std::uint32_t LeafPath::ChildOf(const Step& step) {
    return InteriorPage(file_.Page(step.page), step.page, shape_).child(step.index);
}

void LeafPath::CheckNeighbours(std::uint32_t left, std::uint32_t right) {
    if (++moves_ > file_.pageCount()) FailDamaged(leaf_, "the pages of the tree form a circle");
    const std::uint32_t linkRight = PageHeader::Parse(file_.Page(left), left).right;
    const std::uint32_t linkLeft = PageHeader::Parse(file_.Page(right), right).left;
    if (linkRight != right || linkLeft != left) {
        FailDamaged(leaf_, "the links between the leaves at " + std::to_string(left) + " and " +
                               std::to_string(right) + " do not agree with the level above");
    }
}

bool LeafPath::ToNext() {
    std::size_t level = depth_;
    while (level > 0 && steps_[level - 1].index + 1 >= steps_[level - 1].count)
        --level;
    if (level == 0) return false;
    const std::uint32_t before = leaf_;
    depth_ = level;
    ++steps_[level - 1].index;
    Descend(ChildOf(steps_[level - 1]), [](const InteriorPage&) { return std::size_t{0}; });
    CheckNeighbours(before, leaf_);
    return true;
}

bool LeafPath::ToPrevious() {
    std::size_t level = depth_;
    while (level > 0 && steps_[level - 1].index == 0)
        --level;
    if (level == 0) return false;
    const std::uint32_t before = leaf_;
    depth_ = level;
    --steps_[level - 1].index;
    Descend(ChildOf(steps_[level - 1]), [](const InteriorPage& interior) { return interior.size() - 1; });
    CheckNeighbours(leaf_, before);
    return true;
}

double LeafPath::Fraction() const noexcept {
    double fraction = 0;
    double size = 1;
    for (std::size_t i = 0; i < depth_; ++i) {
        size /= static_cast<double>(steps_[i].count);
        fraction += static_cast<double>(steps_[i].index) * size;
    }
    return fraction;
}

}  // namespace zu::dbf::cdx
