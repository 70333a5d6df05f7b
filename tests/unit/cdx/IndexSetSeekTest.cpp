#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "portable/error/Error.h"
#include "tests/unit/cdx/BuiltIndex.h"

namespace zu::dbf::cdx {
namespace {

using expression::Storage;
using technologies::FieldType;
using technologies::KeyCriterion;
using technologies::Value;

constexpr std::int32_t kDay = 2460341;  // 2024-01-31

// Orders of two countries.
TestTable Orders() {
    TestTable table;
    table.Field("COUNTRY", Storage::Character, 3)
        .Field("CITY", Storage::Character, 8)
        .Field("DAY", Storage::DateText, 8)
        .Field("ID", Storage::NumberText, 6)
        .Field("PRICE", Storage::NumberText, 8, 2)
        .Field("N", Storage::Integer32, 4)
        .Field("PAID", Storage::LogicalText, 1)
        .Field("STAMP", Storage::DateTime, 8)
        .Field("Y", Storage::Currency, 8);
    const auto add = [&](const char* country, const char* city, const char* day, const char* id,
                         const char* price, int n, const char* paid, std::int32_t milliseconds) {
        table.Add({country, city, day, id, price, Int32Bytes(n), paid, MomentBytes(kDay, milliseconds),
                   Int64Bytes(std::int64_t{n} * 10000)});
    };
    add("DE", "Bonn", "20240131", "10", "1.50", 5, "T", 0);           // 1
    add("DE", "Bonnie", "20240201", "9", "0.10", -5, "F", 1000);      // 2
    add("DE", "Aachen", "20240131", "11", "-3.00", 7, "T", 1999);     // 3
    add("US", "Boston", "20231231", "12", "1.50", 5, "", 3000);       // 4
    add("US", "", "", "13", "0.00", 0, "F", 5000);                    // 5
    add("D", "Bonn", "20240131", "10", "99999.99", 2000000, "T", 0);  // 6
    return table;
}

// The table must outlive its index.
class IndexSetSeek : public ::testing::Test {
protected:
    static std::vector<TagDefinition> Tags() {
        std::vector<TagDefinition> tags;
        for (const char* field : {"COUNTRY", "CITY", "DAY", "ID", "PRICE", "N", "PAID", "STAMP", "Y"}) {
            tags.push_back({field, field, ""});
        }
        tags.push_back({"UCITY", "UPPER(CITY)", ""});
        tags.push_back({"PLACE", "COUNTRY+CITY", ""});
        tags.push_back({"ALL", "COUNTRY+DTOS(DAY)+STR(ID,6)", ""});
        tags.push_back({"LOOSE", "TRIM(CITY)+COUNTRY", ""});
        TagDefinition back{"BACK", "CITY", ""};
        back.descending = true;
        tags.push_back(back);
        return tags;
    }

    Records Seek(const std::string& tag, const Value& value, bool exact = true) {
        return index.Seek(tag, {{value, exact}});
    }
    ErrorKind SeekError(const std::string& tag, const std::vector<KeyCriterion>& criteria) {
        try {
            index.Seek(tag, criteria);
        } catch (const Error& error) {
            text = error.what();
            return error.kind();
        }
        ADD_FAILURE() << "no error";
        return ErrorKind::Internal;
    }

    TestTable table = Orders();
    BuiltIndex index{table, Tags()};
    std::string text;
};

TEST_F(IndexSetSeek, FindsATextThatIsTheWholeKey) {
    EXPECT_EQ(Seek("CITY", TextValue(u"Bonn")), (Records{1, 6}));
    EXPECT_EQ(Seek("CITY", TextValue(u"Bon")), Records{});
    EXPECT_EQ(Seek("CITY", TextValue(u"bonn")), Records{});
}

TEST_F(IndexSetSeek, FindsATextAsAPrefixInTheOrderOfTheIndex) {
    EXPECT_EQ(Seek("CITY", TextValue(u"Bo"), false), (Records{1, 6, 2, 4}));
    EXPECT_EQ(Seek("CITY", TextValue(u"Bonnie"), false), Records{2});
    EXPECT_EQ(Seek("CITY", TextValue(u"X"), false), Records{});
}

TEST_F(IndexSetSeek, NeverMindsTrailingBlanks) {
    EXPECT_EQ(Seek("CITY", TextValue(u"Bonn      ")), (Records{1, 6}));
    EXPECT_EQ(Seek("CITY", TextValue(u"Bonn   "), false), (Records{1, 6, 2}));
}

TEST_F(IndexSetSeek, FindsNothingForTextsThatTheKeyCannotHold) {
    EXPECT_EQ(Seek("CITY", TextValue(u"Bonn on the Rhine")), Records{});
    EXPECT_EQ(Seek("CITY", TextValue(u"Bonn on the Rhine"), false), Records{});
    EXPECT_EQ(Seek("CITY", TextValue(u"\u4E2D")), Records{}) << "not in the code page";
}

TEST_F(IndexSetSeek, IsNotRestrictedByAnEmptyTextInTheFirstPart) {
    const Records all = index.Order("CITY");
    EXPECT_EQ(all.size(), 6U);
    EXPECT_EQ(Seek("CITY", TextValue(u"")), all);
    EXPECT_EQ(Seek("CITY", TextValue(u"   "), false), all);
    EXPECT_EQ(Seek("N", TextValue(u"")), index.Order("N")) << "also where the key is no text";
    EXPECT_EQ(index.Seek("CITY", {}), all);
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u""), true}, {TextValue(u"Bonn"), true}}), (Records{6, 1}));
}

TEST_F(IndexSetSeek, GoesBackwardsInDescendingTags) {
    EXPECT_EQ(Seek("BACK", TextValue(u"Bo"), false), (Records{4, 2, 6, 1}));
    EXPECT_EQ(Seek("BACK", TextValue(u"Bonn")), (Records{6, 1}));
    EXPECT_EQ(Seek("BACK", TextValue(u"")), index.Order("BACK"));
}

TEST_F(IndexSetSeek, UpperCasesWhatIsSoughtInUpperCasedKeys) {
    EXPECT_EQ(Seek("UCITY", TextValue(u"bonn")), (Records{1, 6}));
    EXPECT_EQ(Seek("UCITY", TextValue(u"bon"), false), (Records{1, 6, 2}));
}

TEST_F(IndexSetSeek, FindsNumbersOfEveryKind) {
    EXPECT_EQ(Seek("PRICE", NumberValue(1.5)), (Records{1, 4}));
    EXPECT_EQ(Seek("PRICE", TextValue(u" 1.50 ")), (Records{1, 4}));
    EXPECT_EQ(Seek("PRICE", IntegerValue(-3)), Records{3});
    Value decimal;
    decimal.kind = Value::Kind::Decimal;
    decimal.decimal = {10, 0, 2, false};
    EXPECT_EQ(Seek("PRICE", decimal), Records{2}) << "0.10";
    Value currency;
    currency.kind = Value::Kind::Currency;
    currency.integer = 15000;
    EXPECT_EQ(Seek("PRICE", currency), (Records{1, 4}));
    EXPECT_EQ(Seek("PRICE", NumberValue(1.5), false), (Records{1, 4})) << "numbers match as a whole";
    EXPECT_EQ(Seek("PRICE", NumberValue(-0.0)), Records{5});
}

TEST_F(IndexSetSeek, FindsIntegersAndNoFractionsInIntegerKeys) {
    EXPECT_EQ(Seek("N", IntegerValue(5)), (Records{1, 4}));
    EXPECT_EQ(Seek("N", NumberValue(-5.0)), Records{2});
    EXPECT_EQ(Seek("N", NumberValue(5.5)), Records{});
    EXPECT_EQ(Seek("N", NumberValue(4.6)), Records{});
    EXPECT_EQ(Seek("N", NumberValue(4294967301.0)), Records{}) << "5 and 2^32";
    EXPECT_EQ(Seek("N", NumberValue(1e300)), Records{});
    EXPECT_EQ(Seek("Y", IntegerValue(5)), (Records{1, 4}));
    EXPECT_EQ(Seek("Y", NumberValue(1e300)), Records{});
}

TEST_F(IndexSetSeek, FindsDatesGivenAsDatesOrTexts) {
    EXPECT_EQ(Seek("DAY", DateValue(kDay)), (Records{1, 3, 6}));
    EXPECT_EQ(Seek("DAY", DateValue(kDay, 3600000)), (Records{1, 3, 6})) << "a date has no time";
    for (const char16_t* day :
         {u"20240131", u"2024-01-31", u"2024/1/31", u"31.01.2024", u" 2024-01-31 12:30 "}) {
        EXPECT_EQ(Seek("DAY", TextValue(day)), (Records{1, 3, 6}));
    }
    EXPECT_EQ(Seek("DAY", DateValue(0)), Records{5}) << "the empty date";
}

TEST_F(IndexSetSeek, FindsMomentsWithinHalfASecond) {
    EXPECT_EQ(Seek("STAMP", DateValue(kDay, 1000)), Records{2});
    EXPECT_EQ(Seek("STAMP", DateValue(kDay, 2001)), Records{3}) << "1.999 seconds";
    EXPECT_EQ(Seek("STAMP", DateValue(kDay, 0)), (Records{1, 6}));
    EXPECT_EQ(Seek("STAMP", TextValue(u"2024-01-31 00:00:03")), Records{4});
    EXPECT_EQ(Seek("STAMP", DateValue(kDay, 4000)), Records{});
}

TEST_F(IndexSetSeek, FindsTruthValues) {
    EXPECT_EQ(Seek("PAID", TruthValue(true)), (Records{1, 3, 6}));
    EXPECT_EQ(Seek("PAID", TruthValue(false)), (Records{2, 4, 5}));
    EXPECT_EQ(Seek("PAID", TextValue(u".t.")), (Records{1, 3, 6}));
    EXPECT_EQ(Seek("PAID", IntegerValue(0)), (Records{2, 4, 5}));
}

TEST_F(IndexSetSeek, MatchesSeveralPartsExactly) {
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"DE"), true}, {TextValue(u"Bonn"), true}}), Records{1});
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"US"), true}, {TextValue(u""), true}}), Records{5})
        << "an empty text in a later part is the blank value";
}

TEST_F(IndexSetSeek, IsNotRestrictedByPartsWithoutACriterion) {
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"DE"), true}}), (Records{3, 1, 2}));
    EXPECT_EQ(index.Seek("ALL", {{TextValue(u"DE"), true}}), (Records{1, 3, 2}));
}

TEST_F(IndexSetSeek, MatchesAPrefixInTheLastGivenPart) {
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"DE"), true}, {TextValue(u"Bo"), false}}), (Records{1, 2}));
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"DE"), true}, {TextValue(u""), false}}), (Records{3, 1, 2}));
}

TEST_F(IndexSetSeek, TestsPartsBehindAPrefixOnEachRecord) {
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"D"), false}, {TextValue(u"Bonn"), true}}), (Records{6, 1}));
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"D"), false}, {TextValue(u"Bonn"), false}}),
              (Records{6, 1, 2}));
}

TEST_F(IndexSetSeek, ConvertsDatesAndNumbersForTheirPartsOfATextKey) {
    EXPECT_EQ(index.Seek("ALL", {{TextValue(u"DE"), true}, {DateValue(kDay), true}}), (Records{1, 3}));
    EXPECT_EQ(
        index.Seek("ALL", {{TextValue(u"DE"), true}, {DateValue(kDay), true}, {IntegerValue(11), true}}),
        Records{3});
    EXPECT_EQ(
        index.Seek("ALL",
                   {{TextValue(u"DE"), true}, {TextValue(u"2024-02-01"), true}, {NumberValue(9), true}}),
        Records{2});
    EXPECT_EQ(index.Seek("ALL", {{TextValue(u"DE"), true}, {TextValue(u"202401"), false}}), (Records{1, 3}))
        << "the days of a month";
    EXPECT_EQ(index.Seek("ALL", {{TextValue(u"US"), true}, {DateValue(0), true}}), Records{5});
    EXPECT_EQ(
        index.Seek("ALL", {{TextValue(u"DE"), true}, {DateValue(kDay), true}, {NumberValue(1e9), true}}),
        Records{})
        << "a number too wide for its part";
}

TEST_F(IndexSetSeek, MatchesPartsOfVaryingWidthByTheirValue) {
    EXPECT_EQ(index.Seek("LOOSE", {{TextValue(u"Bonn"), true}}), (Records{6, 1}));
    EXPECT_EQ(index.Seek("LOOSE", {{TextValue(u"Bonn"), true}, {TextValue(u"DE"), true}}), Records{1});
    EXPECT_EQ(index.Seek("LOOSE", {{TextValue(u"Bonn"), false}}), (Records{6, 1, 2}));
}

TEST_F(IndexSetSeek, StopsWhenToldSo) {
    Records found;
    IndexSet& indexes = index.Open();
    indexes.Seek(indexes.Find("city").value(), {{TextValue(u"Bo"), false}}, [&](std::uint32_t record) {
        found.push_back(record);
        return found.size() < 2;
    });
    EXPECT_EQ(found, (Records{1, 6}));
}

TEST_F(IndexSetSeek, RefusesValuesOfAWrongKind) {
    EXPECT_EQ(SeekError("N", {{TextValue(u"five"), true}}), ErrorKind::TypeMismatch);
    EXPECT_NE(text.find("\"five\""), std::string::npos) << text;
    EXPECT_NE(text.find("index \"N\" of table \"TEST\""), std::string::npos) << text;
    EXPECT_EQ(SeekError("DAY", {{TextValue(u"20240230"), true}}), ErrorKind::TypeMismatch);
    EXPECT_EQ(SeekError("DAY", {{IntegerValue(5), true}}), ErrorKind::TypeMismatch);
    EXPECT_EQ(SeekError("PAID", {{TextValue(u"perhaps"), true}}), ErrorKind::TypeMismatch);
    EXPECT_EQ(SeekError("ALL", {{TextValue(u"DE"), true}, {TextValue(u"soon"), true}}),
              ErrorKind::TypeMismatch);
    EXPECT_EQ(SeekError("PRICE", {{DateValue(kDay), true}}), ErrorKind::TypeMismatch);
    EXPECT_EQ(SeekError("CITY", {{TextValue(u"A"), true}, {TextValue(u"B"), true}}),
              ErrorKind::InvalidArgument);
    EXPECT_TRUE(index.Open().descriptions()[0].usable) << "a wrong question does not spoil the tag";
}

TEST_F(IndexSetSeek, TakesNumbersAsTheirDigitsInTextKeys) {
    TestTable codes;
    codes.Field("CODE", Storage::Character, 6);
    codes.Add({"42"}).Add({"4.5"}).Add({"T"});
    BuiltIndex built(codes, {{"CODE", "CODE", ""}});
    EXPECT_EQ(built.Seek("CODE", {{IntegerValue(42), true}}), Records{1});
    EXPECT_EQ(built.Seek("CODE", {{NumberValue(4.5), true}}), Records{2});
    EXPECT_EQ(built.Seek("CODE", {{TruthValue(true), true}}), Records{3});
}

TEST_F(IndexSetSeek, FindsNullsByNull) {
    TestTable people;
    people.NullableField("NAME", Storage::Character, 6).NullableField("N", Storage::Integer32, 4);
    people.Add({"", Int32Bytes(0)}).Add({"A", Int32Bytes(1)}).Add({"", Int32Bytes(0)});
    people.SetNull(3, 0);
    people.SetNull(3, 1);
    BuiltIndex built(people, {{"NAME", "NAME", ""}, {"N", "N", ""}});
    EXPECT_EQ(built.Seek("NAME", {{Value{}, true}}), Records{3});
    EXPECT_EQ(built.Seek("N", {{Value{}, true}}), Records{3});
    EXPECT_EQ(built.Seek("N", {{IntegerValue(0), true}}), Records{1});
    EXPECT_EQ(built.Seek("NAME", {{TextValue(u"A"), false}}), Records{2});
    EXPECT_EQ(built.Seek("NAME", {{TextValue(u""), false}}), (Records{3, 1, 2}));
}

TEST_F(IndexSetSeek, FindsBlankValuesByNullWhereNoFieldIsNullable) {
    EXPECT_EQ(Seek("CITY", Value{}), Records{5});
    EXPECT_EQ(Seek("DAY", Value{}), Records{5});
    EXPECT_EQ(index.Seek("PLACE", {{TextValue(u"US"), true}, {Value{}, true}}), Records{5});
}

TEST_F(IndexSetSeek, DescribesThePartsOfKeys) {
    IndexSet& indexes = index.Open();
    const auto& parts = indexes.descriptions()[indexes.Find("ALL").value()].parts;
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(parts[0].name, "COUNTRY");
    EXPECT_EQ(parts[0].type, FieldType::Text);
    EXPECT_EQ(parts[1].name, "DAY");
    EXPECT_EQ(parts[1].type, FieldType::Date);
    EXPECT_EQ(parts[2].name, "ID");
    EXPECT_EQ(parts[2].type, FieldType::Decimal);
    const auto part = [&](const char* tag) {
        return indexes.descriptions()[indexes.Find(tag).value()].parts[0];
    };
    EXPECT_EQ(part("UCITY").name, "CITY");
    EXPECT_EQ(part("N").type, FieldType::Integer32);
    EXPECT_EQ(part("PAID").type, FieldType::Boolean);
    EXPECT_EQ(part("STAMP").type, FieldType::Date);
    EXPECT_EQ(part("Y").type, FieldType::Currency);
    EXPECT_EQ(part("LOOSE").name, "TRIM(CITY)");
    EXPECT_FALSE(part("CITY").descending);
    EXPECT_TRUE(part("BACK").descending);
}

}  // namespace
}  // namespace zu::dbf::cdx
