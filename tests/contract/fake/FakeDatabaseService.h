#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataFieldList.h"
#include "tests/contract/fake/uncalled/UncalledDatabaseService.h"

namespace zu::fake {

class FakeFieldList final : public FakeObject<UncalledDataFieldList> {
public:
    FakeFieldList() : FakeObject("field list") {}

    STDMETHODIMP Add(VARIANT field, VARIANT_BOOL descending) override;
};

class FakeDatabaseService final : public FakeObject<UncalledDatabaseService> {
public:
    FakeDatabaseService() : FakeObject("service") {}

    STDMETHODIMP OpenTable(BSTR* database, BSTR* table, IDispatch** result) override;
    STDMETHODIMP Descend(VARIANT value, BSTR technology, VARIANT* result) override;
    STDMETHODIMP CreateTable(BSTR* database, BSTR* table, IDispatch* layout, DataFieldList* index,
                             VARIANT_BOOL* result) override;
    STDMETHODIMP DropTable(BSTR* database, BSTR* table, VARIANT_BOOL* result) override;
    STDMETHODIMP Pack(BSTR database, BSTR table, VARIANT_BOOL* result) override;
    STDMETHODIMP Undelete(BSTR database, BSTR table, BSTR condition, VARIANT_BOOL* result) override;
    STDMETHODIMP NewFieldList(DataFieldList** result) override;
    STDMETHODIMP CreateIndex(BSTR database, BSTR table, DataFieldList* fields, VARIANT_BOOL* result) override;
};

}  // namespace zu::fake
