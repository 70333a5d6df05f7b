#pragma once

#include <map>
#include <memory>

#include "com/Object.h"
#include "com/Recycled.h"
#include "host/service/DataField.h"
#include "host/service/ViewCursor.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::host {

/// The fields of a view. Each field object is made once and handed out again.
class DataFields final : public com::DualObject<DataFields, ZuDataFields>, public com::Recycled<DataFields> {
public:
    explicit DataFields(std::shared_ptr<ViewCursor> cursor) : cursor_(std::move(cursor)) {}

    /// The field that `index` names or numbers. Throws like ViewCursor::Locate.
    const com::ComPtr<DataField>& Get(const VARIANT& index) { return At(cursor_->Locate(index)); }

    HRESULT STDMETHODCALLTYPE get_Item(VARIANT Index, ZuDataField** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Count(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Exists(BSTR Name, VARIANT_BOOL* Result) noexcept override;

private:
    const com::ComPtr<DataField>& At(std::size_t field);

    std::shared_ptr<ViewCursor> cursor_;
    std::map<std::size_t, com::ComPtr<DataField>> fields_;
};

}  // namespace zu::host
