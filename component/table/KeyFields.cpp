#include "component/table/KeyFields.h"

#include "com/ComError.h"
#include "com/ComPtr.h"
#include "com/Variant.h"
#include "component/engine/EngineLink.h"
#include "component/table/ArrayElements.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Required;
using com::Variant;

namespace {

/// The key fields of one index, in the order of the key.
class KeyFields {
public:
    explicit KeyFields(DataIndex& index) {
        Check(index.KeyFields(fields_.put()));
        Check(Required(fields_.get())->Count(&count_));
    }

    LONG count() const noexcept { return count_; }
    ComPtr<DataKeyField> At(LONG position) const {
        ComPtr<DataKeyField> field;
        Check(fields_->Item(Variant(position), field.put()));
        Required(field.get());
        return field;
    }

private:
    ComPtr<DataKeyFields> fields_;
    LONG count_ = 0;
};

void SetExact(DataKeyField& field, bool exact) {
    Check(field.put_Exact(com::ToVariantBool(exact)));
}

void LoadValue(const KeyFields& fields, const VARIANT& key, const VARIANT& exact) {
    if (fields.count() < 1) return;
    const ComPtr<DataKeyField> first = fields.At(0);
    SetExact(*first, Engine().data().ToBoolean(exact));
    Check(first->put_Value(key));
}

void LoadArray(const KeyFields& fields, const ArrayElements& elements) {
    const LONG last = elements.upperBound();
    LONG element = 0;
    for (LONG position = 0; position < fields.count() && element <= last; ++position) {
        const ComPtr<DataKeyField> field = fields.At(position);
        Check(field->put_Value(elements.At(element++)));
        const bool exact = element > last || Engine().data().ToBoolean(elements.At(element));
        SetExact(*field, exact);
        ++element;
    }
}

}  // namespace

void LoadKey(DataIndex& index, const VARIANT& key, const VARIANT& exact) {
    const KeyFields fields(index);
    if (IsArray(key)) {
        LoadArray(fields, ArrayElements(ArrayOf(key)));
    } else {
        LoadValue(fields, key, exact);
    }
}

}  // namespace zu::component
