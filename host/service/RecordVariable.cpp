#include "host/service/RecordVariable.h"

#include <algorithm>
#include <utility>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "host/service/DataView.h"
#include "host/service/ViewAccess.h"

namespace zu::host {
namespace {

constexpr wchar_t kTableName[] = L"(record variable)";

std::shared_ptr<VariableRecords> NoRecords() {
    return std::make_shared<VariableRecords>(kTableName, ViewFields(), 0);
}

/// A variable can hold Null in every field.
ViewFields FieldsForVariable(ZuDataView& layout) {
    ViewFields fields = DescribeFields(layout);
    for (ViewField& field : fields)
        field.description.nullable = true;
    return fields;
}

/// The table that a variable is like shows in what is told of its fields.
std::wstring NameAfter(ZuDataView& layout) {
    com::Bstr table;
    if (FAILED(layout.get_TableName(table.put())) || table.empty()) return kTableName;
    return table.str() + L" " + kTableName;
}

}  // namespace

RecordVariable::RecordVariable() : ViewMembers(std::make_shared<ViewCursor>(NoRecords())) {}

HRESULT RecordVariable::get_Initialised(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(variable_ != nullptr); });
}

HRESULT RecordVariable::get_Layout(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&] {
        return MakeView(std::make_shared<VariableRecords>(kTableName, cursor()->fields(), 0)).detach();
    });
}

HRESULT RecordVariable::get_Records(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return cursor()->Count(); });
}

HRESULT RecordVariable::get_FieldValue(VARIANT Index, VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return cursor()->Read(cursor()->Locate(Index)).detach(); });
}

HRESULT RecordVariable::put_FieldValue(VARIANT Index, VARIANT Value) noexcept {
    return Guarded([&] { cursor()->Write(cursor()->Locate(Index), Value); });
}

HRESULT RecordVariable::Assign(IDispatch* Values, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] {
        const com::ComPtr<ZuDataView> view = com::Share(Values).as<ZuDataView>();
        const com::ComPtr<ZuDataFields> source = FieldsOf(*view);
        bool assigned = false;
        const LONG count = CountOf(*source);
        for (LONG i = 0; i < count; ++i) {
            const com::ComPtr<ZuDataField> field = FieldOf(*source, i);
            const std::size_t target = FindField(cursor()->fields(), NameOf(*field).view());
            if (target == kNoField) continue;
            com::Variant value;
            com::Check(field->get_Value(value.put()));
            cursor()->Write(target, value);
            assigned = true;
        }
        return com::ToVariantBool(assigned);
    });
}

HRESULT RecordVariable::Initialise(IDispatch* Layout, LONG Records, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] {
        const com::ComPtr<ZuDataView> layout = com::Share(Layout).as<ZuDataView>();
        if (Records < 1 || Records > kMostRecords) return VARIANT_FALSE;
        auto records = std::make_shared<VariableRecords>(NameAfter(*layout), FieldsForVariable(*layout),
                                                         static_cast<std::size_t>(Records));
        Show(std::make_shared<ViewCursor>(records));
        variable_ = std::move(records);
        return VARIANT_TRUE;
    });
}

HRESULT RecordVariable::Reset() noexcept {
    return Guarded([&] {
        if (variable_) variable_->Reset();
        cursor()->MoveFirst();
    });
}

}  // namespace zu::host
