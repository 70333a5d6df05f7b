#include "runner/commands/RunCommand.h"

#include <optional>

#include "com/Bstr.h"
#include "com/SameText.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/ActivationContext.h"
#include "runner/Apartment.h"
#include "runner/CommandLine.h"
#include "runner/Console.h"
#include "runner/DataFolder.h"
#include "runner/ExitCodes.h"
#include "runner/commands/BrokenPipe.h"
#include "runner/commands/CommandGuide.h"
#include "runner/commands/CommandRun.h"

namespace zu::runner::commands {
namespace {

bool IsHelp(const std::wstring& word) {
    return com::SameText(word, L"help");
}

[[noreturn]] void Refuse(const std::wstring& text) {
    throw Error(ErrorKind::InvalidArgument, text::ToUtf8(com::AsUtf16(text)));
}

[[noreturn]] void RefuseUnknown(const std::wstring& name) {
    std::wstring text = L"there is no command \"" + name + L"\"";
    if (const auto closest = ClosestCommand(name)) text += L"; did you mean \"" + *closest + L"\"?";
    Refuse(text);
}

int Help(const std::vector<std::wstring>& words, Console& console) {
    if (words.size() > 1) Refuse(L"help takes one command");
    if (words.empty() || IsHelp(words[0]) || words[0].starts_with(L"-")) {
        console.out.WriteLines(HelpText());
        return kExitDone;
    }
    const CommandDescription* command = FindCommand(words[0]);
    if (!command) RefuseUnknown(words[0]);
    console.out.WriteLines(CommandHelp(*command));
    return kExitDone;
}

void RequireOperands(const CommandDescription& command, const CommandWords& words) {
    const std::wstring usage = std::wstring(command.name) + L" " + command.usage;
    const std::size_t count = words.operands().size();
    if (count < command.least) Refuse(L"too few words; it is: zurun " + usage);
    if (count > command.most)
        Refuse(L"too many words from \"" + words.operands()[command.most] + L"\" on; it is: zurun " + usage +
               (std::wstring(command.usage).find(L"CONDITION") == std::wstring::npos
                    ? L""
                    : L", the condition in quotes"));
}

int Work(const CommandDescription& command, CommandWords words, Console& console) {
    const Apartment apartment;
    const ActivationContext context;
    EngineLink engine;
    std::wstring folder;
    if (const auto data = words.Value(L"--data")) {
        folder = DataFolder(*data);
        engine.SetDataFolder(folder);
    }
    CommandRun run(std::move(words), console, engine, folder);
    try {
        command.run(run);
    } catch (const Interrupted&) {
        console.err.WriteLine(L"zurun: ended by the user");
    } catch (const com::ComError& error) {
        if (IsBrokenPipe(error)) return run.exitCode();
        if (!run.interrupted()) run.Fail(run.ReasonOfFailure());
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::InvalidArgument) throw;
        run.Fail(std::wstring(com::AsWide(text::ToUtf16(error.what()))));
    }
    return run.interrupted() ? kExitInterrupted : run.exitCode();
}

}  // namespace

bool IsCommand(const std::wstring& word) {
    return IsHelp(word) || FindCommand(word) != nullptr;
}

int RunCommand(const std::wstring& name, const std::vector<std::wstring>& words, Console& console) {
    std::wstring help = L"help";
    try {
        if (IsHelp(name)) return Help(words, console);
        const CommandDescription* command = FindCommand(name);
        if (!command) RefuseUnknown(name);
        help += std::wstring(L" ") + command->name;
        CommandWords parsed = CommandWords::Parse(command->options, words);
        if (parsed.Has(L"--help")) return Help({name}, console);
        RequireOperands(*command, parsed);
        return Work(*command, std::move(parsed), console);
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::InvalidArgument) throw;
        console.err.WriteLine(L"zurun: " + std::wstring(com::AsWide(text::ToUtf16(error.what()))));
        console.err.WriteLine(L"zurun: \"zurun " + help + L"\" shows how it is used");
        return kExitUsage;
    }
}

}  // namespace zu::runner::commands
