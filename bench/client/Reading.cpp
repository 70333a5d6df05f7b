#include "bench/Keys.h"
#include "bench/client/Client.h"
#include "com/ComError.h"

namespace zu::bench {
namespace {

using com::Check;
using com::ComPtr;
using com::Variant;

constexpr LONG kQuantity = 5;

double CellSum(ZuDataView* view, LONG column) {
    LONG rows = 0;
    Check(view->get_RecordCount(0, &rows));
    double sum = 0;
    for (LONG row = 0; row < rows; ++row) {
        Variant value;
        Check(view->get_CellValue(row, column, value.put()));
        sum += value.ToDouble();
    }
    return sum;
}

double LookupByDefinition(const Client& client, const Work& work) {
    const Variant table(work.table);
    const Variant exact(true);
    Keys keys(work.records);
    double sum = 0;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        Variant key(static_cast<LONG>(keys.Next()));
        ComPtr<ZuDataView> view;
        Check(client.functions()->DbfLookup(table.get(), key.address(), exact.get(), nullptr, 1, view.put()));
        if (!view) client.Fail("DbfLookup");
        sum += CellSum(view.get(), kQuantity);
    }
    return sum;
}

double LookupInOpenTable(const Client& client, const Work& work) {
    const Variant definition(work.table);
    const Variant exact(true);
    ComPtr<_ZuDbRef> table;
    Check(client.functions()->DbfOpen(definition.get(), table.put()));
    VARIANT_BOOL opened = VARIANT_FALSE;
    if (table) Check(table->OpenIndex(nullptr, &opened));
    if (!opened) client.Fail("OpenIndex");
    Keys keys(work.records);
    double sum = 0;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        Variant key(static_cast<LONG>(keys.Next()));
        ComPtr<ZuDataView> view;
        Check(table->Lookup(key.address(), exact.get(), 1, nullptr, view.put()));
        if (!view) client.Fail("Lookup");
        sum += CellSum(view.get(), kQuantity);
    }
    return sum;
}

}  // namespace

double Lookup(const Client& client, const Work& work) {
    return work.variant == L"open" ? LookupInOpenTable(client, work) : LookupByDefinition(client, work);
}

double Select(const Client& client, const Work& work) {
    const Variant table(work.table);
    const com::Bstr condition(L"COUNTRY = 'SE' AND AMOUNT > 15000");
    ComPtr<ZuDataView> view;
    Check(client.functions()->DbfSelect(table.get(), condition.get(), nullptr, 0, view.put()));
    if (!view) client.Fail("DbfSelect");
    return CellSum(view.get(), kQuantity);
}

}  // namespace zu::bench
