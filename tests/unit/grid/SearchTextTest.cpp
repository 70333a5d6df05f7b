#include "portable/grid/SearchText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zu::grid {
namespace {

TEST(PrefixSearch, ATextLongerThanTheValueNeverMatches) {
    EXPECT_FALSE(BeginsWith(u"abc", u"abcd"));
    EXPECT_FALSE(BeginsWith(u"", u"a"));
}

TEST(PrefixSearch, LeadingBlanksAndCaseDoNotMatter) {
    EXPECT_TRUE(BeginsWith(WithoutLeadingBlanks(u"  abc"), u"AB"));
    EXPECT_TRUE(BeginsWith(WithoutLeadingBlanks(u"\u00c4rger"), u"\u00e4r"));
    EXPECT_FALSE(BeginsWith(WithoutLeadingBlanks(u"xabc"), u"AB"));
}

TEST(PrefixSearch, BlanksInTheSearchTextCount) {
    EXPECT_FALSE(BeginsWith(WithoutLeadingBlanks(u"  abc"), u" a"));
    EXPECT_EQ(WithoutLeadingBlanks(u"   "), u"");
    EXPECT_EQ(WithoutLeadingBlanks(u"\ta"), u"\ta");
}

TEST(PatternSearch, CoversTheWholeValue) {
    EXPECT_FALSE(MatchesPattern(u"abc", u"ab"));
    EXPECT_TRUE(MatchesPattern(u"abc", u"ab*"));
    EXPECT_TRUE(MatchesPattern(u"abc", u"*c"));
    EXPECT_FALSE(MatchesPattern(u"abc", u"*b"));
    EXPECT_TRUE(MatchesPattern(u"", u""));
    EXPECT_TRUE(MatchesPattern(u"", u"*"));
}

TEST(PatternSearch, CountsCase) {
    EXPECT_FALSE(MatchesPattern(u"abc", u"AB*"));
    EXPECT_TRUE(MatchesPattern(u"ABC", u"AB*"));
}

TEST(PatternSearch, AQuestionMarkIsOneCharacterAndANumberSignOneDigit) {
    EXPECT_TRUE(MatchesPattern(u"a1", u"?#"));
    EXPECT_FALSE(MatchesPattern(u"1a", u"?#"));
    EXPECT_FALSE(MatchesPattern(u"a", u"?#"));
    EXPECT_FALSE(MatchesPattern(u"\u0661", u"#"));
}

TEST(PatternSearch, ListsTakeOneOfTheirCharacters) {
    EXPECT_TRUE(MatchesPattern(u"b", u"[abc]"));
    EXPECT_FALSE(MatchesPattern(u"d", u"[abc]"));
    EXPECT_TRUE(MatchesPattern(u"m9", u"[a-z][0-9]"));
    EXPECT_FALSE(MatchesPattern(u"M9", u"[a-z][0-9]"));
    EXPECT_TRUE(MatchesPattern(u"-", u"[-a]"));
    EXPECT_TRUE(MatchesPattern(u"-", u"[a-]"));
    EXPECT_TRUE(MatchesPattern(u"*?#[", u"[*][?][#][[]"));
}

TEST(PatternSearch, ListsWithAnExclamationMarkTakeAnyOtherCharacter) {
    EXPECT_TRUE(MatchesPattern(u"d", u"[!abc]"));
    EXPECT_FALSE(MatchesPattern(u"b", u"[!abc]"));
    EXPECT_FALSE(MatchesPattern(u"", u"[!abc]"));
    EXPECT_TRUE(MatchesPattern(u"!", u"!"));
    EXPECT_TRUE(MatchesPattern(u"!", u"[a!]"));
}

TEST(PatternSearch, UnfinishedAndEmptyListsAreHarmless) {
    EXPECT_TRUE(MatchesPattern(u"[ab", u"[ab"));
    EXPECT_TRUE(MatchesPattern(u"ab", u"a[]b"));
    EXPECT_TRUE(MatchesPattern(u"]", u"]"));
}

TEST(PatternSearch, AsterisksGoBackAndTakeMore) {
    EXPECT_TRUE(MatchesPattern(u"aXbXc", u"*X*c"));
    EXPECT_TRUE(MatchesPattern(u"ababab", u"*ab"));
    EXPECT_TRUE(MatchesPattern(u"mississippi", u"m*iss*p?"));
    EXPECT_FALSE(MatchesPattern(u"mississippi", u"m*iss*q?"));
}

TEST(PatternSearch, ManyAsterisksEndInTime) {
    const std::u16string value(20'000, u'a');
    std::u16string pattern;
    for (int i = 0; i < 200; ++i)
        pattern += u"a*";
    EXPECT_FALSE(MatchesPattern(value, pattern + u"b"));
    EXPECT_TRUE(MatchesPattern(value, pattern));
}

std::vector<Row> Visited(Row start, Row count, bool loop) {
    std::vector<Row> visited;
    EXPECT_EQ(FindNext(start, count, loop,
                       [&](Row record) {
                           visited.push_back(record);
                           return false;
                       }),
              std::nullopt);
    return visited;
}

TEST(FindNext, ScansBehindTheStartOnly) {
    EXPECT_EQ(Visited(1, 5, false), (std::vector<Row>{2, 3, 4}));
    EXPECT_EQ(Visited(-1, 3, false), (std::vector<Row>{0, 1, 2}));
    EXPECT_EQ(Visited(4, 5, false), (std::vector<Row>{}));
}

TEST(FindNext, LoopsUpToAndWithTheStart) {
    EXPECT_EQ(Visited(1, 4, true), (std::vector<Row>{2, 3, 0, 1}));
    EXPECT_EQ(Visited(-1, 2, true), (std::vector<Row>{0, 1}));
    EXPECT_EQ(Visited(9, 2, true), (std::vector<Row>{0, 1}));
}

TEST(FindNext, StopsAtTheFirstMatch) {
    EXPECT_EQ(FindNext(0, 9, false, [](Row record) { return record % 4 == 0; }), 4);
    EXPECT_EQ(FindNext(8, 9, true, [](Row record) { return record % 4 == 0; }), 0);
}

}  // namespace
}  // namespace zu::grid
