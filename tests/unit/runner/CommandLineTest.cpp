#include "runner/CommandLine.h"

#include <gtest/gtest.h>

#include "portable/error/Error.h"

namespace zu::runner {
namespace {

using Words = std::vector<std::wstring>;

std::string RefusalOf(const Words& words) {
    try {
        CommandLine::Parse(words);
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::InvalidArgument);
        return error.what();
    }
    return "not refused";
}

TEST(CommandLine, TakesAScriptAndItsArguments) {
    const CommandLine line = CommandLine::Parse({L"a.vbs", L"one", L"--trace", L"-e", L""});
    EXPECT_EQ(line.script, L"a.vbs");
    EXPECT_FALSE(line.code);
    EXPECT_FALSE(line.trace) << "what follows the script belongs to the script";
    EXPECT_EQ(line.arguments, (Words{L"one", L"--trace", L"-e", L""}));
}

TEST(CommandLine, TakesCodeAndItsArguments) {
    const CommandLine line = CommandLine::Parse({L"-e", L"Echo 1", L"x", L"y"});
    EXPECT_EQ(line.code, L"Echo 1");
    EXPECT_EQ(line.arguments, (Words{L"x", L"y"}));
}

TEST(CommandLine, OptionsMayFollowTheCodeUntilTheFirstArgument) {
    const CommandLine line = CommandLine::Parse({L"-e", L"Echo 1", L"--trace", L"x", L"--language"});
    EXPECT_TRUE(line.trace);
    EXPECT_EQ(line.arguments, (Words{L"x", L"--language"}));
    EXPECT_EQ(CommandLine::Parse({L"-e", L"1", L"--", L"-x"}).arguments, (Words{L"-x"}));
}

TEST(CommandLine, TakesOptionsBeforeTheScript) {
    const CommandLine line =
        CommandLine::Parse({L"--trace", L"--data", L"C:\\my data", L"--language", L"js", L"script.txt"});
    EXPECT_TRUE(line.trace);
    EXPECT_EQ(line.dataFolder, L"C:\\my data");
    EXPECT_EQ(line.language, Language::JScript);
    EXPECT_EQ(line.script, L"script.txt");
}

TEST(CommandLine, TakesValuesAfterAnEqualsSign) {
    const CommandLine line = CommandLine::Parse({L"--data=C:\\x=y", L"--language=vbs", L"-"});
    EXPECT_EQ(line.dataFolder, L"C:\\x=y");
    EXPECT_EQ(line.language, Language::VBScript);
    EXPECT_EQ(line.script, L"-");
}

TEST(CommandLine, TwoDashesEndTheOptions) {
    EXPECT_EQ(CommandLine::Parse({L"--", L"-odd.vbs"}).script, L"-odd.vbs");
}

TEST(CommandLine, PassesOverTheOptionsOfCscriptWhereverTheyStand) {
    const CommandLine line = CommandLine::Parse({L"//NoLogo", L"a.vbs", L"//T:10", L"x", L"//b", L"//job:1"});
    EXPECT_EQ(line.script, L"a.vbs");
    EXPECT_EQ(line.arguments, (Words{L"x"}));
    EXPECT_EQ(CommandLine::Parse({L"//E:jscript", L"a.txt"}).language, Language::JScript);
}

TEST(CommandLine, KeepsArgumentsThatOnlyLookLikeOptionsOfCscript) {
    EXPECT_EQ(CommandLine::Parse({L"a.vbs", L"//server/share", L"/nologo"}).arguments,
              (Words{L"//server/share", L"/nologo"}));
}

TEST(CommandLine, AnswersHelpAndVersionWithoutAScript) {
    for (const wchar_t* word : {L"--help", L"-h", L"-?", L"/?", L"//?"}) {
        EXPECT_EQ(CommandLine::Parse({word}).action, CommandLine::Action::Help);
    }
    EXPECT_EQ(CommandLine::Parse({L"--version"}).action, CommandLine::Action::Version);
}

TEST(CommandLine, RefusesWhatItDoesNotUnderstandAndSaysWhat) {
    EXPECT_EQ(RefusalOf({}), "no script is named");
    EXPECT_EQ(RefusalOf({L""}), "the name of the script is empty");
    EXPECT_EQ(RefusalOf({L"--nonsense", L"a.vbs"}), "unknown option --nonsense");
    EXPECT_EQ(RefusalOf({L"--trace=1", L"a.vbs"}), "unknown option --trace");
    EXPECT_EQ(RefusalOf({L"-x"}), "unknown option -x");
    EXPECT_EQ(RefusalOf({L"-e"}), "-e needs the code to run");
    EXPECT_EQ(RefusalOf({L"-e", L"1", L"-e", L"2"}), "-e is given twice");
    EXPECT_EQ(RefusalOf({L"--data"}), "--data needs a folder");
    EXPECT_EQ(RefusalOf({L"--data=", L"a.vbs"}), "--data needs a folder");
    EXPECT_EQ(RefusalOf({L"--language", L"perl", L"a"}),
              "unknown language \"perl\": vbscript and jscript are known");
}

TEST(CommandLine, HelpNamesEveryOption) {
    const std::wstring help = HelpText();
    for (const wchar_t* option :
         {L"-e CODE", L"--data", L"--language", L"--trace", L"--version", L"--help"}) {
        EXPECT_NE(help.find(option), std::wstring::npos);
    }
}

TEST(CommandLine, ABareWordMayNameACommand) {
    const CommandLine line = CommandLine::Parse({L"show", L"orders", L"--limit", L"5", L"//nologo"});
    EXPECT_EQ(line.action, CommandLine::Action::Command);
    EXPECT_EQ(line.script, L"show");
    EXPECT_EQ(line.arguments, (Words{L"orders", L"--limit", L"5", L"//nologo"}))
        << "the options of cscript are for scripts";
    EXPECT_EQ(CommandLine::Parse({L"Help"}).action, CommandLine::Action::Command);
}

TEST(CommandLine, OptionsInFrontOfACommandAreItsOwn) {
    const CommandLine line =
        CommandLine::Parse({L"//nologo", L"--data", L"info", L"--trace", L"info", L"info"});
    EXPECT_EQ(line.action, CommandLine::Action::Command);
    EXPECT_EQ(line.arguments, (Words{L"--data", L"info", L"--trace", L"info"}));
    EXPECT_NE(RefusalOf({L"--language", L"js", L"info", L"x"}).find("--language"), std::string::npos);
}

TEST(CommandLine, AScriptNamedLikeACommandRunsUnderItsPath) {
    for (const wchar_t* script : {L"show.vbs", L"./show", L".\\show"}) {
        EXPECT_EQ(CommandLine::Parse({script}).action, CommandLine::Action::Run) << script;
    }
    EXPECT_EQ(CommandLine::Parse({L"-e", L"1", L"show"}).action, CommandLine::Action::Run);
}

}  // namespace
}  // namespace zu::runner
