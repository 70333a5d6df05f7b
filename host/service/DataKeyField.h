#pragma once

#include <memory>

#include "com/Object.h"
#include "com/Recycled.h"
#include "host/service/IndexKey.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// One part of the key of an index, loaded with the value to seek.
class DataKeyField final : public com::DualObject<DataKeyField, ::DataKeyField>,
                           public com::Recycled<DataKeyField> {
public:
    DataKeyField(std::shared_ptr<IndexKey> key, std::size_t part) : key_(std::move(key)), part_(part) {}

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_Value(VARIANT Value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Type(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Descending(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Exact(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_Exact(VARIANT_BOOL Value) noexcept override;

private:
    std::shared_ptr<IndexKey> key_;
    std::size_t part_;
};

}  // namespace zu::host
