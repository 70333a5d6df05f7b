#include "runner/commands/CommandRun.h"

#include <utility>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/ErrorTexts.h"
#include "runner/ExitCodes.h"
#include "runner/commands/BrokenPipe.h"

namespace zu::runner::commands {

CommandRun::CommandRun(CommandWords words, Console& console, EngineLink& engine, std::wstring folder)
    : words_(std::move(words)),
      console_(console),
      engine_(engine),
      folder_(std::move(folder)),
      terminal_(console.out),
      service_(engine.project().get()),
      interruption_([this] { return working_.load(); }) {
    listener_ = MakeUnknown<CommandListener>(
        console.err, [this] { return interruption_.raised(); }, working_, words_.Has(L"--trace"));
    // Notes of the log are what some functions tell their reasons by.
    engine.Attach(nullptr, listener_.get(), true);
}

CommandRun::~CommandRun() {
    engine_.Detach();
}

TableName CommandRun::Table(std::size_t operand) const {
    return TableOf(words_.operands().at(operand), folder_);
}

std::vector<TableName> CommandRun::Tables(std::size_t first, std::size_t last) {
    std::vector<TableName> tables;
    for (std::size_t i = first; i < last && i < words_.operands().size(); ++i) {
        try {
            std::vector<TableName> named =
                TablesOf(words_.operands()[i], folder_,
                         [this](const std::wstring& database) { return service_.TableNames(database); });
            tables.insert(tables.end(), std::make_move_iterator(named.begin()),
                          std::make_move_iterator(named.end()));
        } catch (...) {
            Fail(ReasonOfFailure());
        }
    }
    return tables;
}

std::wstring CommandRun::Condition(std::size_t operand) const {
    if (const auto condition = words_.Value(L"--where")) return *condition;
    return operand < words_.operands().size() ? words_.operands()[operand] : std::wstring();
}

void CommandRun::StopIfInterrupted() const {
    if (interruption_.raised()) throw Interrupted();
}

void CommandRun::Fail(const std::wstring& text) {
    failed_ = true;
    untold_ = !console_.Tell(L"zurun: " + text) || untold_;
}

std::wstring CommandRun::ReasonOfFailure() const {
    StopIfInterrupted();
    try {
        throw;
    } catch (const com::ComError& error) {
        if (IsBrokenPipe(error)) throw;
        const std::wstring& text = error.description();
        return text.empty() ? ScriptErrorText(error.code()) : text;
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::InvalidArgument) throw;
        return std::wstring(com::AsWide(text::ToUtf16(error.what())));
    }
}

int CommandRun::exitCode() const noexcept {
    if (failed_) return untold_ ? kExitUntold : kExitFailed;
    return faults_ ? kExitFaultsFound : kExitDone;
}

}  // namespace zu::runner::commands
