#include "runner/ObjectLookup.h"

#include <objbase.h>
#include <objidl.h>

#include "com/ComError.h"
#include "runner/EngineLink.h"
#include "runner/ErrorTexts.h"

namespace zu::runner {
namespace {

void Require(HRESULT code, const std::wstring& what) {
    if (FAILED(code)) throw com::ComError(code, what + L": " + ScriptErrorText(code));
}

com::ComPtr<IDispatch> RunningObject(const std::wstring& className) {
    CLSID id{};
    com::ComPtr<IUnknown> object;
    HRESULT code = CLSIDFromProgID(className.c_str(), &id);
    if (SUCCEEDED(code)) code = GetActiveObject(id, nullptr, object.put());
    Require(code, L"no object of class " + className + L" is running");
    return object.as<IDispatch>();
}

com::ComPtr<IDispatch> LoadedObject(const std::wstring& path, const std::wstring& className) {
    com::ComPtr<IDispatch> object = CreateByName(className);
    const auto file = object.tryAs<IPersistFile>();
    Require(file ? S_OK : E_NOINTERFACE, L"objects of class " + className + L" cannot load files");
    Require(file->Load(path.c_str(), STGM_READWRITE), L"the file " + path + L" cannot be loaded");
    return object;
}

}  // namespace

com::ComPtr<IDispatch> LookUpObject(const std::wstring& path, const std::wstring& className) {
    if (path.empty()) return RunningObject(className);
    if (!className.empty()) return LoadedObject(path, className);
    com::ComPtr<IDispatch> object;
    Require(CoGetObject(path.c_str(), nullptr, __uuidof(IDispatch), object.putVoid()),
            L"no object answers to " + path);
    return object;
}

}  // namespace zu::runner
