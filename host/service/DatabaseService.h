#pragma once

#include "com/Object.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// Opens tables by their names and looks after them. Holds nothing: making one for a call costs next to
/// nothing.
class DatabaseService final : public com::DualObject<DatabaseService, ZuDatabaseService> {
public:
    HRESULT STDMETHODCALLTYPE Technologies(VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE TableNames(BSTR Database, VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE TableExists(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE CloseTables() noexcept override;
    HRESULT STDMETHODCALLTYPE OpenTable(BSTR* Database, BSTR* Table, IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Descend(VARIANT Value, BSTR Technology, VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Pack(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Undelete(BSTR Database, BSTR Table, BSTR Condition,
                                       VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE CreateTable(BSTR* Database, BSTR* Table, IDispatch* Layout,
                                          ::DataFieldList* Index, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DropTable(BSTR* Database, BSTR* Table, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE NewFieldList(::DataFieldList** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE CreateIndex(BSTR Database, BSTR Table, ::DataFieldList* Fields,
                                          VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DropIndex(BSTR Database, BSTR Table, BSTR Name,
                                        VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Reindex(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Zap(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Check(BSTR Database, BSTR Table, VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE Repair(BSTR Database, BSTR Table, VARIANT_BOOL* Result) noexcept override;
};

}  // namespace zu::host
