#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zu::dbf::cdx {

/// One thing that a check of an index file found.
struct Finding {
    enum class Weight {
        Fault,  ///< the index is wrong
        Remark  ///< nothing that changes an answer: unused pages, a key that cannot be recomputed
    };

    Weight weight = Weight::Fault;
    std::string tag;         ///< empty: the file as a whole
    std::uint32_t page = 0;  ///< offset of the page or header where it was found
    std::string text;

    /// "tag NAME, page at offset 1536: text"
    std::string Describe() const;
};

/// There is a fault among the findings.
bool HasFaults(const std::vector<Finding>& findings) noexcept;

}  // namespace zu::dbf::cdx
