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

    LONG RecordCount() const;
    /// 0 for the first record.
    LONG AbsolutePosition() const;
    void MoveFirst() const;
    void MoveNext() const;
    /// Makes the record at this position from 0 current.
    void Move(LONG position) const;
    bool Eof() const;
    /// The value that the current record holds in the field of this name.
    com::Variant Value(std::wstring_view field);

    /// False: the view is read-only.
    bool Updateable() const;
    LONG FieldCount();
    /// The field under a name or a number from 0; it stays bound to the current record of the view.
    com::ComPtr<ZuDataField> Field(const VARIANT& nameOrNumber);
    void SetValue(const VARIANT& field, const VARIANT& value);
    /// Starts a new record, blank when `values` is missing. The view may change `values`. False: there is
    /// none.
    bool AddNew(VARIANT& values) const;
    /// Commits the current record. False: it was not saved.
    bool Update() const;
    /// Deletes the record at this position from 0. False: it was not deleted.
    bool Delete(LONG position) const;

    /// The fields of the current record; they live as long as the view.
    ZuDataFields& Fields();

    ZuDataView* get() const noexcept { return view_.get(); }

private:
    com::ComPtr<ZuDataView> view_;
    com::ComPtr<ZuDataFields> fields_;
};

/// The view behind any object, or null: an object that is no view is an answer here, not an error.
com::ComPtr<ZuDataView> IsDataView(const VARIANT& object) noexcept;

}  // namespace zu::component
