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

}  // namespace zu::fake
