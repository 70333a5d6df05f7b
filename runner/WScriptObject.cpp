#include "runner/WScriptObject.h"

#include <memory>

#include "runner/EchoLine.h"
#include "runner/ObjectLookup.h"
#include "runner/ProgramPath.h"
#include "runner/Session.h"
#include "runner/StreamObjects.h"
#include "runner/ValueText.h"

namespace zu::runner {
namespace {

// The version of the host that scripts ask for before they use newer members.
constexpr std::wstring_view kHostVersion = L"5.8";
constexpr LONG kHostBuild = 1;

}  // namespace

WScriptObject::WScriptObject(Session& session) {
    AddIdentity(session);
    AddStreams(session);
    AddObjects(session);
    AddCourse(session);
}

void WScriptObject::AddIdentity(const Session& session) {
    const auto addText = [this](std::wstring_view name, std::wstring text) {
        AddProperty(name, [text = std::move(text)] { return com::Variant(std::wstring_view(text)); });
    };
    addText(L"Name", L"Zu script runner");
    addText(L"Version", std::wstring(kHostVersion));
    addText(L"FullName", ProgramPath());
    addText(L"Path", FolderOf(ProgramPath()));
    addText(L"ScriptName", session.source().fileName());
    addText(L"ScriptFullName", session.source().fullPath());
    AddProperty(L"BuildVersion", [] { return com::Variant(kHostBuild); });
    // A counted reference to itself would keep the object alive for ever.
    AddProperty(L"Application", [this] { return com::Variant(static_cast<IDispatch*>(this)); });
}

void WScriptObject::AddStreams(Session& session) {
    AddMethod(L"Echo", [&session](const CallArguments& call) {
        session.console().out.WriteLine(EchoLine(call, HostText));
        return com::Variant();
    });
    Console& console = session.console();
    const auto addStream = [this](std::wstring_view name, const auto& stream) {
        AddProperty(name, [stream] { return com::Variant(static_cast<IDispatch*>(stream.get())); });
    };
    addStream(L"StdOut", MakeUnknown<OutputObject>(console.out));
    addStream(L"StdErr", MakeUnknown<OutputObject>(console.err));
    addStream(L"StdIn", MakeUnknown<InputObject>(console.in));
}

void WScriptObject::AddObjects(Session& session) {
    const auto connect = [&session](const com::ComPtr<IDispatch>& object, const CallArguments& call,
                                    std::size_t index) {
        if (call.Has(index)) session.events().Connect(object.get(), call.Text(index), session.routines());
        return com::Variant(object.get());
    };
    AddMethod(L"CreateObject", [connect](const CallArguments& call) {
        call.RequireCount(1, 2);
        return connect(CreateByName(call.Text(0)), call, 1);
    });
    AddMethod(L"GetObject", [connect](const CallArguments& call) {
        call.RequireCount(1, 3);
        const std::wstring path = call.Has(0) ? call.Text(0) : std::wstring();
        return connect(LookUpObject(path, call.Has(1) ? call.Text(1) : std::wstring()), call, 2);
    });
    AddMethod(L"ConnectObject", [connect](const CallArguments& call) {
        call.RequireCount(2, 2);
        connect(com::Share(call.Object(0)), call, 1);
        return com::Variant();
    });
    AddMethod(L"DisconnectObject", [&session](const CallArguments& call) {
        call.RequireCount(1, 1);
        session.events().Disconnect(call.Object(0));
        return com::Variant();
    });
}

void WScriptObject::AddCourse(Session& session) {
    AddProperty(L"Arguments", [&session] { return com::Variant(session.arguments().get()); });
    AddMethod(L"Quit", [&session](const CallArguments& call) -> com::Variant {
        call.RequireCount(0, 1);
        session.Quit(call.Has(0) ? call.Long(0) : 0);
    });
    AddMethod(L"Sleep", [&session](const CallArguments& call) {
        call.RequireCount(1, 1);
        const LONG milliseconds = call.Long(0);
        session.Sleep(milliseconds > 0 ? static_cast<DWORD>(milliseconds) : 0);
        return com::Variant();
    });
    // Kept for scripts that set them; the runner shows no windows and ends no script after a time.
    const auto addSetting = [this](std::wstring_view name, com::Variant initial) {
        auto value = std::make_shared<com::Variant>(std::move(initial));
        AddProperty(
            name, [value] { return *value; }, [value](const VARIANT& put) { *value = com::Variant(put); });
    };
    addSetting(L"Interactive", com::Variant(true));
    addSetting(L"Timeout", com::Variant(LONG{0}));
}

}  // namespace zu::runner
