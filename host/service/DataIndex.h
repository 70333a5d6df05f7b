#pragma once

#include <memory>

#include "com/Object.h"
#include "com/Recycled.h"
#include "host/service/IndexKey.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// An index of an open table with a key of its own to load: each object that a table hands out starts with a
/// key that is not loaded.
class DataIndex final : public com::DualObject<DataIndex, ::DataIndex>, public com::Recycled<DataIndex> {
public:
    explicit DataIndex(std::shared_ptr<IndexKey> key) : key_(std::move(key)) {}

    /// The key behind an index object of this engine; null for any other object.
    static std::shared_ptr<IndexKey> KeyOf(::DataIndex* index);

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Expression(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Filter(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Unique(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Descending(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE KeyFields(::DataKeyFields** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Usable(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Reason(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Candidate(VARIANT_BOOL* Result) noexcept override;

protected:
    HRESULT QueryMore(REFIID iid, void** object) noexcept override;

private:
    std::shared_ptr<IndexKey> key_;
};

}  // namespace zu::host
