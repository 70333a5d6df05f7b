#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "runner/Console.h"
#include "runner/EngineLink.h"
#include "runner/Interruption.h"
#include "runner/commands/CommandListener.h"
#include "runner/commands/CommandWords.h"
#include "runner/commands/TableService.h"
#include "runner/commands/Terminal.h"

namespace zu::runner::commands {

/// The user has ended the command.
class Interrupted : public std::exception {
public:
    const char* what() const noexcept override { return "interrupted"; }
};

/// One run of one command: its words, what it works with, and how it ends.
class CommandRun {
public:
    /// `folder` is where relative paths of tables start. Throws com::ComError when there is no engine.
    CommandRun(CommandWords words, Console& console, EngineLink& engine, std::wstring folder);
    ~CommandRun();
    CommandRun(const CommandRun&) = delete;
    CommandRun& operator=(const CommandRun&) = delete;

    const CommandWords& words() const noexcept { return words_; }
    Console& console() noexcept { return console_; }
    Terminal& terminal() noexcept { return terminal_; }
    TableService& service() noexcept { return service_; }
    CommandListener& listener() noexcept { return *listener_; }
    /// The component's object with the functions.
    com::ComPtr<IDispatch> functions() const { return engine_.CreateFunctions(); }

    /// The one table that an operand names.
    TableName Table(std::size_t operand) const;
    /// The tables that the operands from `first` up to, but not with, `last` name. A word that means no table
    /// counts as a failure.
    std::vector<TableName> Tables(std::size_t first, std::size_t last);
    /// The condition: what --where says, else this operand, else nothing.
    std::wstring Condition(std::size_t operand) const;

    /// Throws Interrupted after Ctrl+C.
    void StopIfInterrupted() const;
    bool interrupted() const noexcept { return interruption_.raised(); }

    /// Writes a failure to standard error; the command goes on with the next table and ends with 1.
    void Fail(const std::wstring& text);
    /// The reason of the exception being handled, for Fail. Rethrows what is no failure of a table.
    std::wstring ReasonOfFailure() const;
    /// Less urgent than a failure.
    void FoundFaults() noexcept { faults_ = true; }
    int exitCode() const noexcept;

private:
    CommandWords words_;
    Console& console_;
    EngineLink& engine_;
    std::wstring folder_;
    Terminal terminal_;
    TableService service_;
    std::atomic<bool> working_ = false;
    bool failed_ = false;
    bool untold_ = false;  ///< a failure could not be told
    bool faults_ = false;
    com::ComPtr<CommandListener> listener_;
    Interruption interruption_;  // last: its thread uses the others
};

}  // namespace zu::runner::commands
