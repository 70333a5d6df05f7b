#include "component/engine/EngineData.h"

#include "com/ComError.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Required;

bool EngineData::ToBoolean(const VARIANT& value) const {
    VARIANT_BOOL result = VARIANT_FALSE;
    Check(Required(engine_.get())->ToBoolean(value, &result));
    return result != VARIANT_FALSE;
}

com::Bstr EngineData::DefaultTechnology() const {
    com::Bstr technology;
    Check(Required(engine_.get())->DefaultTechnology(technology.put()));
    return technology;
}

ComPtr<ZuDatabaseService> EngineData::DatabaseService() const {
    ComPtr<IDispatch> service;
    Check(Required(engine_.get())->DatabaseService(service.put()));
    return service.as<ZuDatabaseService>();
}

LONG EngineData::DecimalPlaces(LONG type) const {
    LONG places = 0;
    Check(Required(engine_.get())->DecimalPlaces(type, &places));
    return places;
}

ComPtr<ZuRecordVariable> EngineData::NewRecordVariable() const {
    ComPtr<IDispatch> variable;
    Check(Required(engine_.get())->NewRecordVariable(variable.put()));
    return variable.as<ZuRecordVariable>();
}

void EngineData::RecordAdded(IDispatch* values) const {
    Check(Required(engine_.get())->RecordAdded(values));
}

}  // namespace zu::component
