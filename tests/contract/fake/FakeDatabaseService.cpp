#include "tests/contract/fake/FakeDatabaseService.h"

#include "tests/contract/fake/FakeTable.h"

namespace zu::fake {

STDMETHODIMP FakeDatabaseService::OpenTable(BSTR* database, BSTR* table, IDispatch** result) {
    return Answer("ZuDatabaseService.OpenTable", ShowAll(database, table), result, [&]() -> IDispatch* {
        const std::wstring name(com::View(*table));
        const bool opens = Scene().opensTable && (name.empty() || name != Scene().unopenable);
        return opens ? Make<FakeTable>(name).detach() : nullptr;
    });
}

STDMETHODIMP FakeDatabaseService::Descend(VARIANT value, BSTR technology, VARIANT* result) {
    return Answer("ZuDatabaseService.Descend", ShowAll(value, technology), result,
                  [] { return com::Variant(L"descended").detach(); });
}

STDMETHODIMP FakeDatabaseService::CreateTable(BSTR* database, BSTR* table, IDispatch* layout,
                                              DataFieldList* index, VARIANT_BOOL* result) {
    return Answer("ZuDatabaseService.CreateTable", ShowAll(database, table, layout, index), result,
                  [] { return com::ToVariantBool(Scene().answers); });
}

STDMETHODIMP FakeFieldList::Add(VARIANT field, VARIANT_BOOL descending) {
    return Do("DataFieldList.Add", ShowAll(field, descending), [] {});
}

STDMETHODIMP FakeDatabaseService::Pack(BSTR database, BSTR table, VARIANT_BOOL* result) {
    return Answer("ZuDatabaseService.Pack", ShowAll(database, table), result,
                  [] { return com::ToVariantBool(Scene().answers); });
}

STDMETHODIMP FakeDatabaseService::Undelete(BSTR database, BSTR table, BSTR condition, VARIANT_BOOL* result) {
    return Answer("ZuDatabaseService.Undelete", ShowAll(database, table, condition), result,
                  [] { return com::ToVariantBool(Scene().answers); });
}

STDMETHODIMP FakeDatabaseService::NewFieldList(DataFieldList** result) {
    return Answer("ZuDatabaseService.NewFieldList", "", result,
                  []() -> DataFieldList* { return Make<FakeFieldList>().detach(); });
}

STDMETHODIMP FakeDatabaseService::CreateIndex(BSTR database, BSTR table, DataFieldList* fields,
                                              VARIANT_BOOL* result) {
    return Answer("ZuDatabaseService.CreateIndex", ShowAll(database, table, fields), result,
                  [] { return com::ToVariantBool(Scene().answers); });
}

STDMETHODIMP FakeDatabaseService::DropTable(BSTR* database, BSTR* table, VARIANT_BOOL* result) {
    return Answer("ZuDatabaseService.DropTable", ShowAll(database, table), result,
                  [] { return com::ToVariantBool(Scene().answers); });
}

}  // namespace zu::fake
