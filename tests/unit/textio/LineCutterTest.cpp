#include "portable/textio/LineCutter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace zu::textio {
namespace {

std::vector<std::string> Cut(const std::string& line, const std::string& separator = ",",
                             const std::string& quote = "\"") {
    LineCutter<char> cutter(kDelimited, separator, quote);
    cutter.Start(line);
    std::vector<std::string> tokens;
    while (!cutter.isAtEnd())
        tokens.emplace_back(cutter.Next(0));
    return tokens;
}

using Tokens = std::vector<std::string>;

TEST(LineCutter, KeepsSeparatorsInsideQuotes) {
    EXPECT_EQ(Cut("a,\"b,c\",d"), (Tokens{"a", "b,c", "d"}));
}

TEST(LineCutter, TakesADoubledQuoteForOne) {
    EXPECT_EQ(Cut("\"a\"\"b\",c"), (Tokens{"a\"b", "c"}));
    EXPECT_EQ(Cut("\"\"\"\",c"), (Tokens{"\"", "c"}));
    EXPECT_EQ(Cut("\"\"\"a\"\"\""), (Tokens{"\"a\""}));
}

TEST(LineCutter, TakesDoubledQuotesForOneOutsideQuotesToo) {
    EXPECT_EQ(Cut("a\"\"b,c"), (Tokens{"a\"b", "c"}));
    EXPECT_EQ(Cut("a\"\"\"\"\"b"), (Tokens{"a\"\"\"b"}));
}

TEST(LineCutter, LeavesQuotesAloneWhenQuotingIsOff) {
    EXPECT_EQ(Cut("\"a\"\"b\",c", ",", ""), (Tokens{"\"a\"\"b\"", "c"}));
}

TEST(LineCutter, SplitsOnASeparatorOfTwoCharacters) {
    EXPECT_EQ(Cut("1;;2;3", ";;"), (Tokens{"1", "2;3"}));
}

TEST(LineCutter, AMismatchBeginsNoNewMatch) {
    EXPECT_EQ(Cut("aab", "ab"), (Tokens{"aab"}));
    EXPECT_EQ(Cut("xaabyabz", "ab"), (Tokens{"xaaby", "z"}));
    EXPECT_EQ(Cut("aaab", "aab"), (Tokens{"aaab"}));
}

TEST(LineCutter, DropsWhatFollowsTheClosingQuote) {
    EXPECT_EQ(Cut("\"a\"xyz,b"), (Tokens{"a", "b"}));
    EXPECT_EQ(Cut("\"a\"x\"y,b"), (Tokens{"a", "b"}));
}

TEST(LineCutter, EndsTheLastQuotedTokenAtItsQuote) {
    EXPECT_EQ(Cut("a,\"b\""), (Tokens{"a", "b"}));
    EXPECT_EQ(Cut("a,\"b\"xyz"), (Tokens{"a", "b"}));
}

TEST(LineCutter, RunsToTheEndWhenAQuoteIsNeverClosed) {
    EXPECT_EQ(Cut("a,\"b,c"), (Tokens{"a", "b,c"}));
    EXPECT_EQ(Cut("\""), (Tokens{""}));
    EXPECT_EQ(Cut("\"a\"\""), (Tokens{"a\""}));
}

TEST(LineCutter, QuotesOnlyWhereATokenBeginsWithOne) {
    EXPECT_EQ(Cut("a \"b,c\",d"), (Tokens{"a \"b", "c\"", "d"}));
}

TEST(LineCutter, GivesEmptyTokensBetweenSeparators) {
    EXPECT_EQ(Cut(",,a"), (Tokens{"", "", "a"}));
    EXPECT_EQ(Cut("\"\",a"), (Tokens{"", "a"}));
}

TEST(LineCutter, IsAtTheEndBehindALastSeparator) {
    EXPECT_EQ(Cut("a,"), (Tokens{"a"}));
    EXPECT_EQ(Cut(""), Tokens{});
}

TEST(LineCutter, CutsByWidths) {
    LineCutter<char> cutter(kFixed, "", "");
    cutter.Start("abcdefgh");
    EXPECT_EQ(cutter.Next(3), "abc");
    EXPECT_EQ(cutter.Next(0), "");
    EXPECT_EQ(cutter.Next(1), "d");
    EXPECT_FALSE(cutter.isAtEnd());
    EXPECT_EQ(cutter.Next(11), "efgh");
    EXPECT_TRUE(cutter.isAtEnd());
    EXPECT_EQ(cutter.Next(3), "");
}

TEST(LineCutter, GivesNothingWithoutAPreset) {
    LineCutter<char> cutter(kNoPreset, ",", "\"");
    cutter.Start("a,b");
    EXPECT_EQ(cutter.Next(1), "");
    EXPECT_EQ(cutter.Next(1), "");
    EXPECT_FALSE(cutter.isAtEnd());
}

TEST(LineCutter, CutsWideCharactersTheSameWay) {
    LineCutter<char16_t> cutter(kDelimited, u"\u3001", u"\u300C");
    cutter.Start(u"\u300Ca\u3001b\u300C\u3001c");
    EXPECT_EQ(cutter.Next(0), u"a\u3001b");
    EXPECT_EQ(cutter.Next(0), u"c");
    EXPECT_TRUE(cutter.isAtEnd());
}

TEST(LineCutter, CutsLinesOfEveryLengthAsWideOnes) {
    // Bytes are searched several at a time, wide characters one by one.
    std::mt19937 numbers(5);
    for (const auto& [separator, quote] :
         std::vector<std::pair<std::string, std::string>>{{",", "\""}, {";", ""}, {"ab", "'"}, {"a", "a"}}) {
        LineCutter<char> narrow(kDelimited, separator, quote);
        LineCutter<char16_t> wide(kDelimited, std::u16string(separator.begin(), separator.end()),
                                  std::u16string(quote.begin(), quote.end()));
        for (int i = 0; i < 5000; ++i) {
            std::string line;
            const std::string_view choice = numbers() % 2 == 0 ? "ab,;\"'x" : "xyz 123xyz 456xyz 7890,\"";
            for (std::size_t length = numbers() % 60; line.size() < length;)
                line += choice[numbers() % choice.size()];
            const std::u16string wideLine(line.begin(), line.end());
            narrow.Start(line);
            wide.Start(wideLine);
            while (!wide.isAtEnd()) {
                ASSERT_FALSE(narrow.isAtEnd()) << line;
                const std::u16string_view token = wide.Next(0);
                ASSERT_EQ(narrow.Next(0), std::string(token.begin(), token.end())) << line;
            }
            ASSERT_TRUE(narrow.isAtEnd()) << line;
        }
    }
}

}  // namespace
}  // namespace zu::textio
