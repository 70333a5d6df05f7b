#include "runner/commands/CommandListener.h"

#include "runner/TextOutput.h"

namespace zu::runner::commands {
namespace {

// An import tells of each line that fails; nobody reads more.
constexpr std::size_t kMostNotes = 1000;

}  // namespace

CommandListener::CommandListener(TextOutput& errors, const std::function<bool()>& interrupted,
                                 std::atomic<bool>& working, bool trace)
    : progress_(errors) {
    AddMethod(L"Progress", [this, interrupted, &working](const CallArguments& call) {
        call.RequireCount(3, 3);
        working = true;
        progress_.Show(call.Text(0), com::Convert(call[1], VT_R8)->dblVal,
                       com::Convert(call[2], VT_R8)->dblVal);
        return com::Variant(!interrupted());
    });
    AddMethod(L"ProgressEnd", [this, interrupted, &working](const CallArguments& call) {
        call.RequireCount(0, 0);
        progress_.Finish(interrupted());
        working = false;
        return com::Variant();
    });
    AddMethod(L"Report", [this](const CallArguments& call) {
        call.RequireCount(2, 2);
        lastReport_ = call.Text(1);
        return com::Variant();
    });
    AddMethod(L"Trace", [this, &errors, trace](const CallArguments& call) {
        call.RequireCount(1, 1);
        const std::wstring note = call.Text(0);
        if (trace) errors.WriteLines(L"trace: " + note);
        Keep(note);
        return com::Variant();
    });
}

void CommandListener::Keep(const std::wstring& note) {
    if (notes_.size() < kMostNotes) {
        notes_.push_back(note);
    } else {
        ++moreNotes_;
    }
}

void CommandListener::Forget() {
    lastReport_.clear();
    notes_.clear();
    moreNotes_ = 0;
}

}  // namespace zu::runner::commands
