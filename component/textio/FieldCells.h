#pragma once

#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "component/table/DataView.h"
#include "portable/textio/Cell.h"
#include "portable/textio/FieldRenderer.h"

namespace zu::component {

/// The values of a view's current record as cells, field by field. The fields are fetched once.
class FieldCells {
public:
    /// Throws ComError.
    explicit FieldCells(DataView& view);

    const std::vector<textio::ExportField>& fields() const noexcept { return descriptions_; }
    /// The value of a field; valid until the field is read again. Throws ComError when the view fails or the
    /// value cannot be converted to the field's type.
    textio::Cell Read(std::size_t field);

private:
    textio::Cell NumberCell(const VARIANT& value, int type, std::size_t field);
    textio::Cell DecimalCell(const VARIANT& value, std::size_t field);
    textio::Cell TextCell(const VARIANT& value, std::size_t field);
    textio::Cell DateCell(const VARIANT& value);

    std::vector<com::ComPtr<ZuDataField>> fields_;
    std::vector<textio::ExportField> descriptions_;
    std::vector<com::Variant> values_;
    std::vector<com::Bstr> texts_;
    std::vector<text::DecimalDigits> decimals_;
};

}  // namespace zu::component
