#include "tests/contract/fake/FakeEngine.h"

#include <array>
#include <cstdio>

#include "tests/contract/fake/FakeDatabaseService.h"
#include "tests/contract/fake/FakeRecordVariable.h"
#include "tests/contract/fake/FakeRoutine.h"

namespace zu::fake {

namespace {

constexpr LONG kHandleOffset = 100;

}  // namespace

STDMETHODIMP FakeEngine::SetContextItem(LONG handle, VARIANT value) {
    return Do("ZuEngineContext.SetContextItem", ShowAll(handle, value),
              [&] { Scene().contextItems[handle] = com::Variant(value); });
}

STDMETHODIMP FakeEngine::SaveContextItem(LONG handle, VARIANT* value) {
    return Answer("ZuEngineContext.SaveContextItem", Show(handle), value,
                  [&] { return com::Variant(Scene().contextItems[handle]).detach(); });
}

STDMETHODIMP FakeEngine::ContextItemHandle(LONG item, LONG* result) {
    return Answer("ZuEngineContext.ContextItemHandle", Show(item), result,
                  [&] { return item + kHandleOffset; });
}

STDMETHODIMP FakeEngine::ContextItem(LONG handle, VARIANT* result) {
    return Answer("ZuEngineContext.ContextItem", Show(handle), result,
                  [&] { return com::Variant(Scene().contextItems[handle]).detach(); });
}

STDMETHODIMP FakeEngine::Routine(BSTR name, IDispatch** result) {
    return Answer("ZuEngineContext.Routine", Show(name), result, [] { return Make<FakeRoutine>().detach(); });
}

STDMETHODIMP FakeEngine::CallRoutine(IDispatch* routine, BSTR name, SAFEARRAY** arguments,
                                     VARIANT_BOOL* result) {
    return Answer("ZuEngineContext.CallRoutine", ShowAll(routine, name, arguments), result, [&] {
        const auto& body = Scene().routine;
        return com::ToVariantBool(!body || body(++routineCalls_, *arguments));
    });
}

STDMETHODIMP FakeEngine::ToBoolean(VARIANT value, VARIANT_BOOL* result) {
    return Answer("ZuEngineData.ToBoolean", Show(value), result,
                  [&] { return com::ToVariantBool(com::Variant(value).ToBoolean()); });
}

STDMETHODIMP FakeEngine::NewRecordVariable(IDispatch** result) {
    return Answer("ZuEngineData.NewRecordVariable", "", result, []() -> IDispatch* {
        return static_cast<ZuRecordVariable*>(Make<FakeRecordVariable>().detach());
    });
}

STDMETHODIMP FakeEngine::DefaultTechnology(BSTR* result) {
    return Answer("ZuEngineData.DefaultTechnology", "", result,
                  [] { return com::NewBstr(Scene().technology); });
}

STDMETHODIMP FakeEngine::RecordAdded(IDispatch* values) {
    return Do("ZuEngineData.RecordAdded", ShowAll(values), [] {});
}

STDMETHODIMP FakeEngine::Trace(BSTR text) {
    return Do("ZuEngineMessages.Trace", Show(text), [] {});
}

STDMETHODIMP FakeEngine::RaiseError(LONG code, SAFEARRAY** arguments) {
    char number[16];
    std::snprintf(number, sizeof number, "%08lX", static_cast<unsigned long>(code));
    return Do("ZuEngineMessages.RaiseError", std::string(number) + ", " + Show(arguments), [] {});
}

STDMETHODIMP FakeEngine::DatabaseService(IDispatch** result) {
    return Answer("ZuEngineData.DatabaseService", "", result,
                  [] { return Make<FakeDatabaseService>().detach(); });
}

STDMETHODIMP FakeEngine::MessageText(LONG code, SAFEARRAY** arguments, BSTR* result) {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "0x%08lX", static_cast<unsigned long>(code));
    const std::string text = std::string(number.data()) + ", " + Show(arguments);
    return Answer("ZuEngineMessages.MessageText", text, result,
                  [&] { return com::NewBstr(std::wstring(text.begin(), text.end())); });
}

STDMETHODIMP FakeEngine::DecimalPlaces(LONG type, LONG* result) {
    return Answer("ZuEngineData.DecimalPlaces", Show(type), result, [] { return LONG{3}; });
}

STDMETHODIMP FakeEngine::OwnerWindow(LONG* result) {
    return Answer("ZuEngineUserInterface.OwnerWindow", "", result, [] { return LONG{0}; });
}

}  // namespace zu::fake
