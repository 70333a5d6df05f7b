#include "runner/commands/ColumnLayout.h"

#include <algorithm>
#include <utility>

#include "runner/commands/TextWidth.h"

namespace zu::runner::commands {
namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowest = 12;

}  // namespace

ColumnLayout::ColumnLayout(std::vector<Column> columns)
    : columns_(std::move(columns)), shown_(columns_.size()) {
    for (const Column& column : columns_)
        widths_.push_back(TextWidth(column.name));
}

void ColumnLayout::Measure(const std::vector<std::wstring>& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
        widths_[i] = std::max(widths_[i], TextWidth(values[i]));
}

std::size_t ColumnLayout::Total() const {
    std::size_t total = 0;
    for (std::size_t i = 0; i < shown_; ++i)
        total += widths_[i] + (i > 0 ? kGap : 0);
    return total;
}

bool ColumnLayout::Shrink(std::size_t width) {
    while (Total() > width) {
        std::size_t widest = shown_;
        for (std::size_t i = 0; i < shown_; ++i) {
            if (columns_[i].firm || widths_[i] <= kNarrowest) continue;
            if (widest == shown_ || widths_[i] > widths_[widest]) widest = i;
        }
        if (widest == shown_) return false;
        // One step takes the widest column down to the next but one, or to what is needed.
        std::size_t next = kNarrowest;
        for (std::size_t i = 0; i < shown_; ++i)
            if (!columns_[i].firm && widths_[i] < widths_[widest]) next = std::max(next, widths_[i]);
        const std::size_t room = std::max<std::size_t>(widths_[widest] - next, 1);
        widths_[widest] -= std::min(Total() - width, room);
    }
    return true;
}

void ColumnLayout::Fit(std::size_t width) {
    cuts_ = true;
    const std::vector<std::size_t> natural = widths_;
    while (!Shrink(width) && shown_ > 1) {
        --shown_;
        widths_ = natural;
    }
    if (shown_ == 1) widths_[0] = std::min(widths_[0], std::max<std::size_t>(width, 1));
}

std::wstring ColumnLayout::Join(const std::vector<std::wstring>& cells, bool values) const {
    std::wstring line;
    for (std::size_t i = 0; i < shown_; ++i) {
        if (i > 0) line.append(kGap, L' ');
        const bool cut = cuts_ && (!values || !columns_[i].firm || shown_ == 1);
        line += PadToWidth(cut ? CutToWidth(cells[i], widths_[i]) : cells[i], widths_[i], columns_[i].right);
    }
    line.erase(line.find_last_not_of(L' ') + 1);
    return line;
}

std::wstring ColumnLayout::Line(const std::vector<std::wstring>& values) const {
    return Join(values, true);
}

std::wstring ColumnLayout::Header() const {
    std::vector<std::wstring> names;
    for (const Column& column : columns_)
        names.push_back(column.name);
    return Join(names, false);
}

std::wstring ColumnLayout::Rule() const {
    std::wstring line;
    for (std::size_t i = 0; i < shown_; ++i)
        line += (i > 0 ? std::wstring(kGap, L' ') : std::wstring()) + std::wstring(widths_[i], L'-');
    return line;
}

std::vector<std::wstring> ColumnLayout::LeftOut() const {
    std::vector<std::wstring> names;
    for (std::size_t i = shown_; i < columns_.size(); ++i)
        names.push_back(columns_[i].name);
    return names;
}

}  // namespace zu::runner::commands
