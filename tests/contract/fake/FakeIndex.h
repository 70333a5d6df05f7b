#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataIndex.h"
#include "tests/contract/fake/uncalled/UncalledDataKeyField.h"
#include "tests/contract/fake/uncalled/UncalledDataKeyFields.h"

namespace zu::fake {

/// One key field; the journal shows its number.
class FakeKeyField final : public FakeObject<UncalledDataKeyField> {
public:
    explicit FakeKeyField(LONG number) : FakeObject("key field"), number_(number) {}

    STDMETHODIMP put_Value(VARIANT value) override;
    /// K0, K1, ...; every second one is descending.
    STDMETHODIMP get_Name(BSTR* result) override;
    STDMETHODIMP get_Descending(VARIANT_BOOL* result) override;
    STDMETHODIMP put_Exact(VARIANT_BOOL value) override;

private:
    std::string Lead() const {
        std::string lead("#");
        lead += std::to_string(number_);
        lead += " ";
        return lead;
    }

    LONG number_;
};

class FakeKeyFields final : public FakeObject<UncalledDataKeyFields> {
public:
    FakeKeyFields() : FakeObject("key fields") {}

    STDMETHODIMP Item(VARIANT index, DataKeyField** result) override;
    STDMETHODIMP Count(LONG* result) override;
};

class FakeIndex final : public FakeObject<UncalledDataIndex> {
public:
    FakeIndex() : FakeObject("index") {}

    STDMETHODIMP KeyFields(DataKeyFields** result) override;
};

}  // namespace zu::fake
