#pragma once

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDataViewInterface.h"
#include "idl/Zuengine.h"

namespace zu::component {

/// How many records a selection yields, for which purpose, and with which fields. Everything here is handed
/// to the database service as it is.
struct SelectionLimits {
    LONG maxRecords = 0;  ///< 0: no limit
    LONG flag = 0;        ///< not 0: for update
    /// Which fields the view carries; missing for all.
    com::Variant fieldNames = com::Variant::Missing();
};

/// One open table: its two names and the table object of the database service. Closed when it goes out of
/// scope. Members that answer a Boolean trap errors; those that answer a view let a ComError through.
class TableReference {
public:
    const com::Bstr& DataBaseName() const noexcept { return dataBaseName_; }
    void SetDataBaseName(com::Bstr name) noexcept { dataBaseName_ = std::move(name); }
    const com::Bstr& TableName() const noexcept { return tableName_; }
    void SetTableName(com::Bstr name) noexcept { tableName_ = std::move(name); }

    /// Takes the two names from a definition; False leaves them as they were.
    bool SetDefinition(const VARIANT& tableDefn) noexcept;
    /// Opens the table of the definition, or, when it is missing, of the names held already. A definition
    /// that cannot be parsed keeps the table that is open.
    bool Open(const VARIANT& tableDefn) noexcept;
    void CloseTable() noexcept { table_.reset(); }

    /// The open table, or null.
    const com::ComPtr<DataTable>& Table() const noexcept { return table_; }
    /// The table's open index, or null.
    com::ComPtr<DataIndex> CurrentIndex() const;

    /// Opens an index by its name; an empty name is the table's default index. The service may change the
    /// text.
    bool OpenIndex(BSTR* indexName) const noexcept;
    bool OpenDefaultIndex() const noexcept;

    /// The records that meet a condition; null while closed. The condition goes to the service as it is.
    com::ComPtr<ZuDataView> FilterFlagged(const VARIANT& condition, const SelectionLimits& limits) const;
    /// The records under a key of the open index; null while closed. Without an open index the key is
    /// ignored. The key is one value for the first key field, with `exact` for its exactness, or an array
    /// that alternates the values and the exactness of the key fields in turn.
    com::ComPtr<ZuDataView> LookupFlagged(const VARIANT& key, const VARIANT& exact,
                                          const SelectionLimits& limits) const;

    /// An empty view with the fields of the table; null while closed.
    com::ComPtr<IDispatch> Layout() const;

    /// The two operations behind the copy to a new table. Each parses `tableDefn` first when it is given, and
    /// answers False when that fails. `layout` is the view whose fields the new table gets, `index` the
    /// fields of its index or null.
    bool CreateTable(const VARIANT& tableDefn, IDispatch* layout, DataFieldList* index);
    bool DropTable(const VARIANT& tableDefn);

private:
    com::Bstr dataBaseName_;
    com::Bstr tableName_;
    com::ComPtr<DataTable> table_;
};

}  // namespace zu::component
