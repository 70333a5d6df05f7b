#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "tests/unit/cdx/BuiltIndex.h"

namespace zu::dbf::cdx {
namespace {

using expression::Program;
using expression::Storage;

constexpr std::uint32_t kCount = 2000;

TestTable Many() {
    TestTable table;
    table.Field("NAME", Storage::Character, 10)
        .Field("NUM", Storage::NumberText, 8, 2)
        .Field("DAY", Storage::DateText, 8)
        .Field("N", Storage::Integer32, 4)
        .Field("FLAG", Storage::LogicalText, 1)
        .Field("Y", Storage::Currency, 8)
        .Field("STAMP", Storage::DateTime, 8);
    std::mt19937 random(5);
    for (std::uint32_t i = 0; i < kCount; ++i) {
        char day[16];
        std::snprintf(day, sizeof day, "20%02u%02u%02u", static_cast<unsigned>(random() % 30),
                      static_cast<unsigned>(random() % 12 + 1), static_cast<unsigned>(random() % 28 + 1));
        std::string name(random() % 4 + 1, ' ');
        for (char& c : name)
            c = static_cast<char>("abXY"[random() % 4]);
        char number[16];
        std::snprintf(number, sizeof number, "%8.2f", static_cast<int>(random() % 20000) / 100.0 - 100);
        const auto n = static_cast<std::int32_t>(random() % 200) - 100;
        table.Add({name, i % 50 == 0 ? "" : number, i % 40 == 0 ? "" : day, Int32Bytes(n),
                   random() % 100 == 0 ? "T" : "F", Int64Bytes(n * 2500),
                   MomentBytes(2460000 + n, static_cast<std::int32_t>(random() % 86400) * 1000)});
    }
    return table;
}

std::vector<TagDefinition> Tags() {
    std::vector<TagDefinition> tags;
    for (const char* field : {"NAME", "NUM", "DAY", "N", "FLAG", "Y", "STAMP"})
        tags.push_back({field, field, ""});
    tags.push_back({"UNAME", "UPPER(NAME)", ""});
    tags.push_back({"BOTH", "UPPER(NAME)+DTOS(DAY)", ""});
    TagDefinition back{"BACKNUM", "NUM", ""};
    back.descending = true;
    tags.push_back(back);
    return tags;
}

class Candidates : public ::testing::Test {
protected:
    Records Matches(std::u16string_view condition) {
        const Program program = Program::Compile(condition, table.layout);
        Records matches;
        for (std::uint32_t record = 1; record <= table.Count(); ++record) {
            if (program.Test({table.Record(record), record, nullptr})) matches.push_back(record);
        }
        return matches;
    }

    TestTable table = Many();
    BuiltIndex index{table, Tags()};
};

TEST_F(Candidates, HoldEveryMatchOfConditionsThatATagAnswers) {
    for (const char16_t* condition : {u"NAME = 'ab'",
                                      u"NAME = 'ab   '",
                                      u"NUM = 12.34",
                                      u"NUM > 95",
                                      u"NUM >= 99.5 .AND. NUM <= 99.9",
                                      u"NUM < -99",
                                      u"NUM BETWEEN 5 AND 6",
                                      u"DAY = {^2012-03-04}",
                                      u"DAY < {^2000-02-01}",
                                      u"N = 7",
                                      u"N > 95",
                                      u"N < -95.5",
                                      u"N >= 98.5",
                                      u"FLAG",
                                      u"FLAG = .T.",
                                      u"UPPER(NAME) = 'XYX'",
                                      u"Y = 12.5",
                                      u"Y > 24.5",
                                      u"STAMP < {^2022-11-18}",
                                      u"N = 7 .AND. NUM > 0",
                                      u"NAME = 'a' .AND. N = 3",
                                      u"NAME LIKE 'aXb%'",
                                      u"N IN (3, 4, 5)",
                                      u"N = 3.5"}) {
        const Records matches = Matches(condition);
        const auto found = index.Candidates(condition);
        const std::string shown(condition, condition + std::char_traits<char16_t>::length(condition));
        if (!found) continue;
        EXPECT_TRUE(std::is_sorted(found->begin(), found->end())) << shown;
        EXPECT_TRUE(std::includes(found->begin(), found->end(), matches.begin(), matches.end())) << shown;
        EXPECT_LE(found->size(), kCount / 4) << shown;
    }
}

TEST_F(Candidates, AreFewForOneValueOfATag) {
    for (const char16_t* condition : {u"N = 7", u"NUM = 12.34", u"DAY = {^2012-03-04}", u"Y = 12.5"}) {
        const auto found = index.Candidates(condition);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->size(), Matches(condition).size());
    }
}

TEST_F(Candidates, AreNotGivenWhenTheConditionSaysNothingAboutAKey) {
    for (const char16_t* condition :
         {u".NOT. DELETED()", u"N = 7 .OR. NUM = 1", u"N # 3", u"LEN(NAME) = 3", u"RECNO() < 5"}) {
        EXPECT_FALSE(index.Candidates(condition));
    }
}

TEST_F(Candidates, AreNotGivenWhenMostRecordsMatchAnyhow) {
    EXPECT_FALSE(index.Candidates(u"N > -90"));
    EXPECT_FALSE(index.Candidates(u"FLAG = .F."));
}

TEST_F(Candidates, DoNotComeFromTagsThatLeaveRecordsOut) {
    TagDefinition unique{"U", "N", ""};
    unique.unique = true;
    BuiltIndex other(table, {unique, {"F", "NUM", "NUM > 0"}});
    EXPECT_FALSE(other.Candidates(u"N = 7"));
    EXPECT_FALSE(other.Candidates(u"NUM = 12.34"));
}

TEST_F(Candidates, DoNotComeFromStaleTags) {
    table.Set(kCount, 1, "55");
    EXPECT_FALSE(index.Candidates(u"NUM = 12.34"));
    EXPECT_TRUE(index.Candidates(u"N = 7"));
}

TEST_F(Candidates, HoldEveryMatchOfRandomRanges) {
    std::mt19937 random(9);
    int narrowed = 0;
    for (int round = 0; round < 300; ++round) {
        const char* fields[] = {"NUM", "N", "Y", "NAME", "UPPER(NAME)"};
        const char* operators[] = {"=", "<", "<=", ">", ">="};
        const std::string field = fields[random() % 5];
        std::string value = std::to_string(static_cast<int>(random() % 220) - 110);
        value += '.';
        value += std::to_string(random() % 100);
        if (field.find("NAME") != std::string::npos) {
            value = "'";
            for (std::uint32_t i = 0; i < random() % 4; ++i)
                value += "abXY "[random() % 5];
            value += "'";
        }
        std::string condition = field + " ";
        condition.append(operators[random() % 5]).append(" ").append(value);
        const std::u16string wide(condition.begin(), condition.end());
        const auto found = index.Candidates(wide);
        if (!found) continue;
        ++narrowed;
        const Records matches = Matches(wide);
        EXPECT_TRUE(std::includes(found->begin(), found->end(), matches.begin(), matches.end())) << condition;
    }
    EXPECT_GT(narrowed, 60);
}

}  // namespace
}  // namespace zu::dbf::cdx
