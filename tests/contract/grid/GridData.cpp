#include "tests/contract/grid/GridData.h"

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledDataField.h"
#include "tests/contract/fake/uncalled/UncalledDataFields.h"
#include "tests/contract/fake/uncalled/UncalledDataView.h"

namespace zu::contract {

using com::Variant;
using fake::FakeObject;
using fake::Show;
using fake::ShowAll;

namespace {

constexpr std::size_t kDeleted = static_cast<std::size_t>(-1);

class GridFieldObject final : public FakeObject<fake::UncalledDataField> {
public:
    GridFieldObject(std::shared_ptr<GridData> data, std::size_t field)
        : FakeObject("field"), data_(std::move(data)), field_(field) {}

    STDMETHODIMP get_Name(BSTR* result) override {
        return Answer("ZuDataField.Name", "", result, [&] { return com::NewBstr(description().name); });
    }
    STDMETHODIMP get_Type(LONG* result) override {
        return Answer("ZuDataField.Type", "", result, [&] { return description().type; });
    }
    STDMETHODIMP get_Decimals(LONG* result) override {
        return Answer("ZuDataField.Decimals", "", result, [&] { return description().decimals; });
    }
    STDMETHODIMP get_DisplayWidth(LONG* result) override {
        return Answer("ZuDataField.DisplayWidth", "", result, [&] { return description().width; });
    }
    STDMETHODIMP get_Alignment(LONG* result) override {
        return Answer("ZuDataField.Alignment", "", result, [&] { return description().alignment; });
    }
    STDMETHODIMP get_Value(VARIANT* result) override {
        bool outside = false;
        const HRESULT answer = Answer("ZuDataField.Value", Label(), result, [&] {
            outside = !data_->adding && Record() >= data_->records.size();
            return outside ? VARIANT{} : Value().detach();
        });
        return outside ? DISP_E_BADINDEX : answer;
    }
    STDMETHODIMP put_Value(VARIANT value) override {
        HRESULT answer = S_OK;
        const HRESULT entered = Do("ZuDataField.Value", Label() + " = " + Show(value), [&] {
            if (data_->takesValue) answer = data_->takesValue(value);
            if (SUCCEEDED(answer)) Store(value);
        });
        return FAILED(answer) ? answer : entered;
    }

private:
    const GridField& description() const { return data_->fields[field_]; }
    std::size_t Record() const { return static_cast<std::size_t>(data_->position); }
    std::string Label() const {
        return field_ == kDeleted ? "##DELETED"
                                  : "#" + std::to_string(field_) + " of " + std::to_string(data_->position);
    }
    Variant Value() const {
        if (field_ == kDeleted) return Variant(!data_->adding && data_->deleted[Record()]);
        const auto changed = data_->pending.find(field_);
        if (changed != data_->pending.end()) return changed->second;
        return data_->adding ? Variant::Null() : data_->records[Record()][field_];
    }
    void Store(const VARIANT& value) {
        if (field_ != kDeleted) {
            data_->pending[field_] = Variant(value);
            return;
        }
        data_->deleted[Record()] = value.boolVal != VARIANT_FALSE;
        if (data_->hidesDeleted && data_->deleted[Record()]) {
            data_->records.erase(data_->records.begin() + data_->position);
            data_->deleted.erase(data_->deleted.begin() + data_->position);
        }
    }

    std::shared_ptr<GridData> data_;
    std::size_t field_;
};

class GridFieldsObject final : public FakeObject<fake::UncalledDataFields> {
public:
    explicit GridFieldsObject(std::shared_ptr<GridData> data)
        : FakeObject("fields"), data_(std::move(data)) {}

    STDMETHODIMP get_Count(LONG* result) override {
        return Answer("ZuDataFields.Count", "", result,
                      [&] { return static_cast<LONG>(data_->fields.size()); });
    }
    STDMETHODIMP get_Item(VARIANT index, ZuDataField** result) override {
        return Answer("ZuDataFields.Item", Show(index), result, [&]() -> ZuDataField* {
            const std::size_t field = index.vt == VT_I4 ? static_cast<std::size_t>(index.lVal) : kDeleted;
            return fake::Make<GridFieldObject>(data_, field).detach();
        });
    }

private:
    std::shared_ptr<GridData> data_;
};

class GridViewObject final : public FakeObject<fake::UncalledDataView> {
public:
    explicit GridViewObject(std::shared_ptr<GridData> data) : FakeObject("view"), data_(std::move(data)) {}

    STDMETHODIMP get_Fields(ZuDataFields** result) override {
        return Answer("ZuDataView.Fields", "", result,
                      [&] { return fake::Make<GridFieldsObject>(data_).detach(); });
    }
    STDMETHODIMP get_Updateable(VARIANT_BOOL* result) override {
        return Answer("ZuDataView.Updateable", "", result,
                      [&] { return com::ToVariantBool(data_->updateable); });
    }
    STDMETHODIMP get_RecordCount(LONG reserved, LONG* result) override {
        return Answer("ZuDataView.RecordCount", Show(reserved), result,
                      [&] { return static_cast<LONG>(data_->records.size()); });
    }
    STDMETHODIMP Move(LONG index, LONG reserved) override {
        return Do("ZuDataView.Move", ShowAll(index, reserved), [&] {
            data_->pending.clear();
            data_->adding = false;
            data_->position = index;
        });
    }
    STDMETHODIMP AddNew(VARIANT* values, VARIANT_BOOL* result) override {
        return Answer("ZuDataView.AddNew", Show(*values), result, [&] {
            data_->pending.clear();
            data_->adding = true;
            data_->position = static_cast<LONG>(data_->records.size());
            return VARIANT_TRUE;
        });
    }
    STDMETHODIMP Update(VARIANT_BOOL* result) override {
        return Answer("ZuDataView.Update", "", result, [&] {
            if (data_->updates && !data_->updates()) return VARIANT_FALSE;
            if (data_->adding) {
                data_->records.emplace_back(data_->fields.size(), Variant::Null());
                data_->deleted.push_back(false);
            }
            data_->adding = false;
            for (const auto& [field, value] : data_->pending)
                data_->records[static_cast<std::size_t>(data_->position)][field] = value;
            data_->pending.clear();
            return VARIANT_TRUE;
        });
    }
    STDMETHODIMP get_CellValue(LONG index, LONG column, VARIANT* result) override {
        return Answer("ZuDataView.CellValue", ShowAll(index, column), result, [&] {
            return Variant(data_->records[static_cast<std::size_t>(index)][static_cast<std::size_t>(column)])
                .detach();
        });
    }

private:
    std::shared_ptr<GridData> data_;
};

}  // namespace

std::shared_ptr<GridData> GridData::Names(std::initializer_list<const wchar_t*> names) {
    auto data = std::make_shared<GridData>();
    data->fields = {{L"NAME"}};
    for (const wchar_t* name : names)
        data->records.push_back({Variant(name)});
    data->deleted.resize(names.size());
    return data;
}

std::shared_ptr<GridData> GridData::Numbered(std::size_t count) {
    auto data = std::make_shared<GridData>();
    data->fields = {{L"ID", VT_I4, 0, 5, 1}, {L"NAME"}};
    for (std::size_t i = 0; i < count; ++i)
        data->records.push_back({Variant(static_cast<LONG>(i)), Variant(L"r" + std::to_wstring(i))});
    data->deleted.resize(count);
    return data;
}

com::ComPtr<ZuDataView> MakeGridView(std::shared_ptr<GridData> data) {
    return com::ComPtr<ZuDataView>::Adopt(fake::Make<GridViewObject>(std::move(data)).detach());
}

}  // namespace zu::contract
