#include "runner/Runner.h"

#include <exception>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/ActivationContext.h"
#include "runner/Apartment.h"
#include "runner/CommandLine.h"
#include "runner/Console.h"
#include "runner/DataFolder.h"
#include "runner/ErrorTexts.h"
#include "runner/ExitCodes.h"
#include "runner/Session.h"
#include "runner/commands/CommandGuide.h"
#include "runner/commands/RunCommand.h"

namespace zu::runner {
namespace {

std::wstring Wide(const char* utf8) {
    return std::wstring(com::AsWide(text::ToUtf16(utf8)));
}

// A failure of the program itself, as opposed to one of the script.
int Complain(Console& console, int exitCode, const std::wstring& text) {
    std::wstring lines = L"zurun: " + text;
    if (exitCode == kExitUsage) lines += L"\nzurun: --help shows how it is used";
    console.Tell(lines);
    return exitCode;
}

// A bare word that is no file was meant as a command.
void RefuseMistypedCommand(const std::wstring& script) {
    if (script.find_first_of(L"./\\:") != std::wstring::npos) return;
    const auto command = commands::ClosestCommand(script);
    if (!command || GetFileAttributesW(script.c_str()) != INVALID_FILE_ATTRIBUTES) return;
    throw Error(ErrorKind::InvalidArgument, "there is no script and no command \"" +
                                                text::ToUtf8(com::AsUtf16(script)) + "\"; did you mean \"" +
                                                text::ToUtf8(com::AsUtf16(*command)) + "\"?");
}

ScriptSource LoadSource(const CommandLine& line, Console& console) {
    if (line.code) return ScriptSource::FromText(L"-e", *line.code, line.language);
    RefuseMistypedCommand(line.script);
    if (line.script == L"-") return ScriptSource::FromBytes(L"stdin", console.in.ReadBytes(), line.language);
    return ScriptSource::FromFile(line.script, line.language);
}

int RunScript(const CommandLine& line, Console& console) {
    ScriptSource source = LoadSource(line, console);
    const Apartment apartment;
    const ActivationContext context;
    EngineLink engine;
    if (line.dataFolder) engine.SetDataFolder(DataFolder(*line.dataFolder));
    Session session(std::move(source), line.arguments, console, engine);
    return session.Run(line.trace);
}

int Dispatch(const CommandLine& line, Console& console) {
    switch (line.action) {
        case CommandLine::Action::Help:
            console.out.WriteLines(HelpText());
            return kExitDone;
        case CommandLine::Action::Version:
            console.out.WriteLine(Wide("zurun " ZU_VERSION));
            return kExitDone;
        case CommandLine::Action::Command:
            return commands::RunCommand(line.script, line.arguments, console);
        default:
            return RunScript(line, console);
    }
}

int ExitCodeOf(ErrorKind kind) noexcept {
    return kind == ErrorKind::InvalidArgument ? kExitUsage : kExitNoInput;
}

}  // namespace

int RunProgram(const std::vector<std::wstring>& words) noexcept {
    try {
        Console console;
        try {
            return Dispatch(CommandLine::Parse(words), console);
        } catch (const Error& error) {
            return Complain(console, ExitCodeOf(error.kind()), Wide(error.what()));
        } catch (const com::ComError& error) {
            const std::wstring& text = error.description();
            return Complain(console, kExitNoScriptEngine,
                            text.empty() ? ScriptErrorText(error.code()) : text);
        } catch (const std::exception& error) {
            return Complain(console, kExitNoScriptEngine, Wide(error.what()));
        }
    } catch (...) {
        // Not even a message can be written.
        return kExitNoScriptEngine;
    }
}

}  // namespace zu::runner
