#include "runner/EngineListener.h"

#include "runner/ErrorTexts.h"
#include "runner/TextOutput.h"

namespace zu::runner {

EngineListener::EngineListener(TextOutput& output) {
    AddMethod(L"Report", [&output](const CallArguments& call) {
        call.RequireCount(2, 2);
        output.WriteLines(L"engine error " + ErrorNumber(call.Long(0)) + L": " + call.Text(1));
        return com::Variant();
    });
    AddMethod(L"Trace", [&output](const CallArguments& call) {
        call.RequireCount(1, 1);
        output.WriteLines(L"trace: " + call.Text(0));
        return com::Variant();
    });
}

}  // namespace zu::runner
