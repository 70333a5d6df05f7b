#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/expression/RecordLayout.h"
#include "host/technologies/dbf/MemoFile.h"
#include "host/technologies/dbf/TableLayout.h"

namespace zu::dbf {

/// The memo fields of a table: from the pointer in a record to the content.
class MemoFields final : public expression::MemoReader {
public:
    /// `layout` and `warnings` must outlive the object. Without a `file` every memo that points somewhere is
    /// Unreadable. The first memo that cannot be read adds a warning.
    MemoFields(const TableLayout& layout, std::unique_ptr<MemoFile> file, std::vector<std::string>& warnings)
        : layout_(layout), file_(std::move(file)), warnings_(warnings) {}

    MemoOutcome Fetch(std::size_t field, const std::byte* record, std::string& out);
    bool Read(std::size_t field, const std::byte* record, std::string& out) override {
        return Fetch(field, record, out) == MemoOutcome::Found;
    }

private:
    const TableLayout& layout_;
    std::unique_ptr<MemoFile> file_;
    std::vector<std::string>& warnings_;
    bool warned_ = false;
};

/// The block number in the bytes of a memo field: 4 bytes binary or 10 decimal digits; 0 for none, nothing
/// when the bytes are no number.
std::optional<std::uint32_t> MemoBlock(const std::byte* at, std::uint32_t width) noexcept;

}  // namespace zu::dbf
