#include "runner/commands/WindowCommands.h"

#include <algorithm>

#include "com/ComError.h"
#include "runner/DispatchCall.h"
#include "runner/commands/CellText.h"
#include "runner/commands/CommandRun.h"
#include "runner/commands/CsvLine.h"
#include "runner/commands/FailureReason.h"
#include "runner/commands/JsonObject.h"
#include "runner/commands/LinesOut.h"
#include "runner/commands/RecordRows.h"

namespace zu::runner::commands {
namespace {

constexpr LONG kHeight = 400;
constexpr LONG kWidth = 600;
constexpr LONG kAnywhere = -1;

com::Variant Fields(const CommandRun& run) {
    const auto fields = run.words().Value(L"--fields");
    return fields ? com::Variant(*fields) : com::Variant();
}

std::wstring Title(const CommandRun& run, const TableName& name) {
    return run.words().Value(L"--title").value_or(name.shown);
}

/// The functions answer only that they failed; what concerns the table is told here.
void RequireRecords(CommandRun& run, const TableName& name) {
    const com::ComPtr<IDispatch> table = run.service().Open(name);
    CallMember(table.get(), L"Select",
               {com::Variant(run.Condition(1)), com::Variant(LONG{1}), com::Variant(LONG{0}), Fields(run)});
    run.listener().Forget();
}

void TellRecord(CommandRun& run, RecordRows& rows, LONG row) {
    LinesOut out(run);
    JsonObject object;
    CsvLine header;
    CsvLine values;
    std::size_t widest = 0;
    for (const RecordRows::Field& field : rows.fields())
        widest = std::max(widest, field.name.size());
    rows.MoveTo(row);
    for (std::size_t i = 0; i < rows.fields().size(); ++i) {
        const std::wstring& name = rows.fields()[i].name;
        object.Raw(name, CellJson(rows.Value(i)));
        header.Add(name);
        values.Add(CellText(rows.Value(i)).value_or(L""));
        if (out.form() == LinesOut::Form::People)
            out.Line(name + std::wstring(widest + 2 - name.size(), L' ') + rows.Shown(i));
    }
    if (out.form() == LinesOut::Form::Json) out.JsonElement(object.text());
    if (out.form() == LinesOut::Form::Csv) {
        out.Line(header.text());
        out.Line(values.text());
    }
    out.Finish();
}

LONG PositionOf(const com::ComPtr<IDispatch>& view) {
    return CallMember(view.get(), L"AbsolutePosition").ToLong();
}

template <class Work>
void Try(CommandRun& run, Work&& work) {
    try {
        work(run.Table(0));
    } catch (...) {
        run.Fail(run.ReasonOfFailure());
    }
}

}  // namespace

void RunEdit(CommandRun& run) {
    Try(run, [&run](const TableName& name) {
        RequireRecords(run, name);
        const com::Variant done = CallMember(
            run.functions().get(), L"DbfEdit",
            {com::Variant(name.definition()), com::Variant(Title(run, name)), com::Variant(run.Condition(1)),
             com::Variant::Missing(), com::Variant(kHeight), com::Variant(kWidth), com::Variant(kAnywhere),
             com::Variant(kAnywhere), Fields(run), com::Variant(run.words().Has(L"--undelete"))});
        if (!done.ToBoolean())
            throw com::ComError(E_FAIL, L"Cannot edit table " + name.shown + L": " +
                                            ReasonOf(run.listener(), L"the window could not be shown"));
    });
}

void RunPick(CommandRun& run) {
    Try(run, [&run](const TableName& name) {
        RequireRecords(run, name);
        const com::Variant picked =
            CallMember(run.functions().get(), L"DbfPick",
                       {com::Variant(name.definition()), com::Variant(Title(run, name)),
                        com::Variant(run.Condition(1)), com::Variant(kHeight), com::Variant(kWidth),
                        com::Variant(kAnywhere), com::Variant(kAnywhere), Fields(run)});
        const com::ComPtr<IDispatch> view = com::ObjectOf<IDispatch>(picked);
        if (!view) {
            const std::wstring reason = ReasonOf(run.listener(), L"");
            throw com::ComError(
                E_ABORT, reason.empty() ? L"no record was picked"
                                        : L"Cannot pick a record of table " + name.shown + L": " + reason);
        }
        RecordRows rows(view);
        TellRecord(run, rows, PositionOf(view));
    });
}

}  // namespace zu::runner::commands
