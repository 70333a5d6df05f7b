#include "host/expression/Lexer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "portable/error/Error.h"

namespace zu::expression {
namespace {

std::vector<TokenKind> Kinds(std::u16string_view source) {
    std::vector<TokenKind> kinds;
    for (const Token& token : Tokenize(source))
        kinds.push_back(token.kind);
    kinds.pop_back();
    return kinds;
}

std::size_t FaultPosition(std::u16string_view source) {
    try {
        Tokenize(source);
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Syntax);
        return error.position().value_or(9999);
    }
    return 9998;
}

using K = TokenKind;

TEST(Lexer, ReadsOperatorsOfTwoCharactersAsOne) {
    EXPECT_EQ(Kinds(u"<= >= <> != == -> **"), (std::vector{K::LessEqual, K::GreaterEqual, K::NotEqual,
                                                           K::NotEqual, K::Equal, K::Arrow, K::Caret}));
}

TEST(Lexer, TakesWordsInAnyCaseAndBetweenPoints) {
    EXPECT_EQ(Kinds(u"and Or .NOT. .and. like Between in is null TRUE .t. .N."),
              (std::vector{K::And, K::Or, K::Not, K::And, K::Like, K::Between, K::In, K::Is, K::Null, K::True,
                           K::True, K::False}));
}

TEST(Lexer, PartsNumbersFromThePointsOfAnOperator) {
    EXPECT_EQ(Kinds(u"1.AND.2"), (std::vector{K::Number, K::And, K::Number}));
    EXPECT_EQ(Kinds(u"A=1.or.B"), (std::vector{K::Name, K::Equal, K::Number, K::Or, K::Name}));
    EXPECT_EQ(Tokenize(u"1.5")[0].digits, "1.5");
    EXPECT_EQ(Tokenize(u".5e-3")[0].digits, ".5e-3");
    EXPECT_EQ(Tokenize(u"12.")[0].digits, "12.");
}

TEST(Lexer, ReadsAPointBetweenNamesAsQualification) {
    EXPECT_EQ(Kinds(u"ORDERS.ID"), (std::vector{K::Name, K::Dot, K::Name}));
    EXPECT_EQ(Kinds(u"ORDERS->ID"), (std::vector{K::Name, K::Arrow, K::Name}));
}

TEST(Lexer, HalvesDoubledQuotationMarks) {
    EXPECT_EQ(Tokenize(u"'it''s'")[0].text, u"it's");
    EXPECT_EQ(Tokenize(u"\"a\"\"\"")[0].text, u"a\"");
    EXPECT_EQ(Tokenize(u"[a]]b]")[0].text, u"a]b");
    EXPECT_EQ(Tokenize(u"''")[0].text, u"");
}

TEST(Lexer, TakesTheNumberSignForADateOnlyWhereAValueMayStand) {
    EXPECT_EQ(Kinds(u"A # #2024-01-31#"), (std::vector{K::Name, K::NotEqual, K::Date}));
    EXPECT_EQ(Kinds(u"(A)#1"),
              (std::vector{K::LeftParenthesis, K::Name, K::RightParenthesis, K::NotEqual, K::Number}));
    EXPECT_EQ(Kinds(u"#2024-01-31#"), (std::vector{K::Date}));
}

TEST(Lexer, KnowsLettersOfAllAlphabetsInNames) {
    EXPECT_EQ(Tokenize(u"Größe_1 ")[0].text, u"Größe_1");
    EXPECT_EQ(Kinds(u"ИМЯ = 1"), (std::vector{K::Name, K::Equal, K::Number}));
}

TEST(Lexer, SkipsBlanksOfEveryKind) {
    EXPECT_EQ(Kinds(u"\t1\r\n \u00A0+\u30002"), (std::vector{K::Number, K::Plus, K::Number}));
}

TEST(Lexer, NamesThePositionOfFaults) {
    EXPECT_EQ(FaultPosition(u"A = \"abc"), 8U);
    EXPECT_EQ(FaultPosition(u"A = {2024-01-31"), 15U);
    EXPECT_EQ(FaultPosition(u"A = {2024-02-30}"), 4U);
    EXPECT_EQ(FaultPosition(u"A = 12x"), 6U);
    EXPECT_EQ(FaultPosition(u"A ~ 1"), 2U);
    EXPECT_EQ(FaultPosition(u"A = [ ]"), 4U);
    EXPECT_EQ(FaultPosition(u"A = \\"), 4U);
}

TEST(Lexer, RefusesTextsThatAreTooLong) {
    EXPECT_EQ(Tokenize(std::u16string(kMaxSourceLength, u' ')).size(), 1U);
    EXPECT_EQ(FaultPosition(std::u16string(kMaxSourceLength + 1, u' ')), kMaxSourceLength);
}

TEST(Lexer, ReadsNulsAsUnknownCharactersAndNotAsTheEnd) {
    EXPECT_EQ(FaultPosition(std::u16string_view(u"A\0B", 3)), 1U);
}

}  // namespace
}  // namespace zu::expression
