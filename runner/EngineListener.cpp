#include "runner/EngineListener.h"

#include "runner/ErrorTexts.h"
#include "runner/TextOutput.h"

namespace zu::runner {

EngineListener::EngineListener(TextOutput& output, const std::function<bool()>& interrupted,
                               const std::function<void()>& stop, std::atomic<bool>& working)
    : progress_(output) {
    AddMethod(L"Progress", [this, interrupted, &working](const CallArguments& call) {
        call.RequireCount(3, 3);
        working = true;
        progress_.Show(call.Text(0), com::Convert(call[1], VT_R8)->dblVal,
                       com::Convert(call[2], VT_R8)->dblVal);
        return com::Variant(!interrupted());
    });
    AddMethod(L"ProgressEnd", [this, interrupted, stop, &working](const CallArguments& call) {
        call.RequireCount(0, 0);
        const bool ended = interrupted();
        progress_.Finish(ended);
        working = false;
        if (ended) stop();
        return com::Variant();
    });
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
