#pragma once

#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::component {

/// The view behind a grid with the calls that the grid makes on it. Operations throw a ComError when the view
/// fails. Fields are fetched once: they always read and write the view's current record.
class GridView {
public:
    /// Throws "object variable not set" for null.
    explicit GridView(com::ComPtr<ZuDataView> view);

    bool Updateable() const;
    LONG RecordCount() const;
    /// Makes a record current; counted from 0.
    void Move(LONG record) const;
    /// Begins a blank record, which becomes the current one. False when the view refuses.
    bool AddNew() const;
    /// Commits the current record. False when it was not saved.
    bool Update() const;
    /// One value of any record without moving.
    com::Variant CellValue(LONG record, LONG column) const;

    LONG FieldCount();
    ZuDataField& Field(LONG column);
    /// The current record's mark of deletion.
    ZuDataField& DeletedField();

    const com::ComPtr<ZuDataView>& view() const noexcept { return view_; }

private:
    ZuDataFields& Fields();

    com::ComPtr<ZuDataView> view_;
    com::ComPtr<ZuDataFields> fields_;
    com::ComPtr<ZuDataField> deleted_;
    std::vector<com::ComPtr<ZuDataField>> byNumber_;
};

com::Variant ValueOf(ZuDataField& field);

}  // namespace zu::component
