#include "com/ScriptNumber.h"

namespace zu::com {

namespace {

/// Digits that a double holds without loss.
constexpr ULONGLONG kFifteenDigits = 999'999'999'999'999ULL;

}  // namespace

void MakeUsableForScripts(VARIANT& value) noexcept {
    if (value.vt != VT_DECIMAL || value.decVal.Hi32 != 0 || value.decVal.Lo64 > kFifteenDigits) return;
    DECIMAL exact = value.decVal;
    double number = 0;
    if (FAILED(VarR8FromDec(&exact, &number))) return;
    VariantInit(&value);
    value.vt = VT_R8;
    value.dblVal = number;
}

}  // namespace zu::com
