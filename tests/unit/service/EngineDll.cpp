#include "EngineDll.h"

namespace zu::test {
namespace {

template <class Function>
Function Find(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

std::wstring EngineDll::Path() {
    std::wstring path(1000, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\') + 1) + L"Zuengine.dll";
}

EngineDll::EngineDll() : module_(LoadLibraryW(Path().c_str())) {}

EngineDll::~EngineDll() {
    if (module_) FreeLibrary(module_);
}

HRESULT EngineDll::ClassObject(REFCLSID id, REFIID iid, void** object) const {
    const auto get = Find<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(module_, "DllGetClassObject");
    return get ? get(id, iid, object) : E_UNEXPECTED;
}

HRESULT EngineDll::CanUnloadNow() const {
    const auto ask = Find<HRESULT(STDAPICALLTYPE*)()>(module_, "DllCanUnloadNow");
    return ask ? ask() : E_UNEXPECTED;
}

}  // namespace zu::test
