#include <gtest/gtest.h>

#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::size_t Width(std::u16string_view source) {
    const RecordBuilder builder = SampleRecord();
    return Program::Compile(source, builder.layout).textWidth();
}

std::vector<std::string> Parts(std::u16string_view source) {
    const RecordBuilder builder = SampleRecord();
    return Program::Compile(source, builder.layout).parts();
}

TEST(KeyExpression, HasTheWidthOfItsFields) {
    EXPECT_EQ(Width(u"CUSTOMER"), 30U);
    EXPECT_EQ(Width(u"UPPER(CUSTOMER)"), 30U);
    EXPECT_EQ(Width(u"ALLTRIM(UPPER(CUSTOMER))"), 30U);
    EXPECT_EQ(Width(u"CUSTOMER + COUNTRY"), 32U);
    EXPECT_EQ(Width(u"CUSTOMER - COUNTRY"), 32U);
    EXPECT_EQ(Width(u"COUNTRY+DTOS(ORDERED)+STR(ID,10)"), 20U);
    EXPECT_EQ(Width(u"STR(ID)+STR(QTY)"), 20U);
}

TEST(KeyExpression, HasTheWidthThatFunctionsCutOrFillTo) {
    EXPECT_EQ(Width(u"LEFT(CUSTOMER, 5)"), 5U);
    EXPECT_EQ(Width(u"LEFT(COUNTRY, 5)"), 2U);
    EXPECT_EQ(Width(u"RIGHT(CUSTOMER, 5)"), 5U);
    EXPECT_EQ(Width(u"SUBSTR(CUSTOMER, 3)"), 28U);
    EXPECT_EQ(Width(u"SUBSTR(CUSTOMER, 3, 4)"), 4U);
    EXPECT_EQ(Width(u"SUBSTR(CUSTOMER, 29, 4)"), 2U);
    EXPECT_EQ(Width(u"SUBSTR(CUSTOMER, 40)"), 0U);
    EXPECT_EQ(Width(u"LEFT(CUSTOMER, ID)"), 30U);
    EXPECT_EQ(Width(u"PADL(COUNTRY, 8)"), 8U);
    EXPECT_EQ(Width(u"STR(ID, 6, 2)"), 6U);
    EXPECT_EQ(Width(u"STRZERO(ID, 7)"), 7U);
    EXPECT_EQ(Width(u"DTOS(ORDERED)"), 8U);
    EXPECT_EQ(Width(u"DTOC(ORDERED, 1)"), 8U);
    EXPECT_EQ(Width(u"TTOC(STAMP, 1)"), 14U);
    EXPECT_EQ(Width(u"BINTOC(QTY)"), 4U);
    EXPECT_EQ(Width(u"BINTOC(QTY, 2)"), 2U);
    EXPECT_EQ(Width(u"IIF(PAID, CUSTOMER, 'x')"), 30U);
    EXPECT_EQ(Width(u"SPACE(3) + CHR(65)"), 4U);
    EXPECT_EQ(Width(u"SOUNDEX(CUSTOMER)"), 4U);
    EXPECT_EQ(Width(u"STRTRAN(CUSTOMER, ' ')"), 30U);
}

TEST(KeyExpression, OfAMemoHasNoBound) {
    EXPECT_EQ(Width(u"NOTE"), SIZE_MAX);
}
TEST(KeyExpression, OfAnotherTypeHasNoTextWidth) {
    EXPECT_EQ(Width(u"ID"), 0U);
}

TEST(KeyExpression, NeverGivesATextWiderThanItsWidth) {
    for (const auto* source : {u"CUSTOMER",
                               u"UPPER(CUSTOMER)",
                               u"LTRIM(CUSTOMER)",
                               u"LEFT(CUSTOMER,3)",
                               u"RIGHT(CUSTOMER,3)",
                               u"SUBSTR(CUSTOMER,2,5)",
                               u"SUBSTR(CUSTOMER,29)",
                               u"PADC(COUNTRY,9)",
                               u"STR(AMOUNT,8,2)",
                               u"STRZERO(ID,4)",
                               u"TRANSFORM(AMOUNT)",
                               u"TRANSFORM(AMOUNT,'99,999.99')",
                               u"CSTR(AMOUNT)",
                               u"CSTR(STAMP)",
                               u"DTOC(ORDERED)",
                               u"TTOC(STAMP)",
                               u"CDOW(ORDERED)",
                               u"CMONTH({2024-09-01})",
                               u"STUFF(COUNTRY,1,0,CUSTOMER)",
                               u"CSTR(-1e300)",
                               u"STRTRAN(CUSTOMER,'l','LLL')",
                               u"REPLICATE(COUNTRY,3)",
                               u"MAX(COUNTRY,'zzz')",
                               u"NVL(REGION,'abc')"}) {
        EXPECT_LE(Value(source).text.size(), Width(source)) << Shown(source);
    }
}

TEST(KeyExpression, KeepsThePaddingOfAField) {
    EXPECT_EQ(Value(u"CUSTOMER").text.size(), 30U);
    EXPECT_EQ(Value(u"COUNTRY + CUSTOMER").text.size(), 32U);
    EXPECT_EQ(Shown(u"COUNTRY+DTOS(ORDERED)+STR(ID,10)"), "\"DE20240131        42\"");
    EXPECT_EQ(Shown(u"COUNTRY+DTOS(SHIPPED)+STR(DISCOUNT,5,1)"), "\"DE          0.0\"");
}

TEST(KeyExpression, IsASingleFieldOrNot) {
    const RecordBuilder builder = SampleRecord();
    EXPECT_EQ(Program::Compile(u" orders.customer ", builder.layout).singleField(), 1U);
    EXPECT_EQ(Program::Compile(u"(CUSTOMER)", builder.layout).singleField(), 1U);
    EXPECT_FALSE(Program::Compile(u"UPPER(CUSTOMER)", builder.layout).singleField());
    EXPECT_FALSE(Program::Compile(u"+ID+0", builder.layout).singleField());
}

TEST(KeyExpression, FallsIntoThePartsThatAreJoined) {
    EXPECT_EQ(Parts(u"COUNTRY+DTOS(ORDERED)+STR(ID,10)"),
              (std::vector<std::string>{"COUNTRY", "DTOS(ORDERED)", "STR(ID,10)"}));
    EXPECT_EQ(Parts(u" ( country + Customer ) + LEFT( NOTE , 3 ) "),
              (std::vector<std::string>{"country", "Customer", "LEFT( NOTE , 3 )"}));
    EXPECT_EQ(Parts(u"COUNTRY + (CUSTOMER - COUNTRY)"),
              (std::vector<std::string>{"COUNTRY", "CUSTOMER - COUNTRY"}));
    EXPECT_EQ(Parts(u"ID + QTY"), (std::vector<std::string>{"ID + QTY"}));
    EXPECT_EQ(Parts(u"UPPER(COUNTRY + CUSTOMER)"), (std::vector<std::string>{"UPPER(COUNTRY + CUSTOMER)"}));
}

TEST(KeyExpression, HasPartsThatCompileAlone) {
    const RecordBuilder builder = SampleRecord();
    for (const auto* source :
         {u"((COUNTRY) + (CUSTOMER))", u"(COUNTRY+'a')+('b'+CUSTOMER)", u"COUNTRY+(UPPER(NOTE))"}) {
        for (const std::string& part : Parts(source)) {
            EXPECT_NO_THROW(Program::CompileBytes(part, builder.layout)) << part;
        }
    }
}

TEST(KeyExpression, KnowsWhetherItNeedsMoreThanTheFields) {
    const RecordBuilder builder = SampleRecord();
    EXPECT_TRUE(Program::Compile(u"NOT DELETED() AND ID > 0", builder.layout).usesDeleted());
    EXPECT_FALSE(Program::Compile(u"ID > 0", builder.layout).usesDeleted());
    EXPECT_TRUE(Program::Compile(u"STR(RECNO())", builder.layout).usesRecordNumber());
    EXPECT_FALSE(Program::Compile(u"STR(ID)", builder.layout).usesRecordNumber());
}

TEST(KeyExpression, GivesEmptyDatesAndLogicalsAMark) {
    EXPECT_TRUE(Value(u"SHIPPED").isEmpty);
    EXPECT_EQ(Value(u"SHIPPED").type, Type::Date);
    EXPECT_TRUE(Value(u"CHECKED").isEmpty);
    EXPECT_EQ(Value(u"CHECKED").type, Type::Boolean);
    EXPECT_FALSE(Value(u"ORDERED").isEmpty);
    EXPECT_TRUE(Value(u"IIF(PAID, SHIPPED, ORDERED)").isEmpty);
}

}  // namespace
}  // namespace zu::expression::testing
