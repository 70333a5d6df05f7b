#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

/// A table in memory whose records take all the forms that files have, odd ones included.
class RandomTable {
public:
    RandomTable(unsigned seed, std::size_t count) : random_(seed) {
        builder_.Add("N", Storage::NumberText, 8, 2)
            .Add("K", Storage::NumberText, 20)
            .Add("C", Storage::Character, 4)
            .Add("V", Storage::Varchar, 4)
            .Variable()
            .Add("D", Storage::DateText, 8)
            .Add("L", Storage::LogicalText, 1)
            .Add("I", Storage::Integer32, 4)
            .Nullable()
            .Add("B", Storage::Double, 8)
            .Add("Y", Storage::Currency, 8, 4)
            .Add("T", Storage::DateTime, 8)
            .Add("M", Storage::Memo, 4)
            .Finish();
        for (std::size_t i = 0; i < count; ++i)
            AddRecord();
        run.first = reinterpret_cast<const std::byte*>(data_.data());
        run.stride = builder_.layout.recordLength;
        run.firstNumber = 1;
        run.count = count;
        run.memos = &builder_;
    }

    const RecordLayout& layout() const { return builder_.layout; }
    std::size_t Pick(std::size_t below) { return random_() % below; }
    template <std::size_t kCount>
    const char* PickOf(const char* const (&choices)[kCount]) {
        return choices[Pick(kCount)];
    }
    RecordRun run;

private:
    void AddRecord() {
        static constexpr const char* kNumbers[] = {
            "    1.00", "    2.50", "   -3.25", "   10.00", "        ", "1.00    ", "  1.5e+2", "********",
            "     .50", "    -.50", "   2,50 ", "   0.00 ", "-9999.99", "   12   ", "       -"};
        static constexpr const char* kLong[] = {"  12345678901234567",  "   12345678901234568",
                                                "99999999999999999999", "                   1",
                                                "                    ", "-9223372036854775808"};
        static constexpr const char* kTexts[] = {"a", "ab", "abc", "b", "", "B", "a b", "ä", "abcd"};
        static constexpr const char* kDates[] = {"20240131", "20240201", "19991231", "        ", "00000000",
                                                 "20240230", "2024013 ", "99991231", " 9991231"};
        static constexpr const char* kLogicals[] = {"T", "F", "y", "n", " ", "?"};
        builder_.SetDeleted(Pick(8) == 0);
        builder_.Set("N", PickOf(kNumbers)).Set("K", PickOf(kLong));
        std::string text = PickOf(kTexts);
        if (Pick(3) == 0) text.resize(4, '\0');
        builder_.Set("C", text);
        builder_.Set("V", PickOf(kTexts));
        builder_.SetVariableLength("V", static_cast<std::uint8_t>(Pick(6)));
        builder_.Set("D", PickOf(kDates)).Set("L", PickOf(kLogicals));
        builder_.SetInteger("I", static_cast<int>(Pick(5)) - 2).SetNull("I", Pick(4) == 0);
        builder_.SetDouble("B", Pick(6) == 0 ? NAN : static_cast<double>(Pick(5)) / 2);
        builder_.SetInteger("Y", static_cast<int>(Pick(5)) * 5000 - 5000);
        builder_.SetMoment("T", Pick(3) == 0 ? 0 : 2460341 + static_cast<int>(Pick(2)),
                           static_cast<int>(Pick(3)) * 1000);
        data_ += builder_.bytes();
    }

    std::mt19937 random_;
    RecordBuilder builder_;
    std::string data_;
};

std::string RandomTerm(RandomTable& table) {
    static constexpr const char* kOperators[] = {"=", "<>", "<", "<=", ">", ">="};
    static constexpr const char* kNumbers[] = {"1",     "2.5",  "-3.25", "10",    "0",
                                               "1.005", "150",  "1e300", "-1e3",  "0.5",
                                               "NULL",  "5000", "2.50",  "-0.50", "12345678901234567"};
    static constexpr const char* kTexts[] = {"'a'", "'ab  '",     "'abcde'", "''",
                                             "'b'", "'\xCE\xA9'", "'a b'",   "NULL"};
    static constexpr const char* kDates[] = {"{2024-01-31}", "{2024-02-01}", "{}", "{2024-01-31 00:00:01}",
                                             "NULL"};
    static constexpr const char* kNumberFields[] = {"N", "K", "I", "B", "Y", "N+0", "I*1", "ABS(N)"};
    static constexpr const char* kTextFields[] = {"C", "V", "M", "C+''", "UPPER(C)", "TRIM(V)"};
    static constexpr const char* kDateFields[] = {"D", "T", "D+0", "TTOD(T)"};
    static constexpr const char* kPatterns[] = {"'a%'", "'%b'", "'_b%'", "'ab*'", "'%'", "'abcde%'", "'a %'"};
    static constexpr const char* kOthers[] = {
        "L",    "L = .F.", "L IS NULL", "DELETED()", "RECNO() % 2 = 0", "EMPTY(C)",
        "NULL", ".T.",     "N = I",     "C = V",     "ISBLANK(N)",      "D = T"};
    const std::string op = table.PickOf(kOperators);
    switch (table.Pick(8)) {
        case 0:
            return std::string(table.PickOf(kNumberFields)) + " " + op + " " + table.PickOf(kNumbers);
        case 1:
            return std::string(table.PickOf(kNumbers)) + " " + op + " " + table.PickOf(kNumberFields);
        case 2:
            return std::string(table.PickOf(kTextFields)) + " " + op + " " + table.PickOf(kTexts);
        case 3:
            return std::string(table.PickOf(kDateFields)) + " " + op + " " + table.PickOf(kDates);
        case 4:
            return std::string(table.PickOf(kTextFields)) + " LIKE " + table.PickOf(kPatterns);
        case 5:
            return std::string(table.PickOf(kNumberFields)) + " BETWEEN " + table.PickOf(kNumbers) + " AND " +
                   table.PickOf(kNumbers);
        case 6:
            return std::string(table.PickOf(kDateFields)) + " IN (" + table.PickOf(kDates) + "," +
                   table.PickOf(kDates) + ")";
        default:
            return table.PickOf(kOthers);
    }
}

std::string RandomCondition(RandomTable& table, int depth) {
    if (depth == 0 || table.Pick(3) == 0) return RandomTerm(table);
    const std::string left = RandomCondition(table, depth - 1);
    switch (table.Pick(4)) {
        case 0:
            return "NOT (" + left + ")";
        case 1:
            return "(" + left + " OR " + RandomCondition(table, depth - 1) + ")";
        default:
            return left + " AND " + RandomCondition(table, depth - 1);
    }
}

Row RowOf(const RecordRun& run, std::size_t index) {
    Row row;
    row.record = run.first + index * run.stride;
    row.number = run.firstNumber + static_cast<std::uint32_t>(index);
    row.memos = run.memos;
    return row;
}

TEST(Batch, AgreesWithTestingRecordByRecordForRandomConditions) {
    RandomTable table(20261121, 700);
    for (int round = 0; round < 1500; ++round) {
        const std::string source = RandomCondition(table, 3);
        const Program program = Program::Compile(text::ToUtf16(source), table.layout());
        for (const bool includeDeleted : {false, true}) {
            std::vector<std::uint32_t> expected;
            for (std::size_t i = 0; i < table.run.count; ++i) {
                const Row row = RowOf(table.run, i);
                Result value;
                program.Evaluate(row, value);
                const bool isTrue = program.Test(row);
                ASSERT_EQ(isTrue, !value.isNull && value.boolean) << source << ", record " << i + 1;
                if (isTrue && (includeDeleted || *row.record != std::byte{'*'}))
                    expected.push_back(row.number);
            }
            std::vector<std::uint32_t> found;
            program.Filter(table.run, includeDeleted, 0, found);
            ASSERT_EQ(found, expected) << source;
            ASSERT_EQ(program.Count(table.run, includeDeleted), expected.size()) << source;
        }
    }
}

/// A sum with 0 and a text joined with '' take the general way; the bare fields the one over stored bytes.
TEST(Batch, ComparesStoredBytesAsItComparesValues) {
    RandomTable table(7, 900);
    static constexpr const char* kPairs[][2] = {{"N", "N+0"}, {"I", "I+0"},        {"B", "B+0"},
                                                {"Y", "Y+0"}, {"C", "C+''"},       {"D", "D+0"},
                                                {"T", "T+0"}, {"L", "NVL(L, .F.)"}};
    static constexpr const char* kTests[] = {"? = 1",
                                             "? <> 2.5",
                                             "? < 2.5",
                                             "? <= -3.25",
                                             "? > 0.5",
                                             "? >= 10",
                                             "? = 'ab'",
                                             "? <> ''",
                                             "? < 'ab'",
                                             "? >= 'a b'",
                                             "? LIKE 'ab%'",
                                             "? = {2024-01-31}",
                                             "? < {2024-02-01}",
                                             "? > {2024-01-31 00:00:01}",
                                             "? BETWEEN 1 AND 2.5",
                                             "? BETWEEN {2024-01-01} AND {2024-01-31}",
                                             "? = .T.",
                                             "? <> .T.",
                                             "NOT ?",
                                             "? = 150",
                                             "? <> 1e300"};
    int compared = 0;
    for (const auto& pair : kPairs) {
        for (const std::string test : kTests) {
            std::vector<std::uint32_t> found[2];
            try {
                for (int side = 0; side < 2; ++side) {
                    std::string source = test;
                    source.replace(source.find('?'), 1, pair[side]);
                    Program::Compile(text::ToUtf16(source), table.layout())
                        .Filter(table.run, true, 0, found[side]);
                }
            } catch (const Error&) {
                continue;  // the test does not suit the type
            }
            EXPECT_EQ(found[0], found[1]) << test << " with " << pair[0];
            ++compared;
        }
    }
    EXPECT_GT(compared, 50);
}

TEST(Batch, StopsAtTheLimit) {
    RandomTable table(3, 1000);
    const Program all = Program::Compile(u"RECNO() > 0", table.layout());
    std::vector<std::uint32_t> found;
    all.Filter(table.run, true, 300, found);
    ASSERT_EQ(found.size(), 300U);
    EXPECT_EQ(found.front(), 1U);
    EXPECT_EQ(found.back(), 300U);
    all.Filter(table.run, true, 300, found);
    EXPECT_EQ(found.size(), 300U);
}

TEST(Batch, CountsRecordNumbersFromTheFirstOfTheRun) {
    RandomTable table(3, 10);
    table.run.firstNumber = 5001;
    std::vector<std::uint32_t> found;
    Program::Compile(u"RECNO() = 5004", table.layout()).Filter(table.run, true, 0, found);
    EXPECT_EQ(found, (std::vector<std::uint32_t>{5004}));
}

TEST(Batch, LeavesOutDeletedRecordsUnlessAsked) {
    RandomTable table(3, 500);
    const Program deleted = Program::Compile(u"DELETED()", table.layout());
    EXPECT_EQ(deleted.Count(table.run, false), 0U);
    EXPECT_GT(deleted.Count(table.run, true), 0U);
    const Program all = Program::Compile(u".T.", table.layout());
    EXPECT_EQ(all.Count(table.run, true), 500U);
    EXPECT_EQ(all.Count(table.run, false), 500U - deleted.Count(table.run, true));
}

TEST(Batch, TakesAnEmptyRun) {
    RandomTable table(3, 1);
    table.run.count = 0;
    EXPECT_EQ(Program::Compile(u".T.", table.layout()).Count(table.run, true), 0U);
}

TEST(Batch, RefusesResultsThatAreNoTruth) {
    RandomTable table(3, 1);
    const Program number = Program::Compile(u"N + 1", table.layout());
    std::vector<std::uint32_t> found;
    for (const auto& use : std::vector<std::function<void()>>{
             [&] { number.Count(table.run, true); }, [&] { number.Filter(table.run, true, 0, found); },
             [&] { number.Test(RowOf(table.run, 0)); }}) {
        try {
            use();
            ADD_FAILURE();
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::TypeMismatch);
            EXPECT_STREQ(error.what(),
                         "expected a condition that is true or false, found one that gives a number");
        }
    }
}

TEST(Batch, SelectsNothingForNull) {
    RandomTable table(3, 20);
    EXPECT_EQ(Program::Compile(u"NULL", table.layout()).Count(table.run, true), 0U);
}

}  // namespace
}  // namespace zu::expression::testing
