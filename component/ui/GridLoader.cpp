#include "component/ui/GridLoader.h"

#include <algorithm>
#include <string>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/ui/CellText.h"
#include "component/ui/FieldType.h"

namespace zu::component {

using com::Bstr;
using com::Check;

namespace {

/// Longer contents do not make a column wider; it can be dragged.
constexpr LONG kWidestContent = 28;
/// Narrow fields still show a heading and the frame of the current cell.
constexpr LONG kNarrowestContent = 3;

std::wstring FormatOf(ZuDataField& field, LONG type) {
    switch (type) {
        case kSingleField:
        case kDoubleField:
            return FixedFormat(Engine().data().DecimalPlaces(type));
        case kCurrencyField:
            return std::wstring(kCurrencyFormat);
        case kDecimalField: {
            LONG decimals = 0;
            Check(field.get_Decimals(&decimals));
            return FixedFormat(decimals);
        }
        default:
            return {};
    }
}

grid::Column ColumnOf(ZuDataField& field, const TextWidth& width) {
    Bstr name;
    LONG type = 0;
    LONG characters = 0;
    LONG alignment = 0;
    Check(field.get_Name(name.put()));
    Check(field.get_Type(&type));
    Check(field.get_DisplayWidth(&characters));
    Check(field.get_Alignment(&alignment));

    grid::Column column;
    column.caption = com::AsUtf16(name.view());
    column.format = com::AsUtf16(FormatOf(field, type));
    column.alignment = static_cast<grid::Alignment>(std::clamp<LONG>(alignment, 0, 2));
    column.type = type;
    const auto content = static_cast<std::size_t>(std::clamp(characters, kNarrowestContent, kWidestContent));
    const bool digits = IsNumber(type) || type == kDateField;
    column.width = std::max({width(name.view()), width(com::AsWide(column.format)),
                             width(std::wstring(content, digits ? L'0' : L'n'))});
    return column;
}

}  // namespace

void LoadGrid(GridView& view, const TextWidth& width, grid::GridRows& rows, grid::Columns& columns) {
    columns = grid::Columns();
    const LONG fields = view.FieldCount();
    for (LONG i = 0; i < fields; ++i)
        columns.Add(ColumnOf(view.Field(i), width));
    rows.Reset(view.RecordCount());
}

}  // namespace zu::component
