#include "host/engine/Settings.h"

#include <gtest/gtest.h>

namespace zu::host {
namespace {

TEST(Settings, HaveSensibleDefaults) {
    const Settings settings;
    EXPECT_EQ(settings.defaultTechnology, L"DBF");
    EXPECT_EQ(settings.codePage, 1252u);
    EXPECT_FALSE(settings.showDeleted);
    EXPECT_TRUE(settings.logFile.empty());
}

TEST(Settings, EveryNameCanBeReadAndSetToWhatItReads) {
    Settings settings;
    settings.dataFolder = L"C:\\data";
    settings.logFile = L"C:\\log.txt";
    EXPECT_EQ(SettingNames().size(), 15u);
    for (const std::wstring_view name : SettingNames()) {
        const auto text = SettingText(settings, name);
        ASSERT_TRUE(text) << std::string(name.begin(), name.end());
        EXPECT_EQ(ApplySetting(settings, name, *text), SettingResult::Done)
            << std::string(name.begin(), name.end());
    }
}

TEST(Settings, NamesAreFoundWithoutRegardToCase) {
    Settings settings;
    EXPECT_EQ(ApplySetting(settings, L"data.SHOWDELETED", L"Yes"), SettingResult::Done);
    EXPECT_TRUE(settings.showDeleted);
    EXPECT_EQ(SettingText(settings, L"DATA.showDeleted"), L"yes");
}

TEST(Settings, AnUnknownNameIsSaid) {
    Settings settings;
    EXPECT_EQ(ApplySetting(settings, L"Data.Colour", L"red"), SettingResult::UnknownName);
    EXPECT_FALSE(SettingText(settings, L"Data.Colour"));
}

struct BadValue {
    const wchar_t* name;
    const wchar_t* text;
};
class BadSettings : public testing::TestWithParam<BadValue> {};

TEST_P(BadSettings, ChangeNothingAndSayWhatIsExpected) {
    Settings settings;
    std::wstring expected;
    const auto before = SettingText(settings, GetParam().name);
    EXPECT_EQ(ApplySetting(settings, GetParam().name, GetParam().text, &expected), SettingResult::BadValue);
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(SettingText(settings, GetParam().name), before);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadSettings,
    testing::Values(BadValue{L"Data.CodePage", L"1"}, BadValue{L"Data.CodePage", L"latin"},
                    BadValue{L"Data.ShowDeleted", L"perhaps"}, BadValue{L"Data.ReuseTables", L"60001"},
                    BadValue{L"Data.ReuseTables", L"-1"}, BadValue{L"Data.DefaultTechnology", L""},
                    BadValue{L"Data.DefaultTechnology", L"A|B"}, BadValue{L"Data.Durability", L"maybe"},
                    BadValue{L"Data.LockWait", L"600001"}, BadValue{L"Data.Locks", L"dBASE"},
                    BadValue{L"Data.AllowStaleIndexes", L"perhaps"},
                    BadValue{L"Data.NewTableFormat", L"dBASE V"}, BadValue{L"Numbers.SingleDecimals", L"16"},
                    BadValue{L"Numbers.DoubleDecimals", L"2.5"}, BadValue{L"Log.Level", L"loud"},
                    BadValue{L"Data.ReuseTables", L"99999999999999"}));

TEST(Settings, NumbersAreTakenUpToTheirLimits) {
    Settings settings;
    EXPECT_EQ(ApplySetting(settings, L"Data.ReuseTables", L"60000"), SettingResult::Done);
    EXPECT_EQ(settings.reuseTables, 60000u);
    EXPECT_EQ(ApplySetting(settings, L"Numbers.SingleDecimals", L"15"), SettingResult::Done);
    EXPECT_EQ(settings.singleDecimals, 15);
}

TEST(Settings, FormatsOfNewTablesAreKnownInAnyCase) {
    Settings settings;
    EXPECT_EQ(SettingText(settings, L"Data.NewTableFormat"), L"auto");
    EXPECT_EQ(ApplySetting(settings, L"Data.NewTableFormat", L"visual foxpro"), SettingResult::Done);
    EXPECT_EQ(settings.newTableFormat, L"Visual FoxPro");
    EXPECT_EQ(ApplySetting(settings, L"Data.NewTableFormat", L"AUTO"), SettingResult::Done);
    EXPECT_EQ(settings.newTableFormat, L"");
}

TEST(LogLevels, AreReadInAnyCaseAndNamed) {
    EXPECT_EQ(ParseLogLevel(L"WARNING"), LogLevel::Warning);
    EXPECT_EQ(ParseLogLevel(L"off"), LogLevel::Off);
    EXPECT_FALSE(ParseLogLevel(L"warn"));
    EXPECT_EQ(LogLevelName(LogLevel::Debug), L"debug");
}

}  // namespace
}  // namespace zu::host
