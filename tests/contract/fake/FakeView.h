#pragma once

#include <memory>

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataField.h"
#include "tests/contract/fake/uncalled/UncalledDataFields.h"
#include "tests/contract/fake/uncalled/UncalledDataView.h"

namespace zu::fake {

/// One field of the scenario's list.
class FakeField final : public FakeObject<UncalledDataField> {
public:
    explicit FakeField(FieldContent content) : FakeObject("field"), content_(std::move(content)) {}

    STDMETHODIMP get_Name(BSTR* result) override;
    STDMETHODIMP get_Value(VARIANT* result) override;
    STDMETHODIMP put_Value(VARIANT value) override;
    STDMETHODIMP get_Type(LONG* result) override;
    STDMETHODIMP get_Decimals(LONG* result) override;
    STDMETHODIMP get_Size(LONG* result) override;

private:
    FieldContent content_;
};

class FakeFields final : public FakeObject<UncalledDataFields> {
public:
    explicit FakeFields(std::wstring table) : FakeObject("fields"), table_(std::move(table)) {}

    STDMETHODIMP get_Item(VARIANT index, ZuDataField** result) override;
    STDMETHODIMP get_Count(LONG* result) override;

private:
    std::wstring table_;
};

/// A view of a table with a number of records and a position in them. What is added does not join it.
class FakeView final : public FakeObject<UncalledDataView> {
public:
    explicit FakeView(LONG records, std::wstring table = {})
        : FakeObject("view"), records_(records), position_(Scene().position), table_(std::move(table)) {}

    STDMETHODIMP get_Fields(ZuDataFields** result) override;
    STDMETHODIMP get_Updateable(VARIANT_BOOL* result) override;
    STDMETHODIMP AddNew(VARIANT* values, VARIANT_BOOL* result) override;
    STDMETHODIMP Update(VARIANT_BOOL* result) override;
    STDMETHODIMP Delete(LONG index, VARIANT_BOOL* result) override;
    STDMETHODIMP get_RecordCount(LONG reserved, LONG* result) override;
    STDMETHODIMP MoveFirst(LONG reserved) override;
    STDMETHODIMP MoveNext(LONG count) override;
    STDMETHODIMP get_Eof(LONG reserved, VARIANT_BOOL* result) override;
    STDMETHODIMP get_AbsolutePosition(LONG reserved, LONG* result) override;

private:
    LONG records_;
    LONG position_;
    std::wstring table_;
    int added_ = 0;
    int updated_ = 0;
};

}  // namespace zu::fake
