#include "host/service/DescendingValue.h"

#include "com/ComError.h"
#include "host/engine/DefaultValue.h"
#include "host/service/ValueConversion.h"

namespace zu::host {
namespace {

using technologies::FieldType;
using technologies::Value;

/// The field type whose values are of the VARIANT's own type.
FieldType TypeOfContent(const VARIANT& content) {
    switch (content.vt) {
        case VT_BSTR:
            return FieldType::Text;
        case VT_BOOL:
            return FieldType::Boolean;
        case VT_DATE:
            return FieldType::Date;
        case VT_CY:
            return FieldType::Currency;
        case VT_DECIMAL:
            return FieldType::Decimal;
        case VT_I1:
        case VT_I2:
        case VT_I4:
        case VT_INT:
        case VT_UI1:
        case VT_UI2:
            return FieldType::Integer32;
        case VT_I8:
        case VT_UI4:
        case VT_UI8:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
            return FieldType::Double;
        default:
            throw com::ComError(com::kTypeMismatch, L"A value of this type has no descending form");
    }
}

FieldType TypeOfResult(const Value& value) noexcept {
    return value.kind == Value::Kind::Integer ? FieldType::Integer32 : FieldType::Double;
}

}  // namespace

com::Variant DescendingValue(const VARIANT& value, technologies::Technology& technology) {
    com::Variant content(value);
    if (content.type() == VT_DISPATCH || content.type() == VT_UNKNOWN) content = DefaultValue(content);
    if (content.type() == VT_EMPTY || content.type() == VT_NULL || com::IsMissing(content)) return content;
    Value plain;
    if (content.type() == VT_BSTR) {
        // A blank text is a value here, not the absence of one.
        plain.kind = Value::Kind::Text;
        plain.text = com::AsUtf16(*com::TextOf(content));
    } else {
        plain = FromVariant(content, TypeOfContent(content));
    }
    const Value descending = technology.Descend(plain);
    return ToVariant(descending, TypeOfResult(descending));
}

}  // namespace zu::host
