#include "tests/contract/fake/FakeRecordVariable.h"

namespace zu::fake {

STDMETHODIMP FakeRecordVariable::Initialise(IDispatch* layout, LONG records, VARIANT_BOOL* result) {
    return Answer("ZuRecordVariable.Initialise", ShowAll(layout, records), result, [&] {
        initialised_ = Scene().initialises;
        return com::ToVariantBool(initialised_);
    });
}

STDMETHODIMP FakeRecordVariable::Reset() {
    return Do("ZuRecordVariable.Reset", "", [] {});
}

}  // namespace zu::fake
