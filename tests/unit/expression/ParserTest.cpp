#include "host/expression/Parser.h"

#include <gtest/gtest.h>

#include <string>

#include "portable/error/Error.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::string Form(std::u16string_view source) {
    const RecordBuilder builder = SampleRecord();
    return Program::Compile(source, builder.layout).canonical();
}

std::string Repeat(const std::string& text, std::size_t count) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    return out;
}

std::string CompileFault(const std::string& ascii) {
    try {
        Form(std::u16string(ascii.begin(), ascii.end()));
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Syntax);
        return error.what();
    }
    return "";
}

TEST(Parser, BindsAndTighterThanOrAndNotTighterThanAnd) {
    EXPECT_EQ(Form(u"PAID OR PAID AND PAID"), "(PAID OR (PAID AND PAID))");
    EXPECT_EQ(Form(u"NOT PAID AND PAID"), "(NOT(PAID) AND PAID)");
    EXPECT_EQ(Form(u"NOT ID = 1"), "NOT((ID=1))");
}

TEST(Parser, BindsArithmeticTighterThanComparisons) {
    EXPECT_EQ(Form(u"ID + 1 * 2 = 3 - 4"), "((ID+(1*2))=(3-4))");
    EXPECT_EQ(Form(u"ID - 1 - 2"), "((ID-1)-2)");
    EXPECT_EQ(Form(u"ID / 2 * 3"), "((ID/2)*3)");
}

TEST(Parser, BindsThePowerTighterThanTheSignInFront) {
    EXPECT_EQ(Form(u"-ID ^ 2"), "-((ID^2))");
    EXPECT_EQ(Form(u"ID ^ -2"), "(ID^-2)");
    EXPECT_EQ(Form(u"2 ^ 3 ^ 2"), "((2^3)^2)");
    EXPECT_EQ(Form(u"ID * -QTY"), "(ID*-(QTY))");
    EXPECT_EQ(Form(u"ID - -5"), "(ID--5)");
}

TEST(Parser, ReadsTheWordsOfSqlAsFunctions) {
    EXPECT_EQ(Form(u"ID BETWEEN 1 AND 2 AND PAID"), "(BETWEEN(ID,1,2) AND PAID)");
    EXPECT_EQ(Form(u"ID NOT BETWEEN 1 AND 2"), "NOT(BETWEEN(ID,1,2))");
    EXPECT_EQ(Form(u"ID + 1 IN (1, 2)"), "INLIST((ID+1),1,2)");
    EXPECT_EQ(Form(u"NOT ID NOT IN (1)"), "NOT(NOT(INLIST(ID,1)))");
    EXPECT_EQ(Form(u"NOTE IS NOT NULL"), "NOT(ISNULL(NOTE))");
    EXPECT_EQ(Form(u"NOTE LIKE 'a' + 'b'"), "LIKE(NOTE,(\"a\"+\"b\"))");
}

TEST(Parser, JoinsChainsOfOneOperatorIntoOneNode) {
    EXPECT_EQ(Form(u"PAID AND PAID AND PAID"), "(PAID AND PAID AND PAID)");
    EXPECT_EQ(Form(u"(PAID OR PAID) OR PAID"), "((PAID OR PAID) OR PAID)");
}

TEST(Parser, TakesWordsOfOperatorsAsFieldNamesBehindTheTable) {
    RecordBuilder builder;
    builder.Add("LIKE", Storage::NumberText, 5).Add("AND", Storage::NumberText, 5).Finish();
    EXPECT_EQ(Program::Compile(u"like + ORDERS.and", builder.layout).canonical(), "(LIKE+AND)");
    EXPECT_EQ(Program::Compile(u"[and] IN (like)", builder.layout).type(), Type::Boolean);
}

TEST(Parser, SaysWhatIsMissing) {
    EXPECT_EQ(CompileFault("ID ="), "expected a value, found the end (character 5)");
    EXPECT_EQ(CompileFault(""), "expected a value, found the end (character 1)");
    EXPECT_EQ(CompileFault("(ID = 1"), "expected \")\" or an operator, found the end (character 8)");
    EXPECT_EQ(CompileFault("ID = 1)"), "expected an operator or the end, found \")\" (character 7)");
    EXPECT_EQ(CompileFault("ID 1"), "expected an operator or the end, found \"1\" (character 4)");
    EXPECT_EQ(CompileFault("LEFT(CUSTOMER 1)"), "expected \",\" or \")\", found \"1\" (character 15)");
    EXPECT_EQ(CompileFault("ID BETWEEN 1 OR 2"),
              "expected AND between the bounds of BETWEEN, found \"OR\" (character 14)");
    EXPECT_EQ(CompileFault("ID IN 5"), "expected \"(\" behind IN, found \"5\" (character 7)");
    EXPECT_EQ(CompileFault("ID IS 5"), "expected NULL or NOT NULL behind IS, found \"5\" (character 7)");
    EXPECT_EQ(CompileFault("ORDERS.5"), "expected an operator or the end, found \".5\" (character 7)");
    EXPECT_EQ(CompileFault("ORDERS. + 1"), "expected the name of a field, found \"+\" (character 9)");
    EXPECT_EQ(CompileFault("AND PAID"), "expected a value, found \"AND\" (character 1)");
}

TEST(Parser, TakesLongChainsOfAndAndOr) {
    std::string source = "ID = 1";
    for (int i = 0; i < 3000; ++i)
        source += i % 2 == 0 ? " OR ID = 2" : " OR ID=3";
    EXPECT_EQ(CompileFault(source), "");
}

TEST(Parser, RefusesWhatIsNestedTooDeeply) {
    const std::string message =
        "expected at most 250 operators and parentheses inside one another, found more";
    EXPECT_EQ(CompileFault(Repeat("(", 240) + "ID" + Repeat(")", 240)), "");
    for (const std::string& source :
         {Repeat("(", 30000) + "ID" + Repeat(")", 30000), Repeat("-", 60000) + "ID",
          Repeat("NOT ", 16000) + "PAID", "ID" + Repeat("+1", 30000),
          Repeat("ABS(", 10000) + "1" + Repeat(")", 10000), "2" + Repeat("^2", 30000),
          "ID" + Repeat(" IS NULL", 7000), "2" + Repeat("^-2", 20000), Repeat("+", 60000) + "ID"}) {
        EXPECT_TRUE(CompileFault(source).starts_with(message))
            << source.substr(0, 20) << CompileFault(source);
    }
}

}  // namespace
}  // namespace zu::expression::testing
