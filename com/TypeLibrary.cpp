#include "com/TypeLibrary.h"

#include "com/Module.h"

namespace zu::com {
namespace {

std::vector<std::wstring>& Files() {
    static std::vector<std::wstring> files;
    return files;
}

/// The place of library `number` in the notation of LoadTypeLibEx; empty when there is none.
std::wstring Place(unsigned number) {
    const auto& files = Files();
    if (!files.empty()) return number <= files.size() ? files[number - 1] : std::wstring();
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

void TypeLibrary::UseFiles(std::vector<std::wstring> files) {
    Files() = std::move(files);
}

}  // namespace zu::com
