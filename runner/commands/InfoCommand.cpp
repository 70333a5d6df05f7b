#include "runner/commands/InfoCommand.h"

#include <algorithm>

#include "runner/commands/ColumnLayout.h"
#include "runner/commands/CommandRun.h"
#include "runner/commands/CsvLine.h"
#include "runner/commands/JsonObject.h"
#include "runner/commands/LinesOut.h"
#include "runner/commands/NumberText.h"
#include "runner/commands/TableFacts.h"

namespace zu::runner::commands {
namespace {

constexpr std::size_t kLabel = 12;

bool IsSize(std::wstring_view fact) {
    return fact.ends_with(L" size");
}

std::wstring Labelled(std::wstring_view label, std::wstring_view text) {
    std::wstring line(label);
    line.resize(std::max(line.size() + 1, kLabel), L' ');
    return line += text;
}

std::wstring RecordsText(const TableFacts& facts) {
    std::wstring text = Grouped(facts.records);
    if (facts.deleted && *facts.deleted > 0)
        text += L" (" + Grouped(facts.records - *facts.deleted) + L" live, " + Grouped(*facts.deleted) +
                L" deleted)";
    return text;
}

std::wstring FieldNote(const FieldFacts& field) {
    std::wstring note;
    if (field.nullable) note = L"can be null";
    if (field.readOnly) note += note.empty() ? L"read-only" : L", read-only";
    return note;
}

std::wstring TagNote(const TagFacts& tag) {
    std::wstring note;
    const auto add = [&note](std::wstring_view text) {
        if (!note.empty()) note += L", ";
        note += text;
    };
    if (!tag.condition.empty()) add(L"for " + tag.condition);
    if (tag.candidate) {
        add(L"candidate");
    } else if (tag.unique) {
        add(L"unique");
    }
    if (tag.descending) add(L"descending");
    if (!tag.usable) add(L"not usable: " + tag.reason);
    return note;
}

void ShowColumns(LinesOut& out, ColumnLayout& layout, const std::vector<std::vector<std::wstring>>& rows,
                 std::size_t width) {
    for (const std::vector<std::wstring>& row : rows)
        layout.Measure(row);
    if (width > 0) layout.Fit(width);
    out.Line(layout.Header(), Style::Heading);
    for (const std::vector<std::wstring>& row : rows)
        out.Line(layout.Line(row));
}

void ShowFields(LinesOut& out, const TableFacts& facts, std::size_t width) {
    std::vector<std::vector<std::wstring>> rows;
    for (const FieldFacts& field : facts.fields)
        rows.push_back({L"  " + field.name, field.type, std::to_wstring(field.width),
                        field.decimals > 0 ? std::to_wstring(field.decimals) : std::wstring(),
                        FieldNote(field)});
    ColumnLayout layout({{L"  Field"}, {L"Type"}, {L"Width", true, true}, {L"Decimals", true, true}, {L""}});
    ShowColumns(out, layout, rows, width);
}

void ShowTags(LinesOut& out, const TableFacts& facts, std::size_t width) {
    if (facts.tags.empty()) return;
    std::vector<std::vector<std::wstring>> rows;
    for (const TagFacts& tag : facts.tags)
        rows.push_back({L"  " + tag.name, tag.key, TagNote(tag)});
    ColumnLayout layout({{L"  Tag"}, {L"Key"}, {L""}});
    out.Line(L"");
    ShowColumns(out, layout, rows, width);
}

void ShowFacts(LinesOut& out, const TableFacts& facts, const std::wstring& shown, std::size_t width) {
    out.Line(Labelled(L"Table", facts.name), Style::Heading);
    for (const auto& [name, value] : facts.technology) {
        if (IsSize(name)) continue;
        const std::wstring size = name.ends_with(L" file")
                                      ? facts.Fact(name.substr(0, name.size() - 5) + L" size")
                                      : std::wstring();
        out.Line(Labelled(name, size.empty() ? value : value + L" (" + GroupedDigits(size) + L" bytes)"));
    }
    out.Line(Labelled(L"Records", RecordsText(facts)));
    if (!facts.writable) out.Line(Labelled(L"Access", L"read-only"));
    if (facts.warnings.empty()) {
        out.Line(Labelled(L"Health", L"looks sound"), Style::Good);
    } else {
        for (const std::wstring& warning : facts.warnings)
            out.Line(Labelled(&warning == facts.warnings.data() ? L"Health" : L"", warning), Style::Bad);
        out.Line(Labelled(L"", AdviceFor(facts, shown)));
    }
    out.Line(L"");
    ShowFields(out, facts, width);
    ShowTags(out, facts, width);
}

std::wstring FieldsJson(const TableFacts& facts) {
    std::vector<std::wstring> fields;
    for (const FieldFacts& field : facts.fields)
        fields.push_back(JsonObject()
                             .Text(L"name", field.name)
                             .Text(L"type", field.type)
                             .Number(L"width", field.width)
                             .Number(L"decimals", std::max(field.decimals, 0L))
                             .Truth(L"nullable", field.nullable)
                             .Truth(L"readOnly", field.readOnly)
                             .text());
    return JsonArray(fields);
}

std::wstring TagsJson(const TableFacts& facts) {
    std::vector<std::wstring> tags;
    for (const TagFacts& tag : facts.tags)
        tags.push_back(JsonObject()
                           .Text(L"name", tag.name)
                           .Text(L"key", tag.key)
                           .Text(L"for", tag.condition)
                           .Truth(L"unique", tag.unique)
                           .Truth(L"candidate", tag.candidate)
                           .Truth(L"descending", tag.descending)
                           .Truth(L"usable", tag.usable)
                           .Text(L"reason", tag.reason)
                           .text());
    return JsonArray(tags);
}

// "Memo file" becomes memoFile.
std::wstring MemberName(std::wstring_view fact) {
    std::wstring name;
    bool capital = false;
    for (const wchar_t c : fact) {
        if (c == L' ') {
            capital = true;
        } else {
            const bool upper = c >= L'A' && c <= L'Z';
            const bool lower = c >= L'a' && c <= L'z';
            const bool change = (capital && lower) || (!capital && upper && name.empty());
            name += change ? static_cast<wchar_t>(c ^ 0x20) : c;
            capital = false;
        }
    }
    return name;
}

std::wstring FactsJson(const TableFacts& facts) {
    JsonObject object;
    object.Text(L"table", facts.name);
    for (const auto& [name, value] : facts.technology) {
        if (IsSize(name)) {
            object.Raw(MemberName(name), value);
        } else {
            object.Text(MemberName(name), value);
        }
    }
    object.Number(L"records", facts.records);
    if (facts.deleted) object.Number(L"deleted", *facts.deleted);
    return object.Truth(L"writable", facts.writable)
        .Truth(L"sound", facts.warnings.empty())
        .Texts(L"warnings", facts.warnings)
        .Raw(L"fields", FieldsJson(facts))
        .Raw(L"tags", TagsJson(facts))
        .text();
}

std::wstring FactsCsv(const TableFacts& facts) {
    CsvLine line;
    for (const wchar_t* fact : {L"Table file", L"Format", L"Code page", L"Last change"})
        line.Add(facts.Fact(fact));
    line.Add(std::to_wstring(facts.records));
    line.Add(facts.deleted ? std::to_wstring(*facts.deleted) : std::wstring());
    line.Add(std::to_wstring(facts.fields.size())).Add(std::to_wstring(facts.tags.size()));
    for (const wchar_t* fact : {L"Table size", L"Memo file", L"Memo size", L"Index file", L"Index size"})
        line.Add(facts.Fact(fact));
    std::wstring health;
    for (const std::wstring& warning : facts.warnings)
        health += (health.empty() ? L"" : L"\n") + warning;
    return facts.name + L"," + line.Add(health.empty() ? L"sound" : health).text();
}

constexpr const wchar_t* kCsvHeader =
    L"table,file,format,codepage,changed,records,deleted,fields,tags,size,memofile,memosize,indexfile,"
    L"indexsize,"
    L"health";

}  // namespace

void RunInfo(CommandRun& run) {
    LinesOut out(run, LinesOut::Paging::OnTerminal);
    if (out.form() == LinesOut::Form::Csv) out.Line(kCsvHeader);
    bool first = true;
    for (const TableName& name : run.Tables(0, run.words().operands().size())) {
        run.StopIfInterrupted();
        try {
            const TableFacts facts = ReadTableFacts(run.service(), name);
            switch (out.form()) {
                case LinesOut::Form::Json:
                    out.JsonElement(FactsJson(facts));
                    break;
                case LinesOut::Form::Csv:
                    out.Line(FactsCsv(facts));
                    break;
                default:
                    if (!first) out.Line(L"");
                    ShowFacts(out, facts, name.shown, out.width());
            }
            first = false;
            out.Flush();
        } catch (...) {
            run.Fail(run.ReasonOfFailure());
        }
        if (out.ended()) break;
    }
    out.Finish();
}

}  // namespace zu::runner::commands
