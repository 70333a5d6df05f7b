// dispatch_host SCRIPT [arguments]: runs a script that calls an object with the functions' interface and
// looks at what arrived. The script's name for the object is Probe; `Last` is the last call as text, and
// there are a few values that a script cannot make by itself.
#include <objbase.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "runner/ActivationContext.h"
#include "runner/Console.h"
#include "runner/EngineLink.h"
#include "runner/NamedMembers.h"
#include "runner/ScriptSource.h"
#include "runner/Session.h"
#include "runner/WinHandle.h"
#include "tests/scripts/dispatch_host/RecordingFunctions.h"

namespace zu::tests {
namespace {

using com::Variant;

Variant TypedArray(VARTYPE type) {
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, 2);
    for (LONG index = 0; index < 2; ++index) {
        LONG number = index + 1;
        com::Bstr text(index == 0 ? L"NAME" : L"x");
        SafeArrayPutElement(array, &index, type == VT_BSTR ? static_cast<void*>(text.get()) : &number);
    }
    VARIANT value;
    VariantInit(&value);
    value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    value.parray = array;
    return Variant::Adopt(value);
}

// Keeps a file from all others, as another program does that opens it for itself alone.
void HoldExclusively(const std::wstring& path, std::optional<runner::WinHandle>& held) {
    held.emplace(
        CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!*held) com::Check(HRESULT_FROM_WIN32(GetLastError()));
}

com::ComPtr<runner::NamedMembers> MakeGlobals(const com::ComPtr<RecordingFunctions>& probe) {
    auto globals = runner::MakeUnknown<runner::NamedMembers>();
    globals->AddProperty(L"Probe", [probe] { return Variant(static_cast<IDispatch*>(probe.get())); });
    globals->AddProperty(L"Last", [probe] { return Variant(std::wstring_view(probe->lastCall())); });
    globals->AddProperty(L"ArrayOfTexts", [] { return TypedArray(VT_BSTR); });
    globals->AddProperty(L"ArrayOfLongs", [] { return TypedArray(VT_I4); });
    const auto held = std::make_shared<std::optional<runner::WinHandle>>();
    globals->AddMethod(L"HoldExclusively", [held](const runner::CallArguments& call) {
        HoldExclusively(call.Text(0), *held);
        return Variant();
    });
    globals->AddMethod(L"LetGo", [held](const runner::CallArguments&) {
        held->reset();
        return Variant();
    });
    return globals;
}

int Run(const std::vector<std::wstring>& words) {
    runner::Console console;
    const runner::ActivationContext context;
    runner::EngineLink engine;
    const std::vector<std::wstring> arguments(words.begin() + 1, words.end());
    runner::Session session(runner::ScriptSource::FromFile(words.at(0), std::nullopt), arguments, console,
                            engine);
    const auto globals = MakeGlobals(com::MakeObject<RecordingFunctions>());
    session.Add(L"Dispatch", globals.as<IDispatch>(), true);
    return session.Run(false);
}

}  // namespace
}  // namespace zu::tests

int wmain(int count, wchar_t** words) {
    if (count < 2 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 64;
    int code = 70;
    try {
        code = zu::tests::Run(std::vector<std::wstring>(words + 1, words + count));
    } catch (const std::exception& error) {
        fprintf(stderr, "%s\n", error.what());
    }
    CoUninitialize();
    return code;
}
