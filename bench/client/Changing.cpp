#include "bench/Keys.h"
#include "bench/client/Client.h"
#include "com/ComError.h"

namespace zu::bench {
namespace {

using com::Check;
using com::ComPtr;
using com::SafeArray;
using com::Variant;

void Put(ZuDataView* view, LONG column, const Variant& value) {
    const Variant index(column);
    ComPtr<ZuDataField> field;
    Check(view->get_Item(index.get(), field.put()));
    Check(field->put_Value(value.get()));
}

}  // namespace

double Add(const Client& client, const Work& work) {
    const Variant table(work.table);
    ComPtr<ZuDataView> values;
    Check(client.functions()->DbfVarDeclare(table.get(), values.put()));
    if (!values) client.Fail("DbfVarDeclare");
    const Variant customer(L"Ada Newcomer");
    const Variant country(L"SE");
    const Variant note(L"Leave the parcel with the neighbours.");
    const Variant code(L"ABCDEFGH");
    const Variant paid(true);
    const Variant rate(1.25);
    Variant ordered;
    ordered.put()->vt = VT_DATE;
    ordered.address()->date = 45429;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        Put(values.get(), 0, Variant(static_cast<LONG>(work.records + 1 + i)));
        Put(values.get(), 1, customer);
        Put(values.get(), 2, country);
        Put(values.get(), 3, ordered);
        Put(values.get(), 4, Variant(i / 100.0));
        Put(values.get(), 5, Variant(static_cast<LONG>(i % 500)));
        Put(values.get(), 6, paid);
        Put(values.get(), 7, rate);
        Put(values.get(), 8, note);
        Put(values.get(), 9, code);
        ZuDataView* given = values.get();
        VARIANT_BOOL added = VARIANT_FALSE;
        Check(client.functions()->DbfAddNew(table.get(), &given, &added));
        if (!added) client.Fail("DbfAddNew");
    }
    return work.count;
}

double Update(const Client& client, const Work& work) {
    const Variant table(work.table);
    SafeArray change = SafeArray::Of({Variant(L"AMOUNT"), Variant(1234.56)});
    Keys keys(work.records);
    double updated = 0;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        Variant key(static_cast<LONG>(keys.Next()));
        VARIANT_BOOL done = VARIANT_FALSE;
        Check(client.functions()->DbfUpdate(table.get(), key.address(), change.address(), &done));
        // False is right too: the keys meet deleted records.
        if (done) ++updated;
    }
    return updated;
}

double Delete(const Client& client, const Work& work) {
    const Variant table(work.table);
    Keys keys(work.records);
    double deleted = 0;
    for (std::uint32_t i = 0; i < work.count; ++i) {
        Variant key(static_cast<LONG>(keys.Next()));
        LONG count = 0;
        Check(client.functions()->DbfDelete(table.get(), key.address(), VARIANT_TRUE, 1, &count));
        deleted += count;
    }
    return deleted;
}

double DeleteMany(const Client& client, const Work& work) {
    const Variant table(work.table);
    Variant condition(L"COUNTRY = 'SE'");
    LONG count = 0;
    Check(client.functions()->DbfDelete(table.get(), condition.address(), VARIANT_TRUE, 0, &count));
    return count;
}

}  // namespace zu::bench
