#include "runner/CommandLine.h"

#include <cwctype>
#include <string_view>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/commands/CommandGuide.h"
#include "runner/commands/RunCommand.h"

namespace zu::runner {
namespace {

[[noreturn]] void Refuse(std::wstring_view text) {
    throw Error(ErrorKind::InvalidArgument, text::ToUtf8(com::AsUtf16(text)));
}

Language StatedLanguage(std::wstring_view name) {
    const std::optional<Language> language = LanguageByName(name);
    if (!language) {
        Refuse(L"unknown language \"" + std::wstring(name) + L"\": vbscript and jscript are known");
    }
    return *language;
}

std::wstring Lowered(std::wstring_view word) {
    std::wstring result(word);
    for (wchar_t& character : result)
        character = static_cast<wchar_t>(std::towlower(character));
    return result;
}

// An option of cscript: "//" and a known name. Anything else that begins with "//" may be a path or a value.
bool IsHostOption(const std::wstring& lowered) {
    for (const std::wstring_view plain :
         {L"//nologo", L"//logo", L"//b", L"//i", L"//d", L"//x", L"//s", L"//u"}) {
        if (lowered == plain) return true;
    }
    for (const std::wstring_view start : {L"//e:", L"//h:", L"//t:", L"//job:"}) {
        if (lowered.starts_with(start)) return true;
    }
    return false;
}

class Parser {
public:
    explicit Parser(const std::vector<std::wstring>& words) : all_(words) {
        words_.reserve(words.size());
        for (const std::wstring& word : words) {
            const std::wstring lowered = Lowered(word);
            if (!IsHostOption(lowered)) {
                words_.push_back(word);
                places_.push_back(static_cast<std::size_t>(&word - words.data()));
            } else if (lowered.starts_with(L"//e:")) {
                result_.language = StatedLanguage(std::wstring_view(word).substr(4));
            }
        }
    }

    CommandLine Parse() {
        while (next_ < words_.size() && IsOption(words_[next_])) {
            const std::wstring word = words_[next_++];
            if (word == L"--") break;
            TakeOption(word);
        }
        if (result_.action != CommandLine::Action::Run) return result_;
        if (!result_.code) {
            if (next_ == words_.size()) Refuse(L"no script is named");
            result_.script = words_[next_++];
            if (result_.script.empty()) Refuse(L"the name of the script is empty");
        }
        if (!result_.code && commands::IsCommand(result_.script)) return Command();
        result_.arguments.assign(words_.begin() + static_cast<std::ptrdiff_t>(next_), words_.end());
        return result_;
    }

private:
    // Its own words hold no options of cscript; what stands in front of it is an option of the command too.
    CommandLine Command() {
        if (result_.language) Refuse(L"--language is for scripts");
        result_.action = CommandLine::Action::Command;
        if (result_.dataFolder) result_.arguments = {L"--data", *result_.dataFolder};
        if (result_.trace) result_.arguments.emplace_back(L"--trace");
        const auto behind = static_cast<std::ptrdiff_t>(places_[next_ - 1]) + 1;
        result_.arguments.insert(result_.arguments.end(), all_.begin() + behind, all_.end());
        return result_;
    }

    static bool IsOption(const std::wstring& word) {
        return (word.size() > 1 && word[0] == L'-') || word == L"/?" || word == L"//?";
    }

    void TakeOption(const std::wstring& word) {
        const std::size_t equals = word.starts_with(L"--") ? word.find(L'=') : std::wstring::npos;
        const std::wstring name = word.substr(0, equals);
        attached_.reset();
        if (equals != std::wstring::npos) attached_ = word.substr(equals + 1);

        if (name == L"-e") {
            if (result_.code) Refuse(L"-e is given twice");
            result_.code = ValueOf(name, L"the code to run");
        } else if (name == L"--language") {
            result_.language = StatedLanguage(ValueOf(name, L"vbscript or jscript"));
        } else if (name == L"--data") {
            result_.dataFolder = ValueOf(name, L"a folder");
            if (result_.dataFolder->empty()) Refuse(L"--data needs a folder");
        } else if (name == L"--trace" && !attached_) {
            result_.trace = true;
        } else if (name == L"--version" && !attached_) {
            result_.action = CommandLine::Action::Version;
        } else if (IsHelp(name) && !attached_) {
            result_.action = CommandLine::Action::Help;
        } else {
            Refuse(L"unknown option " + name);
        }
    }

    static bool IsHelp(const std::wstring& name) {
        return name == L"--help" || name == L"-h" || name == L"-?" || name == L"/?" || name == L"//?";
    }

    std::wstring ValueOf(const std::wstring& name, std::wstring_view what) {
        if (attached_) return *attached_;
        if (next_ == words_.size()) Refuse(name + L" needs " + std::wstring(what));
        return words_[next_++];
    }

    const std::vector<std::wstring>& all_;
    std::vector<std::wstring> words_;  // without the options of cscript
    std::vector<std::size_t> places_;  // of each of them in all words
    std::size_t next_ = 0;
    std::optional<std::wstring> attached_;  // the value in --name=value
    CommandLine result_;
};

}  // namespace

CommandLine CommandLine::Parse(const std::vector<std::wstring>& words) {
    return Parser(words).Parse();
}

std::wstring HelpText() {
    return LR"(zurun runs scripts with the table functions at hand, and works on tables itself.

  zurun [options] SCRIPT [arguments]     SCRIPT is a .vbs or .js file, or - for standard input
  zurun [options] -e CODE [arguments]    runs CODE

)" + commands::CommandList() +
           LR"(  zurun help [COMMAND]                shows this text, or what a command can do

Options
  --data DIR         folder in which databases without a full path are looked for
  --language NAME    vbscript or jscript, when no file extension says it
  --trace            shows the engine's log on standard error
  --version          shows the version
  --help             shows this text

In the script
  DbfOpen, DbfSelect, DbfLookup, DbfCount ...   all table functions, without a prefix
  Echo value, ...    writes a line          Args(i), Args.Count   the arguments
  Quit code          ends the script        Engine, Functions     the objects behind the functions
  WScript            as cscript offers it, so that existing scripts run unchanged

Exit codes
  0 done, 1 script error or a command that failed, 2 faults found (check, repair), 64 wrong usage,
  66 script file not readable, 70 no script engine, 74 failed and could tell nobody, 130 Ctrl+C, or the
  code given to Quit.
  ZURUN_EOL=lf in the environment ends output lines with LF alone, NO_COLOR leaves colours out.
)";
}

}  // namespace zu::runner
