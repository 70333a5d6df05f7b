#include "runner/commands/UpkeepCommands.h"

#include "runner/DispatchCall.h"
#include "runner/commands/CommandRun.h"
#include "runner/commands/FaultLines.h"
#include "runner/commands/LinesOut.h"
#include "runner/commands/NumberText.h"

namespace zu::runner::commands {
namespace {

/// Runs `work` for each table that is named; a failure does not keep it from the others.
template <class Work>
void ForEachTable(CommandRun& run, Work&& work) {
    LinesOut out(run);
    for (const TableName& name : run.Tables(0, run.words().operands().size())) {
        run.StopIfInterrupted();
        run.listener().Forget();
        try {
            work(name, out);
            out.Flush();
        } catch (...) {
            run.Fail(run.ReasonOfFailure());
        }
    }
    out.Finish();
}

/// The table is open only as long as the call lasts: work on whole tables needs them for itself.
LONG RecordCount(CommandRun& run, const TableName& name) {
    return CallMember(run.service().Open(name).get(), L"RecordCount").ToLong();
}

std::size_t TagCount(CommandRun& run, const TableName& name) {
    return TextsOf(CallMember(run.service().Open(name).get(), L"IndexNames")).size();
}

}  // namespace

void RunRepair(CommandRun& run) {
    ForEachTable(run, [&run](const TableName& name, LinesOut& out) {
        run.service().Repair(name);
        const std::vector<std::wstring> done = run.listener().notes();
        out.Line(name.shown + (done.empty() ? L": nothing to mend" : L": repaired"), Style::Good);
        for (const std::wstring& sentence : done)
            out.Line(L"  " + sentence);
        const std::vector<std::wstring> left = run.service().Check(name);
        if (left.empty()) return;
        run.FoundFaults();
        out.Line(L"  left as it is:", Style::Bad);
        TellFaults(out, left, run.words().Has(L"--all"));
    });
}

void RunPack(CommandRun& run) {
    ForEachTable(run, [&run](const TableName& name, LinesOut& out) {
        const LONG before = RecordCount(run, name);
        run.service().Pack(name);
        const LONG after = RecordCount(run, name);
        out.Line(name.shown + L": " + Counted(before - after, L"deleted record") + L" removed, " +
                 Counted(after, L"record") + L" left");
    });
}

void RunReindex(CommandRun& run) {
    ForEachTable(run, [&run](const TableName& name, LinesOut& out) {
        run.service().Reindex(name);
        const std::size_t tags = TagCount(run, name);
        out.Line(name.shown +
                 (tags == 0 ? L": no tags" : L": " + Counted(static_cast<LONG>(tags), L"tag") + L" built"));
    });
}

}  // namespace zu::runner::commands
