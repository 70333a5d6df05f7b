#include "host/expression/Fault.h"

#include <gtest/gtest.h>

#include "portable/error/Error.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(Fault, CarriesThePositionFromZeroAndShowsItFromOne) {
    const RecordBuilder builder = SampleRecord();
    try {
        Program::Compile(u"ID = 1 AND AMONT > 3", builder.layout);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Syntax);
        EXPECT_EQ(error.position(), 11U);
        EXPECT_NE(std::string(error.what()).find("(character 12)"), std::string::npos);
    }
}

TEST(Fault, NamesTheNumberOfArguments) {
    EXPECT_EQ(Shown(u"UPPER()"), "expected 1 argument for UPPER, found 0 (character 1)");
    EXPECT_EQ(Shown(u"UPPER('a', 'b')"), "expected 1 argument for UPPER, found 2 (character 1)");
    EXPECT_EQ(Shown(u"SUBSTR('a')"), "expected 2 to 3 arguments for SUBSTR, found 1 (character 1)");
    EXPECT_EQ(Shown(u"INLIST(1)"), "expected 2 or more arguments for INLIST, found 1 (character 1)");
    EXPECT_EQ(Shown(u"DELETED(1)"), "expected 0 arguments for DELETED, found 1 (character 1)");
    EXPECT_EQ(Shown(u"LIKE('a')"), "expected 2 arguments for LIKE, found 1 (character 1)");
}

TEST(Fault, NamesTheTypeOfArguments) {
    EXPECT_EQ(Shown(u"UPPER(ID)"), "expected a text as argument 1 of UPPER, found a number (character 7)");
    EXPECT_EQ(Shown(u"LEFT('a', 'b')"),
              "expected a number as argument 2 of LEFT, found a text (character 11)");
    EXPECT_EQ(Shown(u"YEAR('2024')"), "expected a date as argument 1 of YEAR, found a text (character 6)");
    EXPECT_EQ(Shown(u"IIF(1, 2, 3)"),
              "expected a logical as argument 1 of IIF, found a number (character 5)");
    EXPECT_EQ(Shown(u"IIF(PAID, 2, 'a')"),
              "expected a number as argument 3 of IIF like the others, found a text (character 14)");
    EXPECT_EQ(Shown(u"ID IN (1, 'a')"),
              "expected a number as argument 3 of INLIST like the others, found a text (character 11)");
    EXPECT_EQ(Shown(u"ICASE(1, 2)"),
              "expected a logical as argument 1 of ICASE, found a number (character 7)");
}

TEST(Fault, NamesTheTypesBesideOperators) {
    EXPECT_EQ(Shown(u"ID + 'a'"), "expected a text beside \"+\", found a number (character 1)");
    EXPECT_EQ(Shown(u"'a' * 2"), "expected a number beside \"*\", found a text (character 1)");
    EXPECT_EQ(Shown(u"ORDERED + ORDERED"),
              "expected a number to add to the date, found a date (character 11)");
    EXPECT_EQ(Shown(u"5 - ORDERED"),
              "expected a date on the left of \"-\" as on its right, found a number (character 1)");
    EXPECT_EQ(Shown(u"PAID + 1"),
              "expected a number, a text or a date beside \"+\", found a logical (character 1)");
    EXPECT_EQ(Shown(u"NOT ID"), "expected a logical behind NOT, found a number (character 5)");
    EXPECT_EQ(Shown(u"PAID OR 'a'"), "expected a logical beside OR, found a text (character 9)");
    EXPECT_EQ(Shown(u"-CUSTOMER"), "expected a number behind the sign, found a text (character 2)");
    EXPECT_EQ(Shown(u"5 $ 'a'"), "expected a text on the left of \"$\", found a number (character 1)");
}

TEST(Fault, RefusesNumbersBeyondDoubles) {
    EXPECT_EQ(Shown(u"1e999"), "expected a number below 1.8E308, found \"1e999\" (character 1)");
    EXPECT_EQ(Shown(u"1e-999"), "0");
}

TEST(Fault, RefusesTextsWithoutBounds) {
    EXPECT_TRUE(Shown(u"LEN(SPACE(65535)) = 65535") == "TRUE");
    EXPECT_EQ(Shown(u"SPACE(65536)"), "expected a length of at most 65535 (character 1)");
    EXPECT_EQ(Shown(u"REPLICATE('ab', 40000)"), "expected a length of at most 65535 (character 1)");
    EXPECT_EQ(Shown(u"PADL('', 1e10)"), "expected a length of at most 65535 (character 1)");
    EXPECT_EQ(Shown(u"STRTRAN(SPACE(60000), ' ', 'ab')"), "expected a length of at most 65535 (character 1)");
    EXPECT_EQ(Shown(u"STR(1, 1e9)"), "expected a length of at most 65535 (character 1)");
}

TEST(Fault, SuggestsNamesThatAreNear) {
    EXPECT_EQ(NearestName("AMONT", {"AMOUNT", "COUNT"}), "AMOUNT");
    EXPECT_EQ(NearestName("amuont", {"AMOUNT"}), "AMOUNT");
    EXPECT_EQ(NearestName("X", {"Y"}), "");
    EXPECT_EQ(NearestName("ABCD", {"ABXY"}), "");
    EXPECT_EQ(NearestName("ABCDEF", {"ABXDYF"}), "ABXDYF");
    EXPECT_EQ(NearestName("", {"A"}), "");
}

TEST(Fault, ShortensWhatItQuotes) {
    EXPECT_EQ(Quoted(std::string(100, 'x')), "\"" + std::string(40, 'x') + "...\"");
    EXPECT_EQ(Quoted("\xC3\xA4"), "\"\xC3\xA4\"");
    EXPECT_EQ(Quoted(std::string(39, 'x') + "\xC3\xA4zzz"), "\"" + std::string(39, 'x') + "...\"");
}

}  // namespace
}  // namespace zu::expression::testing
