#include "com/TypeLibrary.h"

#include <string>

#include "com/Module.h"

namespace zu::com {
namespace {

/// The place of library `number` in the notation of LoadTypeLibEx; empty when there is none.
std::wstring Place(unsigned number) {
    if (!FindResourceW(Module::handle(), MAKEINTRESOURCEW(number), L"TYPELIB")) return {};
    return Module::Path() + L'\\' + std::to_wstring(number);
}

}  // namespace

ComPtr<ITypeLib> TypeLibrary::Load(unsigned number) {
    const std::wstring place = Place(number);
    if (place.empty()) throw ComError(TYPE_E_CANTLOADLIBRARY, L"This module carries no such type library");
    ComPtr<ITypeLib> library;
    Check(LoadTypeLibEx(place.c_str(), REGKIND_NONE, library.put()));
    return library;
}

ComPtr<ITypeInfo> TypeLibrary::Find(REFGUID id) {
    for (unsigned number = 1; !Place(number).empty(); ++number) {
        ComPtr<ITypeInfo> info;
        if (SUCCEEDED(Load(number)->GetTypeInfoOfGuid(id, info.put()))) return info;
    }
    throw ComError(TYPE_E_ELEMENTNOTFOUND, L"No type library of this module describes the interface");
}

}  // namespace zu::com
