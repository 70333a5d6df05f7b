#include "component/ui/CellTip.h"

#include <string>

namespace zu::component {

namespace {

constexpr std::size_t kMostCharacters = 1000;

}  // namespace

void CellTip::MouseOver(HWND window, std::optional<grid::Cell> cell) noexcept {
    if (cell == cell_) return;
    cell_ = cell;
    note_.Hide();
    if (!cell_) return;
    TRACKMOUSEEVENT track{sizeof track, TME_HOVER | TME_LEAVE, window, HOVER_DEFAULT};
    TrackMouseEvent(&track);
}

void CellTip::Show(HWND window, const RECT& place, std::wstring_view text) {
    std::wstring shown(text.substr(0, kMostCharacters));
    if (shown.size() < text.size()) shown += L" ...";
    note_.Show(window, place, shown);
}

}  // namespace zu::component
