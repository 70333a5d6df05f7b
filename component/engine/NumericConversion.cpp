#include "component/engine/NumericConversion.h"

#include "com/Variant.h"

namespace zu::component {

namespace {

bool IsBlankText(const VARIANT& value) {
    const auto text = com::TextOf(value);
    return text && text->find_first_not_of(L' ') == std::wstring_view::npos;
}

com::Variant Number(const VARIANT& value, VARTYPE type) {
    return com::Convert(IsBlankText(value) ? com::Variant(LONG{0}) : com::Variant(value), type);
}

}  // namespace

double ToDouble(const VARIANT& value) {
    return Number(value, VT_R8)->dblVal;
}
float ToSingle(const VARIANT& value) {
    return Number(value, VT_R4)->fltVal;
}
LONG ToLong(const VARIANT& value) {
    return Number(value, VT_I4)->lVal;
}
SHORT ToInteger(const VARIANT& value) {
    return Number(value, VT_I2)->iVal;
}
CY ToCurrency(const VARIANT& value) {
    return Number(value, VT_CY)->cyVal;
}

DECIMAL ToDecimal(const VARIANT& value) {
    DECIMAL result = Number(value, VT_DECIMAL)->decVal;
    result.wReserved = 0;  // shares its bytes with the VARIANT's type
    return result;
}

}  // namespace zu::component
