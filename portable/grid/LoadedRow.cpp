#include "portable/grid/LoadedRow.h"

namespace zu::grid {

void LoadedRow::Append(std::u16string_view text) {
    text_.append(text);
    ends_.push_back(text_.size());
}

std::u16string_view LoadedRow::Text(std::size_t column) const noexcept {
    if (column >= ends_.size()) return {};
    return std::u16string_view(text_).substr(Begin(column), ends_[column] - Begin(column));
}

void LoadedRow::Replace(std::size_t column, std::u16string_view text) {
    while (ends_.size() <= column)
        ends_.push_back(text_.size());
    const std::size_t before = ends_[column] - Begin(column);
    text_.replace(Begin(column), before, text);
    for (std::size_t i = column; i < ends_.size(); ++i)
        ends_[i] += text.size() - before;
}

}  // namespace zu::grid
