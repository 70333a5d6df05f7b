#include "runner/EngineLink.h"

#include "com/Variant.h"
#include "runner/DispatchCall.h"
#include "runner/ErrorTexts.h"

namespace zu::runner {
namespace {

constexpr wchar_t kProject[] = L"Zuengine.Zuproject";
constexpr wchar_t kFunctions[] = L"ZuDBFFunctions.Functions";

// Engines of other makers need not know these properties.
void PutIfKnown(IDispatch* project, const std::wstring& name, const com::Variant& value) {
    if (FindMember(project, name)) PutMember(project, name, value);
}

com::ComError WithAdvice(const com::ComError& failure) {
    return com::ComError(
        failure.code(),
        failure.description() +
            L"; Zuengine.dll and ZuDBFFunctions.dll must lie beside zurun.exe or be registered",
        failure.source());
}

}  // namespace

com::ComPtr<IDispatch> CreateByName(const std::wstring& name) {
    CLSID id{};
    com::ComPtr<IDispatch> object;
    HRESULT code = CLSIDFromProgID(name.c_str(), &id);
    if (SUCCEEDED(code))
        code = CoCreateInstance(id, nullptr, CLSCTX_SERVER, __uuidof(IDispatch), object.putVoid());
    if (FAILED(code)) {
        throw com::ComError(code,
                            L"an object of class " + name + L" cannot be created: " + ScriptErrorText(code));
    }
    return object;
}

EngineLink::EngineLink() {
    try {
        project_ = CreateByName(kProject);
    } catch (const com::ComError& failure) {
        failure_ = WithAdvice(failure);
    }
}

com::ComPtr<IDispatch> EngineLink::project() const {
    if (!project_) throw failure_;
    return project_;
}

com::ComPtr<IDispatch> EngineLink::CreateFunctions() const {
    try {
        return CreateByName(kFunctions);
    } catch (const com::ComError& failure) {
        throw WithAdvice(failure);
    }
}

void EngineLink::SetDataFolder(const std::wstring& folder) {
    PutMember(project().get(), L"DataFolder", com::Variant(folder));
}

void EngineLink::Attach(IDispatch* routines, IDispatch* listener, bool trace) {
    if (!project_) return;
    PutIfKnown(project_.get(), L"RoutineHolder", com::Variant(routines));
    PutIfKnown(project_.get(), L"Listener", com::Variant(listener));
    if (trace) PutIfKnown(project_.get(), L"Tracing", com::Variant(true));
}

void EngineLink::Detach() noexcept {
    if (!project_) return;
    try {
        Attach(nullptr, nullptr, false);
    } catch (const com::ComError&) {
        // The engine goes with the program; nothing is left to be told.
    }
}

}  // namespace zu::runner
