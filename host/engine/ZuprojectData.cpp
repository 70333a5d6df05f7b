// The data half of the engine object: conversions, record variables, the database service.
#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "host/engine/EngineState.h"
#include "host/engine/Reporting.h"
#include "host/engine/SettingsStore.h"
#include "host/engine/TruthValue.h"
#include "host/engine/Zuproject.h"
#include "host/service/RecordVariable.h"
#include "host/service/ValueConversion.h"

namespace zu::host {
namespace {

using technologies::FieldType;
using technologies::Value;

/// The value as a field of `type` would take it; nothing for Null, Empty and blank text.
com::Variant Converted(const VARIANT& value, FieldType type) {
    const Value converted = FromVariant(value, type);
    return converted.kind == Value::Kind::Null ? com::Variant() : ToVariant(converted, type);
}

bool IsBlankValue(const VARIANT& value) {
    const VARIANT& content = com::Dereference(value);
    if (content.vt == VT_EMPTY || content.vt == VT_NULL || com::IsMissing(content)) return true;
    const auto text = com::TextOf(content);
    return text && text->find_first_not_of(L" \t\r\n") == std::wstring_view::npos;
}

}  // namespace

HRESULT Zuproject::ToBoolean(VARIANT Value, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(ToTruthValue(Value)); });
}

HRESULT Zuproject::ToText(VARIANT Value, BSTR* Result) noexcept {
    return GuardedResult(Result,
                         [&] { return com::NewBstr(com::AsWide(FromVariant(Value, FieldType::Text).text)); });
}

HRESULT Zuproject::ToLong(VARIANT Value, LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return Converted(Value, FieldType::Integer32).ToLong(); });
}

HRESULT Zuproject::ToDouble(VARIANT Value, double* Result) noexcept {
    return GuardedResult(Result, [&] { return Converted(Value, FieldType::Double).ToDouble(); });
}

HRESULT Zuproject::ToDate(VARIANT Value, DATE* Result) noexcept {
    return GuardedResult(Result, [&] { return Converted(Value, FieldType::Date).ToDouble(); });
}

HRESULT Zuproject::ToCurrency(VARIANT Value, CURRENCY* Result) noexcept {
    return GuardedResult(
        Result, [&] { return com::Convert(Converted(Value, FieldType::Currency), VT_CY).get().cyVal; });
}

HRESULT Zuproject::IsBlank(VARIANT Value, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(IsBlankValue(Value)); });
}

HRESULT Zuproject::NewRecordVariable(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&]() -> IDispatch* {
        return static_cast<ZuDataView*>(com::MakeObject<RecordVariable>().detach());
    });
}

HRESULT Zuproject::DecimalPlaces(LONG TypeCode, LONG* Result) noexcept {
    return GuardedResult(Result, [&] {
        const Settings settings = SettingsStore::Instance().Get();
        if (TypeCode == static_cast<LONG>(FieldType::Single))
            return static_cast<LONG>(settings.singleDecimals);
        if (TypeCode == static_cast<LONG>(FieldType::Double))
            return static_cast<LONG>(settings.doubleDecimals);
        return LONG{0};
    });
}

HRESULT Zuproject::DefaultTechnology(BSTR* Result) noexcept {
    return GuardedResult(Result,
                         [&] { return com::NewBstr(SettingsStore::Instance().Get().defaultTechnology); });
}

HRESULT Zuproject::RecordAdded(IDispatch* Values) noexcept {
    return Guarded([&] {
        com::Share(Values).as<ZuDataView>();
        EngineState::Current().messages.Trace(L"record added");
    });
}

}  // namespace zu::host
