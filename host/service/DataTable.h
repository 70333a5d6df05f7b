#pragma once

#include <memory>
#include <optional>

#include "com/Object.h"
#include "com/Recycled.h"
#include "host/service/OpenTable.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// An open table, with at most one index open. The views that it hands out keep the table open by themselves.
class DataTable final : public com::DualObject<DataTable, ::DataTable>, public com::Recycled<DataTable> {
public:
    explicit DataTable(std::shared_ptr<OpenTable> table);

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Layout(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE OpenIndex(BSTR* Name, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE CurrentIndex(LONG Reserved, ::DataIndex** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Seek(::DataIndex* Index, LONG Reserved, LONG MaxRecords, LONG Flag,
                                   VARIANT FieldNames, IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_RecordCount(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE IndexNames(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Select(VARIANT Condition, VARIANT MaxRecords, LONG Flag, VARIANT FieldNames,
                                     IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Index(VARIANT Index, ::DataIndex** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Updateable(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Warnings(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Facts(VARIANT* Result) noexcept override;

private:
    IDispatch* ViewOf(const VARIANT& fieldNames, std::vector<std::uint32_t> records, LONG flag) const;
    ::DataIndex* IndexObject(std::size_t index) const;
    std::size_t LocateIndex(const VARIANT& index) const;

    std::shared_ptr<OpenTable> open_;
    std::shared_ptr<technologies::Table> table_;  ///< of open_
    bool showDeleted_;
    std::optional<std::size_t> openIndex_;
};

}  // namespace zu::host
