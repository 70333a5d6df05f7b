#include "runner/commands/CommandGuide.h"

#include <gtest/gtest.h>

#include <set>

#include "runner/CommandLine.h"

namespace zu::runner::commands {
namespace {

TEST(CommandGuide, CommandsAreFoundWithoutRegardToCase) {
    ASSERT_NE(FindCommand(L"Info"), nullptr);
    EXPECT_STREQ(FindCommand(L"Info")->name, L"info");
    EXPECT_EQ(FindCommand(L"inf"), nullptr);
    EXPECT_EQ(FindCommand(L""), nullptr);
}

TEST(CommandGuide, MistypedWordsFindTheirCommand) {
    EXPECT_EQ(ClosestCommand(L"inof"), L"info");
    EXPECT_EQ(ClosestCommand(L"shw"), L"show");
    EXPECT_EQ(ClosestCommand(L"chekc"), L"check");
    EXPECT_EQ(ClosestCommand(L"REINDX"), L"reindex");
    EXPECT_EQ(ClosestCommand(L"epxort"), L"export");
    EXPECT_EQ(ClosestCommand(L"hlep"), L"help");
}

TEST(CommandGuide, OtherWordsFindNone) {
    for (const wchar_t* word : {L"", L"x", L"orders", L"daily", L"a very long word that is none"})
        EXPECT_EQ(ClosestCommand(word), std::nullopt) << word;
}

TEST(CommandGuide, EveryCommandAndOptionIsInTheHelp) {
    const std::wstring all = HelpText();
    for (const CommandDescription& command : AllCommands()) {
        EXPECT_NE(all.find(std::wstring(L"zurun ") + command.name + L" " + command.usage), std::wstring::npos)
            << command.name;
        const std::wstring help = CommandHelp(command);
        EXPECT_NE(help.find(command.summary), std::wstring::npos);
        for (const OptionDescription& option : command.options)
            EXPECT_NE(help.find(option.name), std::wstring::npos) << command.name << " " << option.name;
    }
}

TEST(CommandGuide, NoOptionIsThereTwice) {
    for (const CommandDescription& command : AllCommands()) {
        std::set<std::wstring> names;
        for (const OptionDescription& option : command.options)
            EXPECT_TRUE(names.insert(option.name).second) << command.name << " " << option.name;
    }
}

TEST(CommandGuide, LinesOfHelpFitOnATerminal) {
    constexpr std::size_t kWidest = 120;
    for (const CommandDescription& command : AllCommands()) {
        std::wstring help = CommandHelp(command) + L"\n";
        for (std::size_t end = 0; (end = help.find(L'\n')) != std::wstring::npos; help.erase(0, end + 1))
            EXPECT_LE(end, kWidest) << command.name;
    }
}

}  // namespace
}  // namespace zu::runner::commands
