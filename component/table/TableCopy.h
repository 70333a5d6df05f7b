#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Variant.h"
#include "component/table/CopyOutcome.h"
#include "component/table/RowCopy.h"
#include "component/table/TableReference.h"

namespace zu::component {

/// A copy of the records of one table that meet a condition into another, record by record.
class TableCopy {
public:
    /// The outcome stays the caller's and shows what was reached whenever the copy ends.
    explicit TableCopy(CopyOutcome& outcome) noexcept : outcome_(outcome) {}

    /// Opens the source and selects its records. False: there are none to be had. Throws ComError, as all
    /// that follows does.
    bool SelectSource(const VARIANT& tableDefn, const VARIANT& condition, const SelectionLimits& limits);
    /// Makes the destination anew: the fields of the source's selection and, if the source has an index, the
    /// same index. An old table of the name is dropped. False: it was not made.
    bool CreateDestination(const VARIANT& tableDefn);
    /// Opens the destination to be added to. False: it cannot be opened.
    bool OpenDestination(const VARIANT& tableDefn, const com::Variant& fieldNames);
    /// Copies all selected records.
    void CopyRows(FieldMatch match);

private:
    com::ComPtr<DataFieldList> SourceIndexFields() const;

    CopyOutcome& outcome_;
    TableReference source_;
    TableReference destination_;
    bool sourceHasIndex_ = false;
    com::ComPtr<ZuDataView> from_;
    com::ComPtr<ZuDataView> to_;
};

}  // namespace zu::component
