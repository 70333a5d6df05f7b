#include <gtest/gtest.h>

#include "runner/commands/CsvLine.h"
#include "runner/commands/JsonObject.h"
#include "runner/commands/NumberText.h"

namespace zu::runner::commands {
namespace {

TEST(JsonObject, HoldsItsMembersInOrder) {
    EXPECT_EQ(JsonObject().text(), L"{}");
    EXPECT_EQ(JsonObject()
                  .Text(L"a\"", L"x")
                  .Number(L"n", -5)
                  .Truth(L"t", true)
                  .Texts(L"l", {L"1", L"2"})
                  .Raw(L"r", L"null")
                  .text(),
              L"{\"a\\\"\": \"x\", \"n\": -5, \"t\": true, \"l\": [\"1\", \"2\"], \"r\": null}");
    EXPECT_EQ(JsonArray({}), L"[]");
}

TEST(CsvLine, QuotesOnlyWhatNeedsIt) {
    CsvLine line;
    line.Add(L"plain text").Add(L"").Add(L"a,b").Add(L"say \"so\"").Add(L"two\r\nlines");
    EXPECT_EQ(line.text(), L"plain text,,\"a,b\",\"say \"\"so\"\"\",\"two\r\nlines\"");
    line.Clear();
    EXPECT_EQ(line.Add(L"x").text(), L"x");
}

TEST(CsvLine, AnEmptyFirstValueKeepsItsPlace) {
    EXPECT_EQ(CsvLine().Add(L"").Add(L"b").text(), L",b");
}

TEST(NumberText, GroupsDigitsForPeople) {
    EXPECT_EQ(Grouped(0), L"0");
    EXPECT_EQ(Grouped(999), L"999");
    EXPECT_EQ(Grouped(1234567), L"1,234,567");
    EXPECT_EQ(Grouped(-123456), L"-123,456");
    EXPECT_EQ(Counted(1, L"record"), L"1 record");
    EXPECT_EQ(Counted(2000, L"record"), L"2,000 records");
}

}  // namespace
}  // namespace zu::runner::commands
