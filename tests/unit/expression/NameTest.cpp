#include <gtest/gtest.h>

#include "portable/error/Error.h"
#include "portable/text/CodePage.h"
#include "portable/text/Utf.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

std::string FaultOf(const RecordLayout& layout, std::u16string_view source) {
    try {
        Program::Compile(source, layout);
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Syntax);
        return error.what();
    }
    return "";
}

TEST(Name, IsFoundWithoutRegardToCase) {
    EXPECT_EQ(Shown(u"id"), "42");
    EXPECT_EQ(Shown(u"Country"), "\"DE\"");
    RecordBuilder builder;
    builder.Add("größe", Storage::NumberText, 4).Finish();
    EXPECT_EQ(Program::Compile(u"GRÖSSE", RecordBuilder().Add("GRÖSSE", Storage::NumberText, 4).layout)
                  .singleField(),
              0U);
    EXPECT_EQ(Program::Compile(u"GRÖßE", builder.layout).singleField(), 0U);
}

TEST(Name, MayHaveTheTablesOwnNameInFront) {
    EXPECT_EQ(Shown(u"orders.ID"), "42");
    EXPECT_EQ(Shown(u"ORDERS->ID"), "42");
    EXPECT_EQ(Shown(u"[orders].[id]"), "42");
    EXPECT_EQ(Shown(u"CUSTOMERS.ID"),
              "expected \"ORDERS\" in front of the field, found \"CUSTOMERS\" (character 1)");
}

TEST(Name, MayHaveAnyTableInFrontWhereTheLayoutHasNoName) {
    RecordBuilder builder = SampleRecord();
    builder.layout.tableName.clear();
    EXPECT_EQ(Program::Compile(u"ANY.ID", builder.layout).singleField(), 0U);
}

TEST(Name, OfATableWithBlanksIsWrittenWithUnderscores) {
    RecordBuilder builder = SampleRecord();
    builder.layout.tableName = "expense reports";
    EXPECT_EQ(Program::Compile(u"Expense_Reports.ID", builder.layout).singleField(), 0U);
    EXPECT_EQ(Program::Compile(u"[expense reports].ID", builder.layout).singleField(), 0U);
}

TEST(Name, OfMoreThanTenCharactersStandsForItsFirstTen) {
    RecordBuilder builder;
    builder.Add("DATESUBMIT", Storage::DateText, 8).Add("EMPLOYEEID", Storage::NumberText, 5).Finish();
    EXPECT_EQ(Program::Compile(u"datesubmitted", builder.layout).singleField(), 0U);
    EXPECT_EQ(Program::Compile(u"datesubmi", RecordBuilder().Add("DATESUBMI", Storage::DateText, 8).layout)
                  .singleField(),
              0U);
    EXPECT_NE(FaultOf(builder.layout, u"datesubmx"), "");
}

TEST(Name, IsFoundWholeBeforeItIsShortened) {
    RecordBuilder builder;
    builder.Add("LONGNAMEXY", Storage::NumberText, 5).Add("LONGNAMEXYZ", Storage::NumberText, 5).Finish();
    EXPECT_EQ(Program::Compile(u"LONGNAMEXYZ", builder.layout).singleField(), 1U);
    EXPECT_EQ(Program::Compile(u"LONGNAMEXYA", builder.layout).singleField(), 0U);
}

TEST(Name, ThatIsUnknownSuggestsTheNearestOne) {
    EXPECT_EQ(Shown(u"CUSTOMRE = 'x'"),
              "expected the name of a field of ORDERS (perhaps CUSTOMER), found \"CUSTOMRE\" (character 1)");
    EXPECT_EQ(Shown(u"1 + XYZZY"), "expected the name of a field of ORDERS, found \"XYZZY\" (character 5)");
    EXPECT_EQ(Shown(u"ORDERS.AMONT"),
              "expected the name of a field of ORDERS (perhaps AMOUNT), found \"AMONT\" (character 8)");
    EXPECT_EQ(Shown(u"UPER('a')"),
              "expected the name of a function (perhaps UPPER), found \"UPER\" (character 1)");
    EXPECT_EQ(Shown(u"FROBNICATE(1)"), "expected the name of a function, found \"FROBNICATE\" (character 1)");
}

TEST(Name, OfAFieldWithBinaryDataIsRefused) {
    EXPECT_EQ(Shown(u"PICTURE IS NULL"),
              "expected a field with a text, number, date or logical, found PICTURE, which holds binary data "
              "(character 1)");
}

TEST(Name, InTheCodePageOfAnIndexFileIsUnderstood) {
    RecordBuilder builder;
    builder.layout.codePage = text::CodePage::Find(866);
    builder.Add("ИМЯ", Storage::Character, 10).Finish();
    const auto bytes = builder.layout.codePage->Encode(u"UPPER(имя)");
    ASSERT_TRUE(bytes);
    EXPECT_EQ(Program::CompileBytes(*bytes, builder.layout).canonical(), "UPPER(ИМЯ)");
}

TEST(Name, OfAFieldOutsideItsRecordIsAMistakeOfTheCaller) {
    RecordBuilder builder = SampleRecord();
    builder.layout.recordLength = 20;
    EXPECT_THROW(Program::Compile(u"CUSTOMER", builder.layout), Error);
    RecordBuilder flags = SampleRecord();
    flags.layout.recordLength = flags.layout.nullFlagsOffset;
    EXPECT_THROW(Program::Compile(u"REGION", flags.layout), Error);
}

}  // namespace
}  // namespace zu::expression::testing
