#include "runner/commands/CheckCommand.h"

#include "runner/commands/CommandRun.h"
#include "runner/commands/CsvLine.h"
#include "runner/commands/FaultLines.h"
#include "runner/commands/JsonObject.h"
#include "runner/commands/LinesOut.h"
#include "runner/commands/NumberText.h"

namespace zu::runner::commands {
namespace {

void Tell(LinesOut& out, const TableName& name, const std::vector<std::wstring>& faults, bool all) {
    switch (out.form()) {
        case LinesOut::Form::Json:
            out.JsonElement(JsonObject()
                                .Text(L"table", name.shown)
                                .Truth(L"sound", faults.empty())
                                .Texts(L"faults", faults)
                                .text());
            return;
        case LinesOut::Form::Csv:
            if (faults.empty()) out.Line(CsvLine().Add(name.shown).Add(L"sound").Add(L"").text());
            for (const std::wstring& fault : faults)
                out.Line(CsvLine().Add(name.shown).Add(L"faulty").Add(fault).text());
            return;
        default:
            if (faults.empty()) {
                out.Line(name.shown + L": sound", Style::Good);
                return;
            }
            out.Line(name.shown + L": " + Counted(static_cast<long long>(faults.size()), L"fault"),
                     Style::Bad);
            TellFaults(out, faults, all);
    }
}

}  // namespace

void RunCheck(CommandRun& run) {
    LinesOut out(run);
    if (out.form() == LinesOut::Form::Csv) out.Line(L"table,state,fault");
    for (const TableName& name : run.Tables(0, run.words().operands().size())) {
        run.StopIfInterrupted();
        try {
            const std::vector<std::wstring> faults = run.service().Check(name);
            if (!faults.empty()) run.FoundFaults();
            Tell(out, name, faults, run.words().Has(L"--all"));
            out.Flush();
        } catch (...) {
            run.Fail(run.ReasonOfFailure());
        }
    }
    out.Finish();
}

}  // namespace zu::runner::commands
