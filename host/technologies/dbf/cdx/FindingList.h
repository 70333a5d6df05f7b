#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/technologies/dbf/cdx/Finding.h"

namespace zu::dbf::cdx {

/// The findings about one tag; a tag that is wholly wrong does not fill the memory with them.
class FindingList {
public:
    FindingList(std::vector<Finding>& all, std::string tag) : all_(all), tag_(std::move(tag)) {}

    void Fault(std::uint32_t page, std::string text) { Add(Finding::Weight::Fault, page, std::move(text)); }
    void Remark(std::uint32_t page, std::string text) { Add(Finding::Weight::Remark, page, std::move(text)); }
    bool isEmpty() const noexcept { return count_ == 0; }

private:
    static constexpr std::size_t kMost = 50;

    void Add(Finding::Weight weight, std::uint32_t page, std::string text) {
        if (++count_ > kMost) return;
        if (count_ == kMost) text = "there are more findings, which are left out";
        all_.push_back({weight, tag_, page, std::move(text)});
    }

    std::vector<Finding>& all_;
    std::string tag_;
    std::size_t count_ = 0;
};

}  // namespace zu::dbf::cdx
