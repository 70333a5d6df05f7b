#include "runner/commands/LinesOut.h"

#include "portable/error/Error.h"
#include "runner/commands/CommandRun.h"

namespace zu::runner::commands {
namespace {

LinesOut::Form FormOf(const CommandWords& words) {
    if (words.Has(L"--json") && words.Has(L"--csv"))
        throw Error(ErrorKind::InvalidArgument, "--json and --csv exclude each other");
    if (words.Has(L"--json")) return LinesOut::Form::Json;
    return words.Has(L"--csv") ? LinesOut::Form::Csv : LinesOut::Form::People;
}

std::size_t WidthOf(const CommandWords& words, const Terminal& terminal) {
    if (const auto width = words.Number(L"--width")) return static_cast<std::size_t>(*width);
    return terminal.isConsole() ? terminal.width() : 0;
}

}  // namespace

LinesOut::LinesOut(CommandRun& run, Paging paging)
    : run_(run),
      form_(FormOf(run.words())),
      pages_(paging == Paging::OnTerminal && form_ == Form::People && run.terminal().isInteractive() &&
             !run.words().Has(L"--no-pager")),
      width_(WidthOf(run.words(), run.terminal())),
      pager_(run.terminal()),
      lines_(run.console().out, run.terminal().isConsole() ? &run.terminal() : nullptr) {}

void LinesOut::Line(std::wstring_view text, Style style) {
    if (!ended_ && !sink().Line(text, style)) ended_ = true;
}

void LinesOut::Heading(std::wstring_view header, std::wstring_view rule) {
    if (!ended_ && !sink().Heading(header, rule)) ended_ = true;
}

void LinesOut::JsonElement(std::wstring_view json) {
    Line((hasElements_ ? L", " : L"[ ") + std::wstring(json));
    hasElements_ = true;
}

void LinesOut::Finish() {
    if (form_ == Form::Json) Line(hasElements_ ? L"]" : L"[]");
    lines_.Flush();
}

}  // namespace zu::runner::commands
