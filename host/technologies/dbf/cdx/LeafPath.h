#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// The way from the root of a tree to one of its leaves, and on to the leaves beside it.
///
/// Movement goes through the interior pages; the sibling links of the leaves must agree with it, and no move
/// visits more leaves than the file has pages, so that damaged trees end in an error and not in a circle.
class LeafPath {
public:
    LeafPath(CdxFile& file, std::uint32_t root, const KeyShape& shape) noexcept
        : file_(file), root_(root), shape_(shape) {}

    CdxFile& file() const noexcept { return file_; }
    std::uint32_t root() const noexcept { return root_; }
    const KeyShape& shape() const noexcept { return shape_; }

    /// Each goes to a leaf; `leaf()` is its offset. Damaged when the pages on the way are not sound.
    void ToFirst();
    void ToLast();
    /// To the leaf that holds the first entry not before (`key`, `record`); the last leaf when all are
    /// before.
    void To(const std::byte* key, std::uint32_t record);
    /// False at the end of the tree; the path then stays where it is.
    bool ToNext();
    bool ToPrevious();

    std::uint32_t leaf() const noexcept { return leaf_; }
    /// Where in the tree the leaf lies, from 0 (the first) to nearly 1: an estimate from the places in the
    /// interior pages on the way.
    double Fraction() const noexcept;
    /// The interior pages above the leaf.
    std::size_t depth() const noexcept { return depth_; }

private:
    struct Step {
        std::uint32_t page = 0;
        std::size_t index = 0;
        std::size_t count = 0;
    };

    template <typename Choose>
    void Descend(std::uint32_t page, Choose choose);
    void CheckNeighbours(std::uint32_t left, std::uint32_t right);
    std::uint32_t ChildOf(const Step& step);

    CdxFile& file_;
    std::uint32_t root_;
    KeyShape shape_;
    std::array<Step, kMaxDepth> steps_{};
    std::size_t depth_ = 0;
    std::uint32_t leaf_ = kNoPage;
    std::size_t moves_ = 0;
};

}  // namespace zu::dbf::cdx
