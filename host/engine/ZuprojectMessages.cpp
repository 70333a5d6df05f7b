// The messages half of the engine object.
#include "com/Bstr.h"
#include "host/engine/EngineState.h"
#include "host/engine/FormMessage.h"
#include "host/engine/MessageCatalogue.h"
#include "host/engine/Reporting.h"
#include "host/engine/Zuproject.h"

namespace zu::host {
namespace {

Messages& ThreadMessages() {
    return EngineState::Current().messages;
}

std::wstring TextFor(LONG code, SAFEARRAY** arguments) {
    return host::MessageText(static_cast<std::uint32_t>(code),
                             InsertionsOf(arguments ? *arguments : nullptr));
}

}  // namespace

HRESULT Zuproject::Trace(BSTR Text) noexcept {
    return Guarded([&] { ThreadMessages().Trace(com::View(Text)); });
}

HRESULT Zuproject::ClearLastError() noexcept {
    return Guarded([&] { ThreadMessages().Forget(); });
}

HRESULT Zuproject::RaiseError(LONG Code, SAFEARRAY** Arguments) noexcept {
    return Guarded([&] {
        const std::wstring text = TextFor(Code, Arguments);
        ThreadMessages().Report(Code, text);
        if (EngineState::Current().interactive) ShowOverForm(text);
    });
}

HRESULT Zuproject::MessageText(LONG Code, SAFEARRAY** Arguments, BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(TextFor(Code, Arguments)); });
}

HRESULT Zuproject::get_LastError(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(ThreadMessages().lastError().text); });
}

HRESULT Zuproject::get_LastErrorCode(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return ThreadMessages().lastError().code; });
}

HRESULT Zuproject::get_Tracing(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(ThreadMessages().isTracing()); });
}

HRESULT Zuproject::put_Tracing(VARIANT_BOOL Value) noexcept {
    return Guarded([&] { ThreadMessages().SetTracing(Value != VARIANT_FALSE); });
}

HRESULT Zuproject::get_Listener(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&] { return ThreadMessages().listener().copy(); });
}

HRESULT Zuproject::putref_Listener(IDispatch* Value) noexcept {
    return Guarded([&] { ThreadMessages().SetListener(Value); });
}

}  // namespace zu::host
