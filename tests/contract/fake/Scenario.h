#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com/Variant.h"

namespace zu::fake {

struct FieldContent {
    std::wstring name;
    LONG type = VT_BSTR;
    com::Variant value;
};

/// What the fake engine of one thread is made of, for a test to change before its call.
struct Scenario {
    std::wstring technology = L"T";
    /// OpenTable, Layout, Select and Seek give an object.
    bool opensTable = true;
    bool hasLayout = true;
    bool selects = true;
    /// The answer of OpenIndex; the table has an open index after True.
    bool opensIndex = true;
    LONG keyFields = 1;
    /// Records that meet any condition and key, before MaxRecords cuts them off.
    LONG records = 3;
    /// The current record of a view that was not moved yet.
    LONG position = 0;
    std::vector<FieldContent> fields = {{L"NAME", VT_BSTR, com::Variant(L"x")}};
    /// The answer of the service's operations on whole tables.
    bool answers = true;
    /// The answer of a record variable's Initialise.
    bool initialises = true;
    /// The script's routine: gets the number of the call, from 1, and the arguments. Without it every call
    /// answers True.
    std::function<bool(int, SAFEARRAY*)> routine;
    /// Context items by their handle, which is the item's number + 100.
    std::map<LONG, com::Variant> contextItems;
    /// Interfaces that no object answers.
    std::vector<IID> withheld;
};

/// The scenario of the calling thread.
Scenario& Scene();

}  // namespace zu::fake
