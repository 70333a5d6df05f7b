#include "runner/commands/CommandGuide.h"

#include <algorithm>
#include <cwctype>

#include "com/SameText.h"
#include "runner/commands/CheckCommand.h"
#include "runner/commands/ExportCommand.h"
#include "runner/commands/ImportCommand.h"
#include "runner/commands/InfoCommand.h"
#include "runner/commands/ShowCommand.h"
#include "runner/commands/UpkeepCommands.h"
#include "runner/commands/WindowCommands.h"

namespace zu::runner::commands {
namespace {

constexpr OptionDescription kData{L"--data", L"DIR", L"folder in which relative names start"};
constexpr OptionDescription kTrace{L"--trace", nullptr, L"shows the engine's log on standard error"};
constexpr OptionDescription kHelp{L"--help", nullptr, L"shows this text"};
constexpr OptionDescription kJson{L"--json", nullptr, L"JSON instead of text for people"};
constexpr OptionDescription kCsv{L"--csv", nullptr, L"comma-separated values instead of text for people"};
constexpr OptionDescription kWidth{L"--width", L"N",
                                   L"fits the lines into N columns (default: the terminal's)"};
constexpr OptionDescription kNoPager{L"--no-pager", nullptr, L"does not stop after each page"};
constexpr OptionDescription kFields{L"--fields", L"A,B", L"these fields in this order"};
constexpr OptionDescription kWhere{L"--where", L"CONDITION", L"the condition, in another place"};
constexpr OptionDescription kAll{L"--all", nullptr, L"all faults of a table, not only the first ten"};
constexpr OptionDescription kTitle{L"--title", L"TEXT", L"title of the window"};

std::vector<OptionDescription> With(std::vector<OptionDescription> options) {
    for (const OptionDescription& common : {kData, kTrace, kHelp})
        options.push_back(common);
    return options;
}

constexpr wchar_t kSeveral[] =
    L"TABLE is the path of a table file, with or without .dbf, or DATABASE>TABLE (in quotes, because of the "
    L"shell).\n"
    L"Wildcards (* and ?) and folders stand for several tables.\n";
constexpr wchar_t kOne[] =
    L"TABLE is the path of a table file, with or without .dbf, or DATABASE>TABLE (in quotes, because of the "
    L"shell).\n"
    L"CONDITION is one word: put it into quotes.\n";
constexpr wchar_t kExportDetails[] =
    L"TABLE may have wildcards; several tables go into a folder, a file NAME.txt each. FILE - is standard "
    L"output.\n"
    L"The file is written in the system's code page, standard output in UTF-8. An old file is replaced.\n"
    L"CONDITION is one word: put it into quotes.\n";
constexpr wchar_t kImportDetails[] =
    L"Each line becomes a record. FILE - is standard input. With a CONDITION, only records that meet it are "
    L"added.\n"
    L"The file is read in the system's code page. Lines that cannot be added are told, the others are "
    L"added.\n";
constexpr wchar_t kCheckDetails[] =
    L"TABLE is the path of a table file, with or without .dbf, or DATABASE>TABLE (in quotes, because of the "
    L"shell).\n"
    L"Wildcards (* and ?) and folders stand for several tables. Nobody else may have a table open "
    L"meanwhile.\n"
    L"Exit code: 0 all sound, 2 faults found, 1 a table could not be examined.\n"
    L"zurun repair mends what can be mended.\n";

std::vector<OptionDescription> FormatOptionsWith(std::vector<OptionDescription> options) {
    options.push_back({L"--format", L"NAME", L"delimited (default) or fixed"});
    options.push_back({L"--separator", L"TEXT", L"between values (default: a comma); tab for a tabulator"});
    options.push_back({L"--quote", L"CHARACTER", L"around texts; --quote= for none"});
    options.push_back({L"--dates", L"MASK", L"such as yyyy-mm-dd (default: yyyymmdd)"});
    options.push_back({L"--set", L"NAME=VALUE", L"any property of the text format, such as TrueValue=Y"});
    options.push_back({L"--header", nullptr, L"the first line holds the names of the fields"});
    options.push_back(kFields);
    options.push_back(kWhere);
    return With(std::move(options));
}

std::vector<CommandDescription> MakeCommands() {
    return {
        {L"info", L"TABLE...", L"format, code page, records, fields, tags, memo file and health", kSeveral, 1,
         1000000, With({kJson, kCsv, kWidth, kNoPager}), RunInfo},
        {L"show", L"TABLE [CONDITION]", L"the records, in columns", kOne, 1, 2,
         With({kFields,
               {L"--order", L"TAG", L"in the order of this tag"},
               {L"--limit", L"N", L"at most N records"},
               {L"--deleted", nullptr, L"deleted records too, marked with *"},
               {L"--numbers", nullptr, L"the number of each record"},
               kJson,
               kCsv,
               kWidth,
               kNoPager,
               kWhere}),
         RunShow},
        {L"check", L"TABLE...", L"examines tables, memos and tags to the last byte", kCheckDetails, 1,
         1000000, With({kAll, kJson, kCsv}), RunCheck},
        {L"repair", L"TABLE...",
         L"mends what can be mended; the old files stay, with .bak behind their names", kSeveral, 1, 1000000,
         With({kAll}), RunRepair},
        {L"pack", L"TABLE...", L"removes the records that are marked as deleted", kSeveral, 1, 1000000,
         With({}), RunPack},
        {L"reindex", L"TABLE...", L"builds all tags anew", kSeveral, 1, 1000000, With({}), RunReindex},
        {L"export", L"TABLE FILE [CONDITION]", L"writes the records to a text file", kExportDetails, 2, 3,
         FormatOptionsWith({{L"--limit", L"N", L"at most N records"}}), RunExport},
        {L"import", L"FILE TABLE [CONDITION]", L"adds the lines of a text file to a table", kImportDetails, 2,
         3, FormatOptionsWith({}), RunImport},
        {L"edit", L"TABLE [CONDITION]", L"opens a window to change the records", kOne, 1, 2,
         With({kFields, kTitle, {L"--undelete", nullptr, L"deleted records can be taken back"}, kWhere}),
         RunEdit},
        {L"pick", L"TABLE [CONDITION]", L"opens a window to choose a record, and writes it", kOne, 1, 2,
         With({kFields, kTitle, kJson, kCsv, kWhere}), RunPick},
    };
}

/// Letters to be changed, added, taken away or swapped with the next one.
std::size_t Distance(std::wstring_view left, std::wstring_view right) {
    std::vector<std::vector<std::size_t>> steps(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t change = left[i - 1] == right[j - 1] ? 0 : 1;
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    }
    return steps[left.size()][right.size()];
}

std::wstring Padded(std::wstring text, std::size_t width) {
    text.resize(std::max(width, text.size() + 1), L' ');
    return text;
}

}  // namespace

std::span<const CommandDescription> AllCommands() {
    static const std::vector<CommandDescription> commands = MakeCommands();
    return commands;
}

const CommandDescription* FindCommand(std::wstring_view name) {
    for (const CommandDescription& command : AllCommands()) {
        if (com::SameText(name, command.name)) return &command;
    }
    return nullptr;
}

std::optional<std::wstring> ClosestCommand(std::wstring_view word) {
    constexpr std::size_t kLongest = 12;
    if (word.size() < 3 || word.size() > kLongest) return std::nullopt;
    std::wstring lowered(word);
    for (wchar_t& c : lowered)
        c = static_cast<wchar_t>(std::towlower(c));
    std::optional<std::wstring> closest;
    std::size_t least = 3;
    const auto consider = [&](std::wstring_view name) {
        const std::size_t distance = Distance(lowered, name);
        // In a short word two wrong letters are half of it.
        if (distance >= least || (distance == 2 && name.size() < 5)) return;
        least = distance;
        closest = name;
    };
    for (const CommandDescription& command : AllCommands())
        consider(command.name);
    consider(L"help");
    return closest;
}

std::wstring CommandHelp(const CommandDescription& command) {
    constexpr std::size_t kOptionWidth = 24;
    std::wstring text = std::wstring(L"zurun ") + command.name + L" " + command.usage + L"\n  " +
                        command.summary + L"\n\n" + command.details + L"\n";
    for (const OptionDescription& option : command.options) {
        std::wstring form = std::wstring(L"  ") + option.name;
        if (option.value) form += std::wstring(L" ") + option.value;
        text += Padded(form, kOptionWidth) + option.help + L"\n";
    }
    text.pop_back();  // the output ends the last line
    return text;
}

std::wstring CommandList() {
    constexpr std::size_t kUsageWidth = 38;
    std::wstring text;
    for (const CommandDescription& command : AllCommands())
        text += Padded(std::wstring(L"  zurun ") + command.name + L" " + command.usage, kUsageWidth) +
                command.summary + L"\n";
    return text;
}

}  // namespace zu::runner::commands
