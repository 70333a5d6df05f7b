#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDatabaseService.h"

namespace zu::fake {

class FakeDatabaseService final : public FakeObject<UncalledDatabaseService> {
public:
    FakeDatabaseService() : FakeObject("service") {}

    STDMETHODIMP OpenTable(BSTR* database, BSTR* table, IDispatch** result) override;
    STDMETHODIMP Descend(VARIANT value, BSTR technology, VARIANT* result) override;
    STDMETHODIMP CreateTable(BSTR* database, BSTR* table, IDispatch* layout, DataFieldList* index,
                             VARIANT_BOOL* result) override;
    STDMETHODIMP DropTable(BSTR* database, BSTR* table, VARIANT_BOOL* result) override;
};

}  // namespace zu::fake
