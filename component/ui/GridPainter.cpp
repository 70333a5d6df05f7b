#include "component/ui/GridPainter.h"

#include <algorithm>
#include <string>

#include "com/Bstr.h"
#include "portable/grid/PlainText.h"

namespace zu::component {

using grid::Cell;
using grid::kFixedColumns;
using grid::kHeaderRows;
using grid::Row;

namespace {

void Fill(HDC context, const RECT& place, COLORREF colour) {
    SetBkColor(context, colour);
    ExtTextOutW(context, 0, 0, ETO_OPAQUE, &place, nullptr, 0, nullptr);
}

COLORREF LineColour() noexcept {
    return Blend(COLOR_WINDOW, COLOR_BTNSHADOW, 45);
}

/// The format without a point that nothing follows.
std::wstring_view ShownFormat(std::u16string_view format) noexcept {
    if (format.ends_with(u'.')) format.remove_suffix(1);
    return com::AsWide(format);
}

void Frame(HDC context, RECT place, int thickness, COLORREF colour) {
    for (int i = 0; i < thickness; ++i) {
        Fill(context, {place.left, place.top, place.right, place.top + 1}, colour);
        Fill(context, {place.left, place.bottom - 1, place.right, place.bottom}, colour);
        Fill(context, {place.left, place.top, place.left + 1, place.bottom}, colour);
        Fill(context, {place.right - 1, place.top, place.right, place.bottom}, colour);
        InflateRect(&place, -1, -1);
    }
}

}  // namespace

void GridPainter::Paint(HDC context, const RECT& client, bool focused) const {
    const int before = SaveDC(context);
    SetBkMode(context, TRANSPARENT);
    Fill(context, client, GetSysColor(COLOR_WINDOW));
    SelectObject(context, fonts_.plain.get());
    for (Row row = viewport_.topRow(); row < viewport_.visibleEnd(); ++row)
        PaintRow(context, client, row, focused);
    if (session_.rows().count() <= kHeaderRows) PaintEmpty(context, client);
    PaintHeader(context, client);
    RestoreDC(context, before);
}

RECT GridPainter::PlaceOf(int column, int top, int height) const {
    const int left = session_.columns().Left(column) - viewport_.left();
    return {left, top, left + session_.columns()[column].width, top + height};
}

void GridPainter::PaintHeader(HDC context, const RECT& client) const {
    const int height = viewport_.headerHeight();
    Fill(context, {client.left, client.top, client.right, height}, GetSysColor(COLOR_BTNFACE));
    const int half = height / 2;
    for (int column = kFixedColumns; column < session_.columns().count(); ++column) {
        const grid::Column& shown = session_.columns()[column];
        const RECT caption = PlaceOf(column, 0, half);
        if (caption.left >= client.right) break;
        if (caption.right <= client.left) continue;
        SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
        SelectObject(context, fonts_.bold.get());
        DrawCellText(context, caption, com::AsWide(shown.caption), shown.alignment);
        SetTextColor(context, Blend(COLOR_BTNTEXT, COLOR_BTNFACE, 40));
        SelectObject(context, fonts_.plain.get());
        DrawCellText(context, PlaceOf(column, half, height - half - 1), ShownFormat(shown.format),
                     shown.alignment);
        Fill(context, {caption.right - 1, 0, caption.right, height}, GetSysColor(COLOR_BTNSHADOW));
    }
    Fill(context, {client.left, height - 1, client.right, height}, GetSysColor(COLOR_BTNSHADOW));
}

void GridPainter::PaintRow(HDC context, const RECT& client, Row row, bool focused) const {
    const int top = static_cast<int>(viewport_.RowTop(row));
    const int height = viewport_.rowHeight();
    const int right = std::min<int>(client.right, session_.columns().totalWidth() - viewport_.left());
    if (row == session_.current().row)
        Fill(context, {client.left, top, right, top + height}, Blend(COLOR_WINDOW, COLOR_HIGHLIGHT, 10));
    for (int column = kFixedColumns; column < session_.columns().count(); ++column) {
        const RECT place = PlaceOf(column, top, height);
        if (place.left >= client.right) break;
        if (place.right > client.left) PaintCell(context, place, {row, column}, focused);
    }
    Fill(context, {client.left, top + height - 1, right, top + height}, LineColour());
}

void GridPainter::PaintCell(HDC context, const RECT& cell, Cell at, bool focused) const {
    const grid::LoadedRow* const loaded = session_.Loaded(at.row);
    const bool deleted = loaded && loaded->isDeleted();
    const bool current = at == session_.current();
    SelectObject(context, (deleted ? fonts_.struck : fonts_.plain).get());
    SetTextColor(context,
                 deleted ? Blend(COLOR_WINDOWTEXT, COLOR_WINDOW, 45) : GetSysColor(COLOR_WINDOWTEXT));
    if (current && focused) {
        Fill(context, cell, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(context, GetSysColor(COLOR_HIGHLIGHTTEXT));
    }
    if (loaded) {
        const auto text = loaded->Text(static_cast<std::size_t>(at.column - kFixedColumns));
        if (!text.empty())
            DrawCellText(context, cell, com::AsWide(grid::ShownText(text)),
                         session_.columns()[at.column].alignment);
    }
    Fill(context, {cell.right - 1, cell.top, cell.right, cell.bottom}, LineColour());
    // Without the focus the current cell keeps a frame, so that it can always be seen.
    if (current && !focused)
        Frame(context, {cell.left, cell.top, cell.right - 1, cell.bottom - 1}, Scaled(1, dpi_) + 1,
              GetSysColor(COLOR_HIGHLIGHT));
}

void GridPainter::PaintEmpty(HDC context, const RECT& client) const {
    RECT place = client;
    place.top = viewport_.headerHeight();
    place.bottom = std::min<LONG>(place.bottom, place.top + 4 * viewport_.rowHeight());
    SetTextColor(context, Blend(COLOR_WINDOWTEXT, COLOR_WINDOW, 40));
    DrawTextW(context, L"There are no records here.", -1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void GridPainter::DrawCellText(HDC context, RECT cell, std::wstring_view text,
                               grid::Alignment alignment) const {
    if (text.empty()) return;
    const int padding = Padding(dpi_);
    cell.left += padding;
    cell.right -= padding;
    if (cell.left >= cell.right) return;
    UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
    if (alignment == grid::Alignment::kRight) format |= DT_RIGHT;
    if (alignment == grid::Alignment::kCentre) format |= DT_CENTER;
    DrawTextW(context, text.data(), static_cast<int>(text.size()), &cell, format);
}

}  // namespace zu::component
