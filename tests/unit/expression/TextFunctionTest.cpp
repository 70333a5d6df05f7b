#include <gtest/gtest.h>

#include "portable/text/CodePage.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(TextFunction, ChangesCaseByTheCodePage) {
    EXPECT_EQ(Shown(u"UPPER('äöü') = 'ÄÖÜ'"), "TRUE");
    EXPECT_EQ(Shown(u"LOWER('ÄÖÜß')= 'äöüß'"), "TRUE");
    RecordBuilder builder;
    builder.layout.codePage = text::CodePage::Find(866);
    builder.Add("C", Storage::Character, 6).Finish();
    builder.Set("C", *builder.layout.codePage->Encode(u"имя"));
    EXPECT_TRUE(Program::Compile(u"UPPER(C) = 'ИМЯ'", builder.layout).Test(builder.row()));
}

TEST(TextFunction, CapitalisesWords) {
    EXPECT_EQ(Shown(u"PROPER('o''brien AND sons-in-law 3rd')"), "\"O'brien And Sons-In-Law 3rd\"");
}

TEST(TextFunction, TrimsBlanks) {
    EXPECT_EQ(Shown(u"LTRIM('  a ')"), "\"a \"");
    EXPECT_EQ(Shown(u"RTRIM('  a ')"), "\"  a\"");
    EXPECT_EQ(Shown(u"ALLTRIM('   ')"), "\"\"");
    EXPECT_EQ(Shown(u"ALLTRIM(CUSTOMER)"), "\"Miller & Sons\"");
}

TEST(TextFunction, CutsWithinTheText) {
    EXPECT_EQ(Shown(u"LEFT('abc', 2)"), "\"ab\"");
    EXPECT_EQ(Shown(u"LEFT('abc', 9)"), "\"abc\"");
    EXPECT_EQ(Shown(u"LEFT('abc', 0)"), "\"\"");
    EXPECT_EQ(Shown(u"LEFT('abc', -1)"), "\"\"");
    EXPECT_EQ(Shown(u"LEFT('abc', 1e300)"), "\"abc\"");
    EXPECT_EQ(Shown(u"RIGHT('abc', 2)"), "\"bc\"");
    EXPECT_EQ(Shown(u"RIGHT('abc', 9)"), "\"abc\"");
    EXPECT_EQ(Shown(u"RIGHT('abc', 0)"), "\"\"");
    EXPECT_EQ(Shown(u"SUBSTR('abc', 2)"), "\"bc\"");
    EXPECT_EQ(Shown(u"SUBSTR('abc', 2, 1)"), "\"b\"");
    EXPECT_EQ(Shown(u"SUBSTR('abc', 9, 1)"), "\"\"");
    EXPECT_EQ(Shown(u"SUBSTR('abc', 0, 2)"), "\"\"");
    EXPECT_EQ(Shown(u"SUBSTR('abc', 2, -1)"), "\"\"");
    EXPECT_EQ(Shown(u"MID('abc', 3, 99)"), "\"c\"");
}

TEST(TextFunction, PadsAndRepeats) {
    EXPECT_EQ(Shown(u"PADL('abc', 5)"), "\"  abc\"");
    EXPECT_EQ(Shown(u"PADR('abc', 5, 'xy')"), "\"abcxx\"");
    EXPECT_EQ(Shown(u"PADC('abc', 6, '-')"), "\"-abc--\"");
    EXPECT_EQ(Shown(u"PADL('abc', 2)"), "\"ab\"");
    EXPECT_EQ(Shown(u"PADL('abc', 5, '')"), "\"  abc\"");
    EXPECT_EQ(Shown(u"REPLICATE('ab', 0)"), "\"\"");
    EXPECT_EQ(Shown(u"REPLICATE('', 9999999)"), "\"\"");
    EXPECT_EQ(Shown(u"SPACE(-3)"), "\"\"");
    EXPECT_EQ(Shown(u"SPACE(2.9)"), "\"  \"");
}

TEST(TextFunction, FindsPositions) {
    EXPECT_EQ(Shown(u"AT('a', 'banana')"), "2");
    EXPECT_EQ(Shown(u"AT('a', 'banana', 3)"), "6");
    EXPECT_EQ(Shown(u"AT('a', 'banana', 4)"), "0");
    EXPECT_EQ(Shown(u"AT('a', 'banana', 0)"), "0");
    EXPECT_EQ(Shown(u"AT('', 'banana')"), "0");
    EXPECT_EQ(Shown(u"AT('ana', 'banana', 2)"), "4");
    EXPECT_EQ(Shown(u"RAT('a', 'banana')"), "6");
    EXPECT_EQ(Shown(u"RAT('a', 'banana', 3)"), "2");
    EXPECT_EQ(Shown(u"RAT('b', 'banana', 2)"), "0");
    EXPECT_EQ(Shown(u"INSTR('banana', 'n')"), "3");
    EXPECT_EQ(Shown(u"INSTR(4, 'banana', 'n')"), "5");
    EXPECT_EQ(Shown(u"INSTR(0, 'banana', 'n')"), "0");
    EXPECT_EQ(Shown(u"INSTR(99, 'banana', 'n')"), "0");
}

TEST(TextFunction, Replaces) {
    EXPECT_EQ(Shown(u"STRTRAN('banana', 'an', 'AN')"), "\"bANANa\"");
    EXPECT_EQ(Shown(u"STRTRAN('banana', 'a')"), "\"bnn\"");
    EXPECT_EQ(Shown(u"STRTRAN('banana', '')"), "\"banana\"");
    EXPECT_EQ(Shown(u"STUFF('abcdef', 3, 0, '-')"), "\"ab-cdef\"");
    EXPECT_EQ(Shown(u"STUFF('abcdef', 9, 2, '-')"), "\"abcdef-\"");
    EXPECT_EQ(Shown(u"STUFF('abcdef', 1, 99, '')"), "\"\"");
}

TEST(TextFunction, TellsKindsOfCharacters) {
    EXPECT_EQ(Shown(u"ISALPHA('ä')"), "TRUE");
    EXPECT_EQ(Shown(u"ISALPHA('')"), "FALSE");
    EXPECT_EQ(Shown(u"ISUPPER('Äx')"), "TRUE");
    EXPECT_EQ(Shown(u"ISUPPER('x')"), "FALSE");
    EXPECT_EQ(Shown(u"ISLOWER('ä')"), "TRUE");
    EXPECT_EQ(Shown(u"ISLOWER('Ä')"), "FALSE");
    EXPECT_EQ(Shown(u"ISDIGIT('9')"), "TRUE");
    EXPECT_EQ(Shown(u"ISDIGIT('x9')"), "FALSE");
}

TEST(TextFunction, ConvertsCodes) {
    EXPECT_EQ(Shown(u"CHR(228) = 'ä'"), "TRUE");
    EXPECT_EQ(Shown(u"ASC('€')"), "128");
    EXPECT_EQ(Shown(u"ASC('')"), "0");
    EXPECT_EQ(Shown(u"CHR(256)"), "NULL");
    EXPECT_EQ(Shown(u"CHR(-1)"), "NULL");
    EXPECT_EQ(Shown(u"LEN(CHR(0))"), "1");
}

TEST(TextFunction, SoundsLikeTheCensusRules) {
    EXPECT_EQ(Shown(u"SOUNDEX('Robert')"), "\"R163\"");
    EXPECT_EQ(Shown(u"SOUNDEX('Ashcraft')"), "\"A261\"");
    EXPECT_EQ(Shown(u"SOUNDEX('Tymczak')"), "\"T522\"");
    EXPECT_EQ(Shown(u"SOUNDEX('Pfister')"), "\"P236\"");
    EXPECT_EQ(Shown(u"SOUNDEX('  Lee ')"), "\"L000\"");
    EXPECT_EQ(Shown(u"SOUNDEX('')"), "\"0000\"");
}

TEST(TextFunction, TurnsTheOrderRound) {
    EXPECT_EQ(Shown(u"DESCEND(42)"), "-42");
    EXPECT_EQ(Shown(u"DESCEND(.T.)"), "FALSE");
    EXPECT_EQ(Shown(u"DESCEND(ORDERED)"), "2771467");
    EXPECT_EQ(Shown(u"DESCEND(ORDERED) > DESCEND(ORDERED + 1)"), "TRUE");
    EXPECT_EQ(Value(u"DESCEND('a' + CHR(0))").text, std::string("\x9F\0", 2));
    EXPECT_EQ(Value(u"DESCEND(ORDERED)").type, Type::Number);
}

}  // namespace
}  // namespace zu::expression::testing
