#include "host/service/ViewAccess.h"

#include <utility>

#include "com/ComError.h"
#include "com/Variant.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

ViewField Describe(ZuDataField& field) {
    technologies::FieldDescription description;
    description.name = text::ToUtf8(com::AsUtf16(NameOf(field).view()));
    LONG type = 0;
    LONG size = 0;
    LONG decimals = 0;
    LONG width = 0;
    LONG alignment = 0;
    VARIANT_BOOL nullable = VARIANT_FALSE;
    com::Check(field.get_Type(&type));
    com::Check(field.get_Size(&size));
    com::Check(field.get_Decimals(&decimals));
    com::Check(field.get_DisplayWidth(&width));
    com::Check(field.get_Alignment(&alignment));
    if (FAILED(field.get_Nullable(&nullable))) nullable = VARIANT_FALSE;
    description.type = static_cast<technologies::FieldType>(type);
    description.size = size;
    description.decimals = decimals;
    description.displayWidth = width;
    description.rightAligned = alignment == 1;
    description.nullable = nullable != VARIANT_FALSE;
    return ViewField(std::move(description));
}

}  // namespace

com::ComPtr<ZuDataFields> FieldsOf(ZuDataView& view) {
    com::ComPtr<ZuDataFields> fields;
    com::Check(view.get_Fields(fields.put()));
    com::Required(fields.get());
    return fields;
}

LONG CountOf(ZuDataFields& fields) {
    LONG count = 0;
    com::Check(fields.get_Count(&count));
    return count;
}

com::ComPtr<ZuDataField> FieldOf(ZuDataFields& fields, LONG number) {
    com::ComPtr<ZuDataField> field;
    com::Check(fields.get_Item(com::Variant(number), field.put()));
    com::Required(field.get());
    return field;
}

com::Bstr NameOf(ZuDataField& field) {
    com::Bstr name;
    com::Check(field.get_Name(name.put()));
    return name;
}

ViewFields DescribeFields(ZuDataView& view) {
    const com::ComPtr<ZuDataFields> fields = FieldsOf(view);
    ViewFields described;
    const LONG count = CountOf(*fields);
    for (LONG i = 0; i < count; ++i)
        described.push_back(Describe(*FieldOf(*fields, i)));
    return described;
}

}  // namespace zu::host
