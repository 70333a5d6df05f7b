#include "runner/commands/RecordRows.h"

#include "com/ComError.h"
#include "runner/commands/CellText.h"
#include "runner/commands/TextWidth.h"

namespace zu::runner::commands {
namespace {

constexpr LONG kRight = 1;
constexpr LONG kLongText = 100;

RecordRows::Field Describe(ZuDataField& field) {
    RecordRows::Field description;
    com::Bstr name;
    LONG type = 0;
    LONG alignment = 0;
    com::Check(field.get_Name(name.put()));
    com::Check(field.get_Type(&type));
    com::Check(field.get_Alignment(&alignment));
    com::Check(field.get_Decimals(&description.decimals));
    description.name = name.str();
    description.right = alignment == kRight;
    description.isText = type == VT_BSTR || type == kLongText || (type & VT_ARRAY) != 0;
    return description;
}

/// Zeros up to the places of the field, so that the points of a column stand below one another.
void AddPlaces(std::wstring& number, long places) {
    if (number.find_first_of(L"eEn") != std::wstring::npos) return;
    const std::size_t point = number.find(L'.');
    if (point == std::wstring::npos) number += L'.';
    const std::size_t present = point == std::wstring::npos ? 0 : number.size() - point - 1;
    if (present < static_cast<std::size_t>(places))
        number.append(static_cast<std::size_t>(places) - present, L'0');
}

}  // namespace

RecordRows::RecordRows(const com::ComPtr<IDispatch>& view) : view_(view.as<ZuDataView>()) {
    com::ComPtr<ZuDataFields> fields;
    com::Check(view_->get_Fields(fields.put()));
    LONG columns = 0;
    com::Check(com::Required(fields.get())->get_Count(&columns));
    for (LONG i = 0; i < columns; ++i) {
        com::ComPtr<ZuDataField> field;
        com::Check(fields->get_Item(com::Variant(i), field.put()));
        fields_.push_back(Describe(*com::Required(field.get())));
    }
    com::Check(view_->get_RecordCount(0, &count_));
}

void RecordRows::MoveTo(LONG row) {
    com::Check(view_->Move(row, 0));
    row_ = row;
}

bool RecordRows::IsDeleted() const {
    VARIANT_BOOL deleted = VARIANT_FALSE;
    com::Check(view_->get_IsDeleted(&deleted));
    return deleted != VARIANT_FALSE;
}

LONG RecordRows::RecordNumber() const {
    LONG number = 0;
    com::Check(view_->get_RecordNumber(&number));
    return number;
}

const com::Variant& RecordRows::Value(std::size_t field) {
    com::Check(view_->get_CellValue(row_, static_cast<LONG>(field), value_.put()));
    return value_;
}

std::wstring RecordRows::Shown(std::size_t field) {
    std::optional<std::wstring> text = CellText(Value(field));
    if (!text) return {};
    if (value_.type() == VT_DATE) {
        if (text->size() > 10) (*text)[10] = L' ';
        return *text;
    }
    if (value_.type() == VT_DECIMAL || value_.type() == VT_R8 || value_.type() == VT_R4) {
        if (fields_[field].decimals > 0) AddPlaces(*text, fields_[field].decimals);
        return *text;
    }
    return fields_[field].isText ? FirstLine(*text) : *text;
}

}  // namespace zu::runner::commands
