#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zu::grid {

/// The texts of one row, all in one string: a row costs two allocations whatever its number of columns.
class LoadedRow {
public:
    void Append(std::u16string_view text);
    /// The text of a data column, counted from 0; empty beyond the last one.
    std::u16string_view Text(std::size_t column) const noexcept;
    /// Replaces one text, adding empty ones before it where the row is shorter.
    void Replace(std::size_t column, std::u16string_view text);
    std::size_t size() const noexcept { return ends_.size(); }

    bool isDeleted() const noexcept { return deleted_; }
    void SetDeleted(bool deleted) noexcept { deleted_ = deleted; }

private:
    std::size_t Begin(std::size_t column) const noexcept { return column == 0 ? 0 : ends_[column - 1]; }

    std::u16string text_;
    std::vector<std::size_t> ends_;
    bool deleted_ = false;
};

}  // namespace zu::grid
