#include "host/engine/ExpressionValue.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "host/engine/DefaultValue.h"
#include "idl/ZuDataViewInterface.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

using expression::Result;
using expression::Type;

/// The value behind an object; fields of views are asked directly, which costs a fraction of a call by name.
com::Variant ValueOfObject(const VARIANT& value) {
    const auto field = com::ObjectOf<ZuDataField>(value);
    if (!field) return DefaultValue(value);
    com::Variant content;
    com::Check(field->get_Value(content.put()));
    return content;
}

bool IsObject(VARTYPE type) noexcept {
    const auto content = static_cast<VARTYPE>(type & ~VT_BYREF);
    return content == VT_DISPATCH || content == VT_UNKNOWN;
}

void SetContent(const VARIANT& content, Result& out) {
    switch (content.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return;
        case VT_BOOL:
            out.type = Type::Boolean;
            out.boolean = content.boolVal != VARIANT_FALSE;
            break;
        case VT_BSTR:
            out.type = Type::Text;
            out.text = text::ToUtf8(com::AsUtf16(com::View(content.bstrVal)));
            break;
        case VT_DATE:
            calendar::FromAutomationDate(content.date, out.julianDay, out.milliseconds);
            out.type = out.milliseconds ? Type::DateTime : Type::Date;
            break;
        default:
            // Numbers of every kind; all else is refused by the conversion.
            if (content.vt == VT_ERROR) throw com::ComError(com::kTypeMismatch, L"Type mismatch");
            out.type = Type::Number;
            out.number = com::Convert(content, VT_R8)->dblVal;
            break;
    }
    out.isNull = false;
}

}  // namespace

void ToExpressionValue(const VARIANT& value, Result& out) {
    out = Result{};
    const VARIANT& content = com::Dereference(value);
    if (IsObject(content.vt)) {
        SetContent(ValueOfObject(content), out);
    } else if (content.vt & VT_BYREF) {
        SetContent(com::Variant(content), out);
    } else {
        SetContent(content, out);
    }
}

com::Variant FromExpressionValue(const Result& result) {
    if (result.isNull) return com::Variant::Null();
    switch (result.type) {
        case Type::Boolean:
            return com::Variant(result.boolean);
        case Type::Number:
            return com::Variant(result.number);
        case Type::Text:
            return com::Variant(com::AsWide(text::ToUtf16(result.text)));
        case Type::Date:
        case Type::DateTime: {
            VARIANT date;
            VariantInit(&date);
            date.vt = VT_DATE;
            date.date = calendar::ToAutomationDate(result.julianDay, result.milliseconds);
            return com::Variant::Adopt(date);
        }
        case Type::Unknown:
            break;
    }
    return com::Variant::Null();
}

}  // namespace zu::host
