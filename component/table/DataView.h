#pragma once

#include <string_view>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::component {

/// A data view with the calls that the component makes on it. Operations throw a ComError when the view
/// fails. The fields collection is fetched once: it always reads the view's current record.
class DataView {
public:
    /// Throws "object variable not set" for null.
    explicit DataView(com::ComPtr<ZuDataView> view);
    /// The view that a script's value holds. Throws "type mismatch" for a content that is no view, and
    /// "object variable not set" for no object.
    static DataView FromValue(const VARIANT& value);

    LONG RecordCount() const;
    /// 0 for the first record.
    LONG AbsolutePosition() const;
    void MoveFirst() const;
    void MoveNext() const;
    bool Eof() const;
    /// The value that the current record holds in the field of this name.
    com::Variant Value(std::wstring_view field);

    ZuDataView* get() const noexcept { return view_.get(); }

private:
    ZuDataFields& Fields();

    com::ComPtr<ZuDataView> view_;
    com::ComPtr<ZuDataFields> fields_;
};

/// The view behind any object, or null: an object that is no view is an answer here, not an error.
com::ComPtr<ZuDataView> IsDataView(const VARIANT& object) noexcept;

}  // namespace zu::component
