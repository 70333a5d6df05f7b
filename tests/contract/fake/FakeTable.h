#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataTable.h"

namespace zu::fake {

/// A table that yields as many records as the scenario says, whatever it is asked for.
class FakeTable final : public FakeObject<UncalledDataTable> {
public:
    FakeTable() : FakeObject("table") {}

    STDMETHODIMP Layout(IDispatch** result) override;
    STDMETHODIMP OpenIndex(BSTR* name, VARIANT_BOOL* result) override;
    STDMETHODIMP CurrentIndex(LONG reserved, DataIndex** result) override;
    STDMETHODIMP Seek(DataIndex* index, LONG reserved, LONG maxRecords, LONG flag, VARIANT fieldNames,
                      IDispatch** result) override;
    STDMETHODIMP Select(VARIANT condition, VARIANT maxRecords, LONG flag, VARIANT fieldNames,
                        IDispatch** result) override;

private:
    bool indexOpen_ = false;
};

}  // namespace zu::fake
