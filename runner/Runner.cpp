#include "runner/Runner.h"

#include <objbase.h>

#include <exception>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/ActivationContext.h"
#include "runner/CommandLine.h"
#include "runner/Console.h"
#include "runner/ErrorTexts.h"
#include "runner/ExitCodes.h"
#include "runner/Session.h"

namespace zu::runner {
namespace {

// The thread's apartment, for as long as any object may live.
class Apartment {
public:
    Apartment() { com::Check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

std::wstring Wide(const char* utf8) {
    return std::wstring(com::AsWide(text::ToUtf16(utf8)));
}

// A failure of the program itself, as opposed to one of the script.
int Complain(Console& console, int exitCode, const std::wstring& text) {
    console.err.WriteLines(L"zurun: " + text);
    if (exitCode == kExitUsage) console.err.WriteLines(L"zurun: --help shows how it is used");
    return exitCode;
}

ScriptSource LoadSource(const CommandLine& line, Console& console) {
    if (line.code) return ScriptSource::FromText(L"-e", *line.code, line.language);
    if (line.script == L"-") return ScriptSource::FromBytes(L"stdin", console.in.ReadBytes(), line.language);
    return ScriptSource::FromFile(line.script, line.language);
}

std::wstring DataFolder(const std::wstring& folder) {
    wchar_t* end = nullptr;
    std::wstring path(32768, L'\0');
    path.resize(GetFullPathNameW(folder.c_str(), static_cast<DWORD>(path.size()), path.data(), &end));
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        throw Error(ErrorKind::NotFound,
                    "the data folder " + text::ToUtf8(com::AsUtf16(folder)) + " does not exist");
    }
    return path;
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
