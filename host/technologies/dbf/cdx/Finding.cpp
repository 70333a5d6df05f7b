#include "host/technologies/dbf/cdx/Finding.h"

#include <algorithm>

namespace zu::dbf::cdx {

std::string Finding::Describe() const {
    std::string where = tag.empty() ? "index file" : "tag " + tag;
    return where + ", page at offset " + std::to_string(page) + ": " + text;
}

bool HasFaults(const std::vector<Finding>& findings) noexcept {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.weight == Finding::Weight::Fault; });
}

}  // namespace zu::dbf::cdx
