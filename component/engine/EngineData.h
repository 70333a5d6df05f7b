#pragma once

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/Zuengine.h"

namespace zu::component {

/// The engine's data interface. Every operation throws a ComError: "object variable not set" while the
/// engine is missing, otherwise what the engine answered.
class EngineData {
public:
    EngineData() noexcept = default;
    explicit EngineData(com::ComPtr<ZuEngineData> engine) noexcept : engine_(std::move(engine)) {}

    /// The engine's own idea of which values are true.
    bool ToBoolean(const VARIANT& value) const;
    /// The technology of database names that carry none.
    com::Bstr DefaultTechnology() const;
    /// The service that opens tables. Never null; it is asked for in each call and released with it, so that
    /// an engine may close its databases between calls.
    com::ComPtr<ZuDatabaseService> DatabaseService() const;
    /// Decimal places that numbers of a type (4 or 5) are shown with.
    LONG DecimalPlaces(LONG type) const;
    /// A new record variable. Never null.
    com::ComPtr<ZuRecordVariable> NewRecordVariable() const;
    /// Tells the engine the values of a record that is about to be committed.
    void RecordAdded(IDispatch* values) const;

private:
    com::ComPtr<ZuEngineData> engine_;
};

}  // namespace zu::component
