#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataTable.h"

namespace zu::fake {

/// A table that yields as many records as the scenario says, whatever it is asked for.
class FakeTable final : public FakeObject<UncalledDataTable> {
public:
    explicit FakeTable(std::wstring name) : FakeObject("table"), name_(std::move(name)) {}

    STDMETHODIMP Layout(IDispatch** result) override;
    STDMETHODIMP OpenIndex(BSTR* name, VARIANT_BOOL* result) override;
    STDMETHODIMP CurrentIndex(LONG reserved, DataIndex** result) override;
    STDMETHODIMP Seek(DataIndex* index, LONG reserved, LONG maxRecords, LONG flag, VARIANT fieldNames,
                      IDispatch** result) override;
    STDMETHODIMP Select(VARIANT condition, VARIANT maxRecords, LONG flag, VARIANT fieldNames,
                        IDispatch** result) override;

private:
    IDispatch* Selection(LONG maxRecords, bool any = true) const;

    std::wstring name_;
    bool indexOpen_ = false;
};

}  // namespace zu::fake
