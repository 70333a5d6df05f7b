#include "runner/CallArguments.h"

#include "com/ComError.h"
#include "com/Variant.h"

namespace zu::runner {
namespace {

const VARIANT& MissingArgument() noexcept {
    static const VARIANT missing = [] {
        VARIANT value;
        VariantInit(&value);
        value.vt = VT_ERROR;
        value.scode = DISP_E_PARAMNOTFOUND;
        return value;
    }();
    return missing;
}

}  // namespace

const VARIANT& CallArguments::operator[](std::size_t index) const noexcept {
    if (index >= count()) return MissingArgument();
    return com::Dereference(parameters_.rgvarg[count() - 1 - index]);
}

bool CallArguments::Has(std::size_t index) const noexcept {
    return !com::IsMissing((*this)[index]);
}

std::wstring CallArguments::Text(std::size_t index) const {
    if (!Has(index)) throw com::ComError(DISP_E_PARAMNOTOPTIONAL);
    return com::Convert((*this)[index], VT_BSTR).ToText().str();
}

LONG CallArguments::Long(std::size_t index) const {
    if (!Has(index)) throw com::ComError(DISP_E_PARAMNOTOPTIONAL);
    return com::Convert((*this)[index], VT_I4).ToLong();
}

IDispatch* CallArguments::Object(std::size_t index) const {
    const VARIANT& value = (*this)[index];
    IDispatch* object = nullptr;
    if (value.vt == VT_DISPATCH) object = value.pdispVal;
    if (value.vt == (VT_DISPATCH | VT_BYREF) && value.ppdispVal) object = *value.ppdispVal;
    return com::Required(object);
}

void CallArguments::RequireCount(std::size_t least, std::size_t most) const {
    if (count() < least || count() > most) throw com::ComError(DISP_E_BADPARAMCOUNT);
}

}  // namespace zu::runner
