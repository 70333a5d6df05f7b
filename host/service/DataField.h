#pragma once

#include <memory>

#include "com/Object.h"
#include "com/Recycled.h"
#include "host/service/ViewCursor.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::host {

/// One field of a view. It reads and writes whatever record of the view is current when it is asked, and
/// works on after its view object is gone.
class DataField final : public com::DualObject<DataField, ZuDataField>, public com::Recycled<DataField> {
public:
    DataField(std::shared_ptr<ViewCursor> cursor, std::size_t field)
        : cursor_(std::move(cursor)), field_(field) {}

    /// Scripts get decimals as doubles where that loses nothing; vtable callers get them as they are.
    static void adjustDispatchResult(VARIANT& result) noexcept;

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_Value(VARIANT Value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Index(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Type(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_TypeName(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_DisplayWidth(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_ReadOnly(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Decimals(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Nullable(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_IsNull(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_OriginalValue(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Text(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Size(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Alignment(LONG* Result) noexcept override;

private:
    const ViewField& Field() const { return cursor_->Field(field_); }

    std::shared_ptr<ViewCursor> cursor_;
    std::size_t field_;
};

}  // namespace zu::host
