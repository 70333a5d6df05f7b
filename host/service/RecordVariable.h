#pragma once

#include <memory>

#include "host/service/VariableRecords.h"
#include "host/service/ViewMembers.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// Records outside a table. Until it is initialised it is a view without fields and records.
class RecordVariable final
    : public ViewMembers<com::DualObject<RecordVariable, ZuDataView, ZuRecordVariable>> {
public:
    /// The most records that Initialise accepts.
    static constexpr LONG kMostRecords = 10'000;

    RecordVariable();

    HRESULT STDMETHODCALLTYPE get_Initialised(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Layout(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Records(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_FieldValue(VARIANT Index, VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_FieldValue(VARIANT Index, VARIANT Value) noexcept override;
    HRESULT STDMETHODCALLTYPE Assign(IDispatch* Values, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Initialise(IDispatch* Layout, LONG Records,
                                         VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;

private:
    std::shared_ptr<VariableRecords> variable_;
};

}  // namespace zu::host
