#include "host/technologies/dbf/CodePageChoice.h"

#include <gtest/gtest.h>

#include "tests/unit/dbf/ErrorExpectation.h"

namespace zu::dbf {
namespace {

class CodePageChoiceTest : public testing::Test {
protected:
    unsigned Choose(int mark, std::string_view sideFile, unsigned fallback, std::string driver = {}) {
        DbfHeader header;
        header.codePageMark = static_cast<std::uint8_t>(mark);
        header.driverName = std::move(driver);
        return ChooseCodePage(header, sideFile, fallback, warnings_).number();
    }
    std::vector<std::string> warnings_;
};

TEST_F(CodePageChoiceTest, TakesTheSideFileFirst) {
    EXPECT_EQ(Choose(0x03, "UTF-8", 850), 65001U);
    EXPECT_EQ(Choose(0x03, "ISO-8859-1", 850), 28591U);
    EXPECT_TRUE(warnings_.empty());
}

TEST_F(CodePageChoiceTest, TakesTheMarkOfTheTable) {
    EXPECT_EQ(Choose(0x65, "", 850), 866U);
    EXPECT_TRUE(warnings_.empty());
}

TEST_F(CodePageChoiceTest, TakesTheSettingForATableWithoutAMark) {
    EXPECT_EQ(Choose(0, "", 850), 850U);
    EXPECT_TRUE(warnings_.empty());
}

TEST_F(CodePageChoiceTest, TakesTheDriverNameOfDBase7) {
    EXPECT_EQ(Choose(0, "", 850, "DBWINUS0"), 1252U);
    EXPECT_EQ(Choose(0, "", 850, "DB437US0"), 437U);
    EXPECT_EQ(Choose(0, "", 850, "DBxyz"), 850U);
}

TEST_F(CodePageChoiceTest, WarnsOfNamesAndMarksItDoesNotKnow) {
    EXPECT_EQ(Choose(0x03, "klingon\x07", 850), 1252U);
    EXPECT_TRUE(Mentions(warnings_, "\"klingon\""));
    EXPECT_EQ(Choose(0xEE, "", 850), 850U);
    EXPECT_TRUE(Mentions(warnings_, "238"));
}

TEST_F(CodePageChoiceTest, EndsAtWindows1252WhenTheSettingIsUnknownToo) {
    EXPECT_EQ(Choose(0, "", 4711), 1252U);
}

}  // namespace
}  // namespace zu::dbf
