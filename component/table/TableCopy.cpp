#include "component/table/TableCopy.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/WatchedJob.h"
#include "component/table/DataView.h"
#include "component/table/GatheredRows.h"
#include "component/table/RunCopy.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Required;
using com::Variant;

bool TableCopy::SelectSource(const VARIANT& tableDefn, const VARIANT& condition,
                             const SelectionLimits& limits) {
    if (!source_.Open(tableDefn)) return false;
    sourceHasIndex_ = source_.OpenDefaultIndex();
    from_ = source_.FilterFlagged(condition, limits);
    return static_cast<bool>(from_);
}

ComPtr<DataFieldList> TableCopy::SourceIndexFields() const {
    if (!sourceHasIndex_) return nullptr;
    const ComPtr<DataIndex> index = source_.CurrentIndex();
    if (!index) return nullptr;
    ComPtr<DataFieldList> list;
    Check(Engine().data().DatabaseService()->NewFieldList(list.put()));
    Required(list.get());
    ComPtr<DataKeyFields> fields;
    Check(index->KeyFields(fields.put()));
    LONG count = 0;
    Check(Required(fields.get())->Count(&count));
    for (LONG position = 0; position < count; ++position) {
        ComPtr<DataKeyField> field;
        Check(fields->Item(Variant(position), field.put()));
        com::Bstr name;
        VARIANT_BOOL descending = VARIANT_FALSE;
        Check(Required(field.get())->get_Name(name.put()));
        Check(field->get_Descending(&descending));
        Check(list->Add(Variant(name.view()), descending));
    }
    return list;
}

bool TableCopy::CreateDestination(const VARIANT& tableDefn) {
    destination_.DropTable(tableDefn);
    const ComPtr<DataFieldList> index = SourceIndexFields();
    return destination_.CreateTable(tableDefn, from_.get(), index.get());
}

bool TableCopy::OpenDestination(const VARIANT& tableDefn, const Variant& fieldNames) {
    if (!destination_.Open(tableDefn)) return false;
    destination_.OpenDefaultIndex();
    to_ = destination_.FilterFlagged(Variant::Null(), {1, 0, fieldNames});
    return true;
}

void TableCopy::CopyRows(FieldMatch match) {
    DataView source(from_);
    DataView destination(to_);
    RowCopy rows(source, destination, match);
    GatheredRows gathered(destination, outcome_);
    RunCopy runs(source, destination, match, gathered);
    const WatchedJob job(L"copy", 0);
    source.MoveFirst();
    while (runs.Next() || !source.Eof()) {
        outcome_.BeginRow();
        const bool atOnce = runs.AddRow();
        outcome_.EndRow(atOnce || rows.CopyRow());
        if (atOnce) {
            job.Passed(outcome_.rows());
        } else {
            job.Reached(outcome_.rows());
            source.MoveNext();
        }
    }
    gathered.Finish();
}

}  // namespace zu::component
