#include "component/table/TableReference.h"

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/FailureReason.h"
#include "component/table/DataView.h"
#include "component/table/KeyFields.h"
#include "component/table/clsDatabaseDefn.h"

namespace zu::component {

using com::Bstr;
using com::Check;
using com::ComPtr;
using com::Variant;

namespace {

/// What the contract wants for arguments named Reserved.
constexpr LONG kReserved = 0;

/// A view as the service hands it out: no object stays no object, any other object must be a view.
ComPtr<ZuDataView> AsView(const ComPtr<IDispatch>& object) {
    return object ? object.as<ZuDataView>() : ComPtr<ZuDataView>();
}

void TellClosed() {
    TellReason(com::kObjectNotSet,
               L"The table is not open: open it with DbfOpen, and use it before its CloseTable");
}

}  // namespace

bool TableReference::SetDefinition(const VARIANT& tableDefn) noexcept {
    try {
        clsDatabaseDefn definition;
        if (!definition.Define(tableDefn)) return false;
        Bstr dataBaseName = definition.DataBaseName();
        Bstr tableName = definition.TableName();
        dataBaseName_ = std::move(dataBaseName);
        tableName_ = std::move(tableName);
        return true;
    } catch (...) {
        TellCurrentException();
        return false;
    }
}

bool TableReference::Open(const VARIANT& tableDefn) noexcept {
    if (!com::IsMissing(tableDefn) && !SetDefinition(tableDefn)) return false;
    try {
        // The service gets copies: it takes the names by reference, and this object keeps what was defined.
        Bstr dataBaseName(dataBaseName_.view());
        Bstr tableName(tableName_.view());
        ComPtr<IDispatch> table;
        Check(Engine().data().DatabaseService()->OpenTable(dataBaseName.address(), tableName.address(),
                                                           table.put()));
        table_ = table ? table.as<DataTable>() : ComPtr<DataTable>();
    } catch (...) {
        TellCurrentException();
        return false;
    }
    return static_cast<bool>(table_);
}

ComPtr<DataIndex> TableReference::CurrentIndex() const {
    ComPtr<DataIndex> index;
    Check(com::Required(table_.get())->CurrentIndex(kReserved, index.put()));
    return index;
}

bool TableReference::OpenIndex(BSTR* indexName) const noexcept {
    if (!table_) {
        TellClosed();
        return false;
    }
    try {
        VARIANT_BOOL opened = VARIANT_FALSE;
        Check(table_->OpenIndex(indexName, &opened));
        return opened != VARIANT_FALSE;
    } catch (...) {
        return false;
    }
}

bool TableReference::OpenDefaultIndex() const noexcept {
    try {
        Bstr name(L"");
        return OpenIndex(name.address());
    } catch (...) {
        return false;
    }
}

ComPtr<ZuDataView> TableReference::FilterFlagged(const VARIANT& condition,
                                                 const SelectionLimits& limits) const {
    if (!table_) {
        TellClosed();
        return nullptr;
    }
    ComPtr<IDispatch> view;
    Check(table_->Select(Variant(condition), Variant(limits.maxRecords), limits.flag, limits.fieldNames,
                         view.put()));
    return AsView(view);
}

ComPtr<ZuDataView> TableReference::LookupFlagged(const VARIANT& key, const VARIANT& exact,
                                                 const SelectionLimits& limits) const {
    if (!table_) {
        TellClosed();
        return nullptr;
    }
    const ComPtr<DataIndex> index = CurrentIndex();
    if (!index) return FilterFlagged(Variant(L""), limits);
    LoadKey(*index, com::IsMissing(key) ? Variant(L"") : Variant(key), exact);
    ComPtr<IDispatch> view;
    Check(
        table_->Seek(index.get(), kReserved, limits.maxRecords, limits.flag, limits.fieldNames, view.put()));
    return AsView(view);
}

ComPtr<IDispatch> TableReference::Layout() const {
    ComPtr<IDispatch> layout;
    if (table_) Check(table_->Layout(layout.put()));
    return layout;
}

bool TableReference::CreateTable(const VARIANT& tableDefn, IDispatch* layout, DataFieldList* index) {
    if (!com::IsMissing(tableDefn) && !SetDefinition(tableDefn)) return false;
    Bstr dataBaseName(dataBaseName_.view());
    Bstr tableName(tableName_.view());
    VARIANT_BOOL created = VARIANT_FALSE;
    Check(Engine().data().DatabaseService()->CreateTable(dataBaseName.address(), tableName.address(), layout,
                                                         index, &created));
    return created != VARIANT_FALSE;
}

bool TableReference::DropTable(const VARIANT& tableDefn) {
    if (!com::IsMissing(tableDefn) && !SetDefinition(tableDefn)) return false;
    Bstr dataBaseName(dataBaseName_.view());
    Bstr tableName(tableName_.view());
    VARIANT_BOOL dropped = VARIANT_FALSE;
    Check(
        Engine().data().DatabaseService()->DropTable(dataBaseName.address(), tableName.address(), &dropped));
    return dropped != VARIANT_FALSE;
}

}  // namespace zu::component
