#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/OptionalArgument.h"

namespace zu::component {

using com::Bstr;
using com::Check;
using com::Variant;

namespace {

/// Type code of the data views for long text.
constexpr LONG kLongText = 100;

Variant Zero(VARTYPE type) {
    VARIANT zero{};
    zero.vt = type;
    return Variant::Adopt(zero);
}

/// What stands for Null in a field of this type; Null stays Null for any type not named here.
Variant EmptyDefault(LONG fieldType) {
    switch (fieldType) {
        case VT_I2:
        case VT_I4:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DATE:  // the date whose serial number is 0
        case VT_BOOL:
        case VT_DECIMAL:
        case VT_UI1:
            return Zero(static_cast<VARTYPE>(fieldType));
        case VT_BSTR:
        case kLongText:
            return Variant(L"");
        case VT_DISPATCH:
        case VT_ERROR:
            return Variant(static_cast<IDispatch*>(nullptr));
        default:
            return Variant::Null();
    }
}

}  // namespace

STDMETHODIMP Functions::DbfFieldValue(ZuDataField** Field, VARIANT* Result) {
    return Trapped(Result, [&] {
        if (!Field || !*Field)
            throw com::ComError(
                com::kObjectNotSet,
                L"DbfFieldValue takes a field of a view, such as view(\"NAME\"); there is none");
        ZuDataField& field = **Field;
        Variant value;
        Check(field.get_Value(value.put()));
        if (com::Dereference(value).vt != VT_NULL) return value;
        LONG type = VT_EMPTY;
        Check(field.get_Type(&type));
        return EmptyDefault(type);
    });
}

STDMETHODIMP Functions::Descend(VARIANT* Value, BSTR* Technology, VARIANT* Result) {
    return Trapped(Result, [&] {
        const EngineData& engine = Engine().data();
        const bool given = Technology && *Technology;
        const Bstr technology = given ? Bstr(com::View(*Technology)) : engine.DefaultTechnology();
        Variant descended;
        Check(engine.DatabaseService()->Descend(Given(Value), technology.get(), descended.put()));
        return descended;
    });
}

}  // namespace zu::component
