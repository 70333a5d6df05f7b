#include "tests/contract/fake/FakeDatabaseService.h"

#include "tests/contract/fake/FakeTable.h"

namespace zu::fake {

STDMETHODIMP FakeDatabaseService::OpenTable(BSTR* database, BSTR* table, IDispatch** result) {
    return Answer("ZuDatabaseService.OpenTable", ShowAll(database, table), result,
                  []() -> IDispatch* { return Scene().opensTable ? Make<FakeTable>().detach() : nullptr; });
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

STDMETHODIMP FakeDatabaseService::DropTable(BSTR* database, BSTR* table, VARIANT_BOOL* result) {
    return Answer("ZuDatabaseService.DropTable", ShowAll(database, table), result,
                  [] { return com::ToVariantBool(Scene().answers); });
}

}  // namespace zu::fake
