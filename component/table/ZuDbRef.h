#pragma once

#include "com/Object.h"
#include "component/table/TableReference.h"
#include "idl/ZuDBFFunctions.h"

namespace zu::component {

/// The open table that a script holds. Its members trap every error and answer what they had reached. One
/// that a script creates itself has no table: only the component's own functions open it, through
/// reference().
class ZuDbRef final : public com::DualObject<ZuDbRef, _ZuDbRef> {
public:
    static CLSID classId() noexcept { return __uuidof(::ZuDbRef); }
    static com::DispatchOptions dispatchOptions() noexcept;

    TableReference& reference() noexcept { return reference_; }

    STDMETHODIMP OpenIndex(BSTR* Indexname, VARIANT_BOOL* Result) override;
    STDMETHODIMP CloseTable() override;
    STDMETHODIMP Filter(VARIANT Condition, LONG MaxRecords, VARIANT* FieldNames,
                        ZuDataView** Result) override;
    STDMETHODIMP Process(BSTR RoutineName, BSTR Condition, VARIANT FieldNames, LONG MaxRecords,
                         VARIANT* Argument0, VARIANT* Argument1, VARIANT* Argument2, VARIANT* Argument3,
                         VARIANT* Argument4, VARIANT* Argument5, VARIANT* Argument6, VARIANT* Argument7,
                         VARIANT* Argument8, VARIANT* Argument9, LONG* Result) override;
    STDMETHODIMP Lookup(VARIANT* IndexKeyValue, VARIANT Exact, LONG MaxRecords, VARIANT* FieldNames,
                        ZuDataView** Result) override;

private:
    TableReference reference_;
};

}  // namespace zu::component
