#pragma once

#include <vector>

#include "com/Object.h"
#include "com/Variant.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// The fields of an index that is to be made: names, expressions or field numbers, each with its direction.
class DataFieldList final : public com::DualObject<DataFieldList, ::DataFieldList> {
public:
    HRESULT STDMETHODCALLTYPE Add(VARIANT Field, VARIANT_BOOL Descending) noexcept override;
    HRESULT STDMETHODCALLTYPE Count(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Item(LONG Index, VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Descending(LONG Index, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Clear() noexcept override;

private:
    struct Entry {
        com::Variant field;
        bool descending;
    };
    const Entry& At(LONG index) const;

    std::vector<Entry> entries_;
};

}  // namespace zu::host
