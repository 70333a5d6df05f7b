#include "tests/unit/runner/EventSource.h"

#include <olectl.h>

#include "com/ComError.h"
#include "runner/ProgramPath.h"
#include "runner/ValueText.h"

namespace zu::runner {
namespace {

// The identifiers of the parser's type library, which the test program carries as its first one.
constexpr GUID kParserClass = {0xA7A62316, 0xE624, 0x4E41, {0xBD, 0x00, 0x4F, 0x06, 0x85, 0x8D, 0xFE, 0x17}};
constexpr GUID kParserEvents = {0x3450929E, 0xB2C0, 0x4F99, {0xA8, 0xB8, 0x2E, 0xF0, 0xCB, 0xA9, 0xD3, 0xDA}};
constexpr DISPID kProvideValue = 1;

}  // namespace

EventSource::EventSource() : events_(kParserEvents) {
    com::ComPtr<ITypeLib> library;
    com::Check(LoadTypeLibEx(ProgramPath().c_str(), REGKIND_NONE, library.put()));
    com::Check(library->GetTypeInfoOfGuid(kParserClass, class_.put()));
}

com::Variant EventSource::Fire(const std::wstring& name, com::Variant& value) {
    com::Variant result;
    com::Variant text(name);
    VARIANT arguments[2];
    VariantInit(&arguments[0]);
    arguments[0].vt = VT_BYREF | VT_VARIANT;
    arguments[0].pvarVal = value.address();
    arguments[1] = text.get();  // borrowed
    DISPPARAMS parameters{arguments, nullptr, 2, 0};
    const auto sinks = sinks_;  // a handler may disconnect itself
    for (const auto& [cookie, sink] : sinks) {
        sink->Invoke(kProvideValue, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, result.put(),
                     nullptr, nullptr);
    }
    return result;
}

std::wstring EventSource::Ask(const std::wstring& name, const std::wstring& value) {
    com::Variant content(value);
    Fire(name, content);
    return ValueText(content);
}

std::wstring EventSource::AskForResult(const std::wstring& name, const std::wstring& value) {
    com::Variant content(value);
    return ValueText(Fire(name, content));
}

HRESULT EventSource::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    *point = nullptr;
    if (id != events_) return CONNECT_E_NOCONNECTION;
    return QueryInterface(__uuidof(IConnectionPoint), reinterpret_cast<void**>(point));
}

HRESULT EventSource::GetConnectionInterface(IID* id) {
    *id = events_;
    return S_OK;
}

HRESULT EventSource::Advise(IUnknown* sink, DWORD* cookie) {
    // As real sources do: the sink must answer the event interface itself.
    com::ComPtr<IDispatch> events;
    if (FAILED(sink->QueryInterface(events_, events.putVoid()))) return CONNECT_E_CANNOTCONNECT;
    *cookie = ++lastCookie_;
    sinks_[*cookie] = std::move(events);
    return S_OK;
}

HRESULT EventSource::Unadvise(DWORD cookie) {
    return sinks_.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT EventSource::GetClassInfo(ITypeInfo** info) {
    *info = class_.copy();
    return S_OK;
}

}  // namespace zu::runner
