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
    com::Variant value = com::Variant();
    LONG size = 10;
    LONG decimals = 0;
};

/// What the fake engine of one thread is made of, for a test to change before its call.
struct Scenario {
    std::wstring technology = L"T";
    /// OpenTable, Layout, Select and Seek give an object.
    bool opensTable = true;
    /// The one table that does not open.
    std::wstring unopenable;
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
    /// The fields of single tables, by the name of the table; all others have `fields`.
    std::map<std::wstring, std::vector<FieldContent>> tableFields;
    bool updateable = true;
    /// The answers of AddNew and Update to their n-th call, from 1, and of Delete for a position. Without
    /// them every call answers True.
    std::function<bool(int)> addsNew;
    std::function<bool(int)> updates;
    std::function<bool(LONG)> deletes;
    /// What a field does with a new value. Without it every value is taken.
    std::function<HRESULT(const std::wstring& field, const VARIANT& value)> takesValue;
    /// What AddNew leaves in place of the values that it was given, unless it is Empty.
    com::Variant replacedValues;
    /// Runs in each Evaluate of a parser, which may raise its events here.
    std::function<com::Variant(class FakeParser&)> evaluates;
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

    const std::vector<FieldContent>& FieldsOf(const std::wstring& table) const {
        const auto found = tableFields.find(table);
        return found == tableFields.end() ? fields : found->second;
    }
};

/// The scenario of the calling thread.
Scenario& Scene();

}  // namespace zu::fake
