#include "runner/commands/CommandWords.h"

#include <gtest/gtest.h>

#include "portable/error/Error.h"

namespace zu::runner::commands {
namespace {

using Words = std::vector<std::wstring>;

constexpr OptionDescription kKnown[] = {{L"--json", nullptr, L""},
                                        {L"--limit", L"N", L""},
                                        {L"--set", L"NAME=VALUE", L""},
                                        {L"-x", nullptr, L""}};

CommandWords Parse(const Words& words) {
    return CommandWords::Parse(kKnown, words);
}

std::string RefusalOf(const Words& words) {
    try {
        static_cast<void>(Parse(words).Number(L"--limit"));
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::InvalidArgument);
        return error.what();
    }
    return "not refused";
}

TEST(CommandWords, OptionsMayStandAnywhere) {
    const CommandWords words = Parse({L"--limit", L"5", L"table", L"--json", L"condition"});
    EXPECT_EQ(words.operands(), (Words{L"table", L"condition"}));
    EXPECT_TRUE(words.Has(L"--json"));
    EXPECT_FALSE(words.Has(L"-x"));
    EXPECT_EQ(words.Number(L"--limit"), 5);
}

TEST(CommandWords, AValueMayStandBehindAnEqualsSignOrBeEmpty) {
    EXPECT_EQ(Parse({L"--set=A=b=c"}).Value(L"--set"), L"A=b=c");
    EXPECT_EQ(Parse({L"--set="}).Value(L"--set"), L"");
    EXPECT_EQ(Parse({L"--set", L""}).Value(L"--set"), L"");
    EXPECT_EQ(Parse({}).Value(L"--set"), std::nullopt);
}

TEST(CommandWords, AnOptionMayBeRepeated) {
    const CommandWords words = Parse({L"--set", L"A=1", L"--set", L"B=2"});
    EXPECT_EQ(words.Values(L"--set"), (Words{L"A=1", L"B=2"}));
    EXPECT_EQ(words.Value(L"--set"), L"B=2") << "where one counts, it is the last";
}

TEST(CommandWords, AValueMayLookLikeAnOption) {
    EXPECT_EQ(Parse({L"--set", L"--json"}).Value(L"--set"), L"--json");
}

TEST(CommandWords, BehindTwoDashesAllWordsAreOperands) {
    EXPECT_EQ(Parse({L"--json", L"--", L"-x", L"--"}).operands(), (Words{L"-x", L"--"}));
}

TEST(CommandWords, ADashAloneIsAnOperand) {
    EXPECT_EQ(Parse({L"-", L""}).operands(), (Words{L"-", L""}));
}

TEST(CommandWords, RefusesWhatIsUnknownOrIncomplete) {
    EXPECT_EQ(RefusalOf({L"--jsn"}), "unknown option --jsn");
    EXPECT_EQ(RefusalOf({L"--jsn=1"}), "unknown option --jsn");
    EXPECT_EQ(RefusalOf({L"--limit"}), "--limit needs a value: N");
    EXPECT_EQ(RefusalOf({L"--json=yes"}), "--json takes no value");
}

TEST(CommandWords, NumbersAreWholeAndPositive) {
    EXPECT_EQ(Parse({L"--limit", L"2147483647"}).Number(L"--limit"), 2147483647);
    for (const wchar_t* bad : {L"0", L"-1", L"1.5", L"x", L"", L"2147483648", L"99999999999999999999"})
        EXPECT_NE(RefusalOf({L"--limit", bad}), "not refused") << bad;
}

}  // namespace
}  // namespace zu::runner::commands
