#include "runner/commands/ShowCommand.h"

#include <algorithm>
#include <memory>

#include "com/ComError.h"
#include "runner/DispatchCall.h"
#include "runner/commands/CellText.h"
#include "runner/commands/ColumnLayout.h"
#include "runner/commands/CommandRun.h"
#include "runner/commands/CsvLine.h"
#include "runner/commands/JsonObject.h"
#include "runner/commands/LinesOut.h"
#include "runner/commands/NumberText.h"
#include "runner/commands/RecordRows.h"

namespace zu::runner::commands {
namespace {

/// Records whose values decide how wide the columns become. Longer ones that come later are cut on a
/// terminal, and stand out elsewhere.
constexpr LONG kMeasured = 1000;
constexpr LONG kIncludeDeleted = -1;

/// The records that the words ask for.
RecordRows Selected(CommandRun& run) {
    const com::ComPtr<IDispatch> table = run.service().Open(run.Table(0));
    if (const auto order = run.words().Value(L"--order")) {
        if (!CallMember(table.get(), L"OpenIndex", {com::Variant(*order)}).ToBoolean())
            throw com::ComError(E_INVALIDARG, run.listener().lastReport());
    }
    const auto fields = run.words().Value(L"--fields");
    const bool deleted = run.words().Has(L"--deleted");
    const com::Variant view = CallMember(
        table.get(), L"Select",
        {com::Variant(run.Condition(1)), com::Variant(LONG{run.words().Number(L"--limit").value_or(0)}),
         com::Variant(deleted ? kIncludeDeleted : LONG{0}), fields ? com::Variant(*fields) : com::Variant()});
    return RecordRows(com::ObjectOf<IDispatch>(view));
}

/// The columns in front of the fields.
struct Extras {
    bool numbers = false;
    bool marks = false;
};

class ColumnsOut {
public:
    ColumnsOut(RecordRows& rows, Extras extras, LinesOut& out)
        : rows_(rows), extras_(extras), out_(out), layout_(Columns(rows, extras)) {}

    void Begin() {
        for (LONG row = 0; row < std::min(rows_.count(), kMeasured); ++row)
            layout_.Measure(Cells(row));
        if (out_.width() > 0) layout_.Fit(out_.width());
        out_.Heading(layout_.Header(), layout_.Rule());
    }
    void Row(LONG row) { out_.Line(layout_.Line(Cells(row))); }
    void End() {
        const std::vector<std::wstring> missing = layout_.LeftOut();
        if (!missing.empty()) {
            std::wstring text = L"(no room for";
            for (const std::wstring& name : missing)
                text += (&name == missing.data() ? L" " : L", ") + name;
            out_.Line(text + L"; --fields chooses)", Style::Faint);
        }
    }

private:
    static std::vector<ColumnLayout::Column> Columns(const RecordRows& rows, Extras extras) {
        std::vector<ColumnLayout::Column> columns;
        if (extras.marks) columns.push_back({L"", false, true});
        if (extras.numbers) columns.push_back({L"#", true, true});
        for (const RecordRows::Field& field : rows.fields())
            columns.push_back({field.name, field.right, !field.isText});
        return columns;
    }

    std::vector<std::wstring> Cells(LONG row) {
        rows_.MoveTo(row);
        std::vector<std::wstring> cells;
        if (extras_.marks) cells.emplace_back(rows_.IsDeleted() ? L"*" : L"");
        if (extras_.numbers) cells.push_back(std::to_wstring(rows_.RecordNumber()));
        for (std::size_t field = 0; field < rows_.fields().size(); ++field)
            cells.push_back(rows_.Shown(field));
        return cells;
    }

    RecordRows& rows_;
    Extras extras_;
    LinesOut& out_;
    ColumnLayout layout_;
};

std::wstring JsonOf(RecordRows& rows, Extras extras) {
    JsonObject object;
    if (extras.numbers) object.Number(L"#", rows.RecordNumber());
    if (extras.marks) object.Truth(L"deleted?", rows.IsDeleted());
    for (std::size_t field = 0; field < rows.fields().size(); ++field)
        object.Raw(rows.fields()[field].name, CellJson(rows.Value(field)));
    return object.text();
}

std::wstring CsvOf(RecordRows& rows, Extras extras) {
    CsvLine line;
    if (extras.numbers) line.Add(std::to_wstring(rows.RecordNumber()));
    if (extras.marks) line.Add(rows.IsDeleted() ? L"true" : L"false");
    for (std::size_t field = 0; field < rows.fields().size(); ++field)
        line.Add(CellText(rows.Value(field)).value_or(L""));
    return line.text();
}

std::wstring CsvHeader(const RecordRows& rows, Extras extras) {
    CsvLine line;
    if (extras.numbers) line.Add(L"#");
    if (extras.marks) line.Add(L"deleted?");
    for (const RecordRows::Field& field : rows.fields())
        line.Add(field.name);
    return line.text();
}

}  // namespace

void RunShow(CommandRun& run) {
    LinesOut out(run, LinesOut::Paging::OnTerminal);
    RecordRows rows = Selected(run);
    const Extras extras{run.words().Has(L"--numbers"), run.words().Has(L"--deleted")};
    ColumnsOut columns(rows, extras, out);
    if (out.form() == LinesOut::Form::Csv) out.Line(CsvHeader(rows, extras));
    if (out.form() == LinesOut::Form::People) columns.Begin();
    for (LONG row = 0; row < rows.count() && !out.ended(); ++row) {
        run.StopIfInterrupted();
        if (out.form() == LinesOut::Form::People) {
            columns.Row(row);
            continue;
        }
        rows.MoveTo(row);
        if (out.form() == LinesOut::Form::Json) {
            out.JsonElement(JsonOf(rows, extras));
        } else {
            out.Line(CsvOf(rows, extras));
        }
    }
    if (out.form() == LinesOut::Form::People) {
        columns.End();
        if (run.terminal().isConsole())
            out.Line(L"(" + Counted(rows.count(), L"record") + L")", Style::Faint);
    }
    out.Finish();
}

}  // namespace zu::runner::commands
