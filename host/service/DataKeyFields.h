#pragma once

#include <memory>

#include "com/Object.h"
#include "com/Recycled.h"
#include "host/service/IndexKey.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// The parts of the key of an index, in key order.
class DataKeyFields final : public com::DualObject<DataKeyFields, ::DataKeyFields>,
                            public com::Recycled<DataKeyFields> {
public:
    explicit DataKeyFields(std::shared_ptr<IndexKey> key) : key_(std::move(key)) {}

    HRESULT STDMETHODCALLTYPE Item(VARIANT Index, ::DataKeyField** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Count(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** Result) noexcept override;

private:
    std::shared_ptr<IndexKey> key_;
};

}  // namespace zu::host
