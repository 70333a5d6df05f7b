#include <gtest/gtest.h>

#include <map>

#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

class Names : public NameSource {
public:
    bool Provide(std::string_view name, Result& out) override {
        const auto found = values.find(std::string(name));
        if (found == values.end()) return false;
        out = found->second;
        return true;
    }
    void SetText(const std::string& name, const std::string& text) {
        Result& value = values[name];
        value.type = Type::Text;
        value.isNull = false;
        value.text = text;
    }
    void SetNumber(const std::string& name, double number) {
        Result& value = values[name];
        value.type = Type::Number;
        value.isNull = false;
        value.number = number;
    }
    void SetDate(const std::string& name, std::int32_t day) {
        Result& value = values[name];
        value.type = Type::Date;
        value.isNull = false;
        value.julianDay = day;
    }
    std::map<std::string, Result> values;
};

std::string RunWith(Names& names, std::u16string_view source) {
    try {
        Result result;
        Program::CompileDynamic(source).EvaluateDynamic(names, result);
        return ShownResult(result);
    } catch (const Error& error) {
        return error.what();
    }
}

TEST(DynamicProgram, AsksForNamesAsTheyAreWritten) {
    Names names;
    names.SetNumber("Amount", 5);
    names.SetText("größe", "x");
    EXPECT_EQ(RunWith(names, u"Amount * 2"), "10");
    EXPECT_EQ(RunWith(names, u"[größe] + 'y'"), "\"xy\"");
    EXPECT_EQ(RunWith(names, u"AMOUNT"), "expected a name that is known, found \"AMOUNT\" (character 1)");
}

TEST(DynamicProgram, SeesTheValuesOfEachRun) {
    Names names;
    names.SetNumber("A", 1);
    const Program program = Program::CompileDynamic(u"A > 1");
    Result result;
    program.EvaluateDynamic(names, result);
    EXPECT_EQ(ShownResult(result), "FALSE");
    names.SetNumber("A", 2);
    program.EvaluateDynamic(names, result);
    EXPECT_EQ(ShownResult(result), "TRUE");
}

TEST(DynamicProgram, ChoosesOperationsByTheTypesOfValues) {
    Names names;
    names.SetNumber("N", 5);
    names.SetText("T", "ab");
    names.SetDate("D", 2460341);
    EXPECT_EQ(RunWith(names, u"N + N"), "10");
    EXPECT_EQ(RunWith(names, u"T + T"), "\"abab\"");
    EXPECT_EQ(RunWith(names, u"D + N"), "2024-02-05");
    EXPECT_EQ(RunWith(names, u"N + D"), "2024-02-05");
    EXPECT_EQ(RunWith(names, u"D - D"), "0");
    EXPECT_EQ(RunWith(names, u"T - T"), "\"abab\"");
    EXPECT_EQ(RunWith(names, u"T = 'ab ' AND N IN (1, 5) AND D = {2024-01-31}"), "TRUE");
    EXPECT_EQ(RunWith(names, u"MAX(N, 7)"), "7");
    EXPECT_EQ(RunWith(names, u"IIF(N > 1, T, 'x')"), "\"ab\"");
    EXPECT_EQ(RunWith(names, u"D > {}"), "TRUE");
}

TEST(DynamicProgram, RefusesValuesOfTheWrongTypeWhenItRuns) {
    Names names;
    names.SetNumber("N", 5);
    names.SetText("T", "ab");
    EXPECT_EQ(RunWith(names, u"UPPER(N)"), "expected a text, found a number (character 7)");
    EXPECT_EQ(RunWith(names, u"N = T"), "expected a number, found a text (character 3)");
    EXPECT_EQ(RunWith(names, u"N + T"), "expected a number to add, found a text (character 3)");
    EXPECT_EQ(RunWith(names, u"NOT N"), "expected a logical, found a number (character 5)");
    EXPECT_EQ(RunWith(names, u"N AND .T."), "expected a logical, found a number (character 1)");
    EXPECT_EQ(RunWith(names, u"N IN (T)"), "expected a number, found a text (character 3)");
    EXPECT_EQ(RunWith(names, u"YEAR(T)"), "expected a date, found a text (character 6)");
    EXPECT_EQ(RunWith(names, u"T * 2"), "expected a number, found a text (character 1)");
    EXPECT_EQ(RunWith(names, u"ICASE(N, 1)"), "expected a logical, found a number (character 1)");
}

TEST(DynamicProgram, CarriesNull) {
    Names names;
    names.values["X"] = Result{};
    EXPECT_EQ(RunWith(names, u"X + 1"), "NULL");
    EXPECT_EQ(RunWith(names, u"UPPER(X)"), "NULL");
    EXPECT_EQ(RunWith(names, u"X = 1 OR X IS NULL"), "TRUE");
}

TEST(DynamicProgram, CountsCharacters) {
    Names names;
    names.SetText("T", text::ToUtf8(u"größer"));
    EXPECT_EQ(RunWith(names, u"LEN(T)"), "6");
    EXPECT_EQ(RunWith(names, u"UPPER(T)"), "\"" + text::ToUtf8(u"GRÖßER") + "\"");
    EXPECT_EQ(RunWith(names, u"SUBSTR(T, 3, 2)"), "\"" + text::ToUtf8(u"öß") + "\"");
    EXPECT_EQ(RunWith(names, u"RIGHT(T, 3)"), "\"" + text::ToUtf8(u"ßer") + "\"");
    EXPECT_EQ(RunWith(names, u"AT('e', T)"), "5");
    EXPECT_EQ(RunWith(names, u"T LIKE 'gr__er'"), "TRUE");
    EXPECT_EQ(RunWith(names, u"PADL(LEFT(T, 3), 5, 'ü')"), "\"" + text::ToUtf8(u"üügrö") + "\"");
    EXPECT_EQ(RunWith(names, u"ASC('Ω')"), "937");
    EXPECT_EQ(RunWith(names, u"STUFF(T, 3, 2, 'x')"), "\"grxer\"");
    EXPECT_EQ(RunWith(names, u"ISUPPER('Ä') AND ISALPHA('ж') AND NOT ISALPHA('1')"), "TRUE");
    EXPECT_EQ(RunWith(names, u"T = 'größer' AND T <> 'Ω'"), "TRUE");
}

TEST(DynamicProgram, KnowsNoRecord) {
    Names names;
    EXPECT_EQ(RunWith(names, u"RECNO()"), "0");
    EXPECT_EQ(RunWith(names, u"DELETED()"), "FALSE");
    Row row;
    EXPECT_THROW(Program::CompileDynamic(u"A = 1").Test(row), Error);
}

TEST(DynamicProgram, DropsTheTableInFrontOfAName) {
    Names names;
    names.SetNumber("A", 1);
    EXPECT_EQ(RunWith(names, u"ANY.A + x->A"), "2");
}

}  // namespace
}  // namespace zu::expression::testing
