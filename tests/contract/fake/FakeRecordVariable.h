#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataView.h"
#include "tests/contract/fake/uncalled/UncalledRecordVariable.h"

namespace zu::fake {

/// A record variable: a view too, once it is initialised.
class FakeRecordVariable final : public FakeObject<UncalledRecordVariable, UncalledDataView> {
public:
    FakeRecordVariable() : FakeObject("record variable") {}

    STDMETHODIMP Initialise(IDispatch* layout, LONG records, VARIANT_BOOL* result) override;
    STDMETHODIMP Reset() override;

private:
    bool Answers(REFIID id) override { return initialised_ || id != __uuidof(ZuDataView); }

    bool initialised_ = false;
};

}  // namespace zu::fake
