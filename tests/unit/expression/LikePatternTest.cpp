#include "host/expression/LikePattern.h"

#include <gtest/gtest.h>

#include <string>

namespace zu::expression {
namespace {

bool Matches(std::string_view text, std::string_view pattern) {
    return MatchesLike(text, pattern, false);
}

TEST(LikePattern, TakesPercentAndStarForAnyCharacters) {
    EXPECT_TRUE(Matches("abc", "%"));
    EXPECT_TRUE(Matches("", "%"));
    EXPECT_TRUE(Matches("abc", "a%c"));
    EXPECT_TRUE(Matches("abc", "*b*"));
    EXPECT_TRUE(Matches("abc", "abc%%"));
    EXPECT_FALSE(Matches("abc", "a%d"));
    EXPECT_FALSE(Matches("abc", "b%"));
}

TEST(LikePattern, TakesUnderscoreAndQuestionMarkForOneCharacter) {
    EXPECT_TRUE(Matches("abc", "a_c"));
    EXPECT_TRUE(Matches("abc", "???"));
    EXPECT_FALSE(Matches("abc", "__"));
    EXPECT_FALSE(Matches("abc", "____"));
    EXPECT_FALSE(Matches("", "_"));
}

TEST(LikePattern, ReturnsToTheLastAnyWhenTheRestDoesNotFit) {
    EXPECT_TRUE(Matches("aXbXc", "%X_"));
    EXPECT_TRUE(Matches("abababc", "%ab%abc"));
    EXPECT_TRUE(Matches("mississippi", "m%iss%p_"));
    EXPECT_FALSE(Matches("mississippi", "m%iss%x_"));
}

TEST(LikePattern, IgnoresPaddingOnBothSides) {
    EXPECT_TRUE(Matches("abc   ", "a_c"));
    EXPECT_TRUE(Matches(std::string_view("abc\0\0", 5), "%c"));
    EXPECT_TRUE(Matches("abc", "abc  "));
}

TEST(LikePattern, CountsCharactersInUtf8) {
    EXPECT_TRUE(MatchesLike("gr\xC3\xBC n", "gr_ n", true));
    EXPECT_FALSE(MatchesLike("gr\xC3\xBC n", "gr__ n", true));
    EXPECT_TRUE(MatchesLike("gr\xC3\xBC n", "gr__ n", false));
}

TEST(LikePattern, EndsSoonForPatternsMadeToTakeLong) {
    const std::string text(3000, 'a');
    std::string pattern;
    for (int i = 0; i < 300; ++i)
        pattern += "%a";
    EXPECT_FALSE(Matches(text, pattern + "b"));
}

TEST(LikePattern, KnowsPatternsThatAreBeginnings) {
    EXPECT_EQ(PrefixOf("abc%"), "abc");
    EXPECT_EQ(PrefixOf("abc**"), "abc");
    EXPECT_EQ(PrefixOf("%"), "");
    EXPECT_FALSE(PrefixOf("abc"));
    EXPECT_FALSE(PrefixOf("a_c%"));
    EXPECT_FALSE(PrefixOf("%c%"));
    EXPECT_FALSE(PrefixOf("abc %"));
}

}  // namespace
}  // namespace zu::expression
