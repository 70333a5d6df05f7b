#include "runner/GlobalNames.h"

#include "runner/EchoLine.h"
#include "runner/Session.h"
#include "runner/ValueText.h"

namespace zu::runner {
GlobalNames::GlobalNames(Session& session) {
    AddMethod(L"Echo", [&session](const CallArguments& call) {
        session.console().out.WriteLine(EchoLine(call, ValueText));
        return com::Variant();
    });
    AddMethod(L"Quit", [&session](const CallArguments& call) -> com::Variant {
        call.RequireCount(0, 1);
        session.Quit(call.Has(0) ? call.Long(0) : 0);
    });
    AddProperty(L"Args", [&session] { return com::Variant(session.arguments().get()); });
    AddProperty(L"Engine", [&session] { return com::Variant(session.engine().project().get()); });
    AddProperty(L"Functions", [&session] { return com::Variant(session.functions().get()); });
}

}  // namespace zu::runner
