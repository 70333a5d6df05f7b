#include "host/expression/Canonical.h"

#include <gtest/gtest.h>

#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::string Form(std::u16string_view source) {
    const RecordBuilder builder = SampleRecord();
    return Program::Compile(source, builder.layout).canonical();
}

TEST(Canonical, IsTheSameForDifferentSpelling) {
    EXPECT_EQ(Form(u"upper( orders->customer )"), Form(u"UPPER(Customer)"));
    EXPECT_EQ(Form(u"[ID]==1.0"), Form(u"id = 1"));
    EXPECT_EQ(Form(u"ID # 1"), Form(u"ID != 1"));
    EXPECT_EQ(Form(u"ID ** 2"), Form(u"ID^2"));
    EXPECT_EQ(Form(u"TRIM(CUSTOMER)"), Form(u"rtrim(CUSTOMER)"));
    EXPECT_EQ(Form(u"MID(CUSTOMER,1,2)"), Form(u"SUBSTR(CUSTOMER, 1, 2)"));
    EXPECT_EQ(Form(u"ID BETWEEN 1 AND 2"), Form(u"BETWEEN(ID,1,2)"));
    EXPECT_EQ(Form(u"ID IN (1,2)"), Form(u"INLIST(ID,1,2)"));
    EXPECT_EQ(Form(u".NOT.DELETED()"), Form(u"! deleted()"));
    EXPECT_EQ(Form(u"ORDERED = {01/31/2024}"), Form(u"ORDERED = #2024-01-31#"));
    EXPECT_EQ(Form(u"CUSTOMER LIKE 'a%'"), Form(u"LIKE('a%', CUSTOMER)"));
    EXPECT_EQ(Form(u"((ID))"), Form(u"+ID"));
}

TEST(Canonical, DiffersForDifferentMeaning) {
    EXPECT_NE(Form(u"CUSTOMER = 'a'"), Form(u"CUSTOMER = 'A'"));
    EXPECT_NE(Form(u"ID - (1 - 2)"), Form(u"ID - 1 - 2"));
    EXPECT_NE(Form(u"CUSTOMER + COUNTRY"), Form(u"CUSTOMER - COUNTRY"));
    EXPECT_NE(Form(u"STAMP = {2024-01-31}"), Form(u"STAMP = {2024-01-31 00:00:00}"));
}

TEST(Canonical, PutsNamesInBracketsThatAreNoWords) {
    RecordBuilder builder;
    builder.Add("MY FIELD", Storage::Character, 5).Add("A]B", Storage::Character, 5).Finish();
    EXPECT_EQ(Program::Compile(u"[my field]+[a]]b]", builder.layout).canonical(), "([MY FIELD]+[A]]B])");
}

TEST(Canonical, CompilesToItself) {
    for (const auto* source :
         {u"-ID ^ 2 + QTY % 3 > 5 AND NOT PAID OR CUSTOMER $ 'a\"b'", u"ORDERED = {} OR NULL IS NULL",
          u"ID IN (1, -2.5)", u"STAMP > {2024-01-31 13:45:30.250}"}) {
        const RecordBuilder builder = SampleRecord();
        const Program first = Program::Compile(source, builder.layout);
        const Program second = Program::CompileBytes(first.canonical(), builder.layout);
        EXPECT_EQ(first.canonical(), second.canonical());
    }
}

}  // namespace
}  // namespace zu::expression::testing
