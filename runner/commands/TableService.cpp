#include "runner/commands/TableService.h"

#include "com/ComError.h"
#include "runner/DispatchCall.h"

namespace zu::runner::commands {

std::vector<std::wstring> TextsOf(const VARIANT& reference) {
    const VARIANT& value = com::Dereference(reference);
    if (!(value.vt & VT_ARRAY)) throw com::ComError(com::kTypeMismatch, L"an array of texts was expected");
    SAFEARRAY* array = value.vt & VT_BYREF ? *value.pparray : value.parray;
    std::vector<std::wstring> texts;
    LONG lower = 0;
    LONG upper = -1;
    if (!array) return texts;
    com::Check(SafeArrayGetLBound(array, 1, &lower));
    com::Check(SafeArrayGetUBound(array, 1, &upper));
    for (LONG index = lower; index <= upper; ++index) {
        if ((value.vt & VT_TYPEMASK) == VT_BSTR) {
            com::Bstr text;
            com::Check(SafeArrayGetElement(array, &index, text.put()));
            texts.push_back(text.str());
        } else {
            com::Variant element;
            com::Check(SafeArrayGetElement(array, &index, element.put()));
            texts.push_back(element.ToText().str());
        }
    }
    return texts;
}

TableService::TableService(IDispatch* project)
    : service_(com::ObjectOf<IDispatch>(CallMember(project, L"DatabaseService"))) {
    com::Required(service_.get());
}

com::ComPtr<IDispatch> TableService::Open(const TableName& name) const {
    const com::Variant table =
        CallMember(service_.get(), L"OpenTable", {com::Variant(name.database), com::Variant(name.table)});
    com::ComPtr<IDispatch> object = com::ObjectOf<IDispatch>(table);
    com::Required(object.get());
    return object;
}

std::vector<std::wstring> TableService::TableNames(const std::wstring& database) const {
    return TextsOf(CallMember(service_.get(), L"TableNames", {com::Variant(database)}));
}

std::vector<std::wstring> TableService::Check(const TableName& name) const {
    return TextsOf(
        CallMember(service_.get(), L"Check", {com::Variant(name.database), com::Variant(name.table)}));
}

void TableService::Do(const std::wstring& member, const TableName& name) const {
    CallMember(service_.get(), member, {com::Variant(name.database), com::Variant(name.table)});
}

void TableService::CloseTables() const {
    CallMember(service_.get(), L"CloseTables");
}

}  // namespace zu::runner::commands
