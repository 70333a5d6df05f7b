#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::contract {

struct GridField {
    std::wstring name;
    LONG type = VT_BSTR;
    LONG decimals = 0;
    LONG width = 10;
    LONG alignment = 0;
};

/// The records behind a view of the grid's tests.
struct GridData {
    std::vector<GridField> fields;
    std::vector<std::vector<com::Variant>> records;
    std::vector<bool> deleted;
    bool updateable = true;
    /// A record marked as deleted leaves the view.
    bool hidesDeleted = false;
    /// The answer of Update; without it changes are saved.
    std::function<bool()> updates;
    /// What a field does with a value; without it every value is taken.
    std::function<HRESULT(const VARIANT&)> takesValue;
    /// Changes of the current record that are not saved, by field.
    std::map<std::size_t, com::Variant> pending;
    LONG position = 0;
    bool adding = false;

    /// Records with one text field NAME.
    static std::shared_ptr<GridData> Names(std::initializer_list<const wchar_t*> names);
    static std::shared_ptr<GridData> Numbered(std::size_t count);
};

/// A view on the records, which writes every call into the journal.
com::ComPtr<ZuDataView> MakeGridView(std::shared_ptr<GridData> data);

}  // namespace zu::contract
