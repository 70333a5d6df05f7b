#include "host/engine/SettingsFile.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "TemporaryFolder.h"

namespace zu::host {
namespace {

struct Parsed {
    Settings settings;
    std::vector<std::wstring> faults;
};

Parsed Parse(std::wstring_view text, const std::wstring& folder = L"C:\\here") {
    Parsed result;
    ParseSettings(text, folder, result.settings,
                  [&](const std::wstring& fault) { result.faults.push_back(fault); });
    return result;
}

TEST(SettingsFile, SectionsKeysCommentsAndQuotesAreUnderstood) {
    const Parsed parsed = Parse(
        L"; a comment\r\n# another\r\n\r\n[Data]\r\n  ShowDeleted = yes \r\n"
        L"Folder=\"D:\\my tables\"\r\n[Log]\nLevel=debug");
    EXPECT_TRUE(parsed.faults.empty());
    EXPECT_TRUE(parsed.settings.showDeleted);
    EXPECT_EQ(parsed.settings.dataFolder, L"D:\\my tables");
    EXPECT_EQ(parsed.settings.logLevel, LogLevel::Debug);
}

TEST(SettingsFile, RelativePathsStartBesideTheFile) {
    const Parsed parsed = Parse(L"[Data]\nFolder=tables\n[Log]\nFile=log.txt\n");
    EXPECT_EQ(parsed.settings.dataFolder, L"C:\\here\\tables");
    EXPECT_EQ(parsed.settings.logFile, L"C:\\here\\log.txt");
}

TEST(SettingsFile, EnvironmentVariablesInPathsAreReplaced) {
    SetEnvironmentVariableW(L"ZU_TEST_FOLDER", L"E:\\else");
    EXPECT_EQ(Parse(L"[Data]\nFolder=%ZU_TEST_FOLDER%\\t\n").settings.dataFolder, L"E:\\else\\t");
    SetEnvironmentVariableW(L"ZU_TEST_FOLDER", nullptr);
}

TEST(SettingsFile, UnknownKeysBadValuesAndStrayLinesAreToldWithTheirLineAndPassedOver) {
    const Parsed parsed = Parse(L"[Data]\nColour=red\nCodePage=abc\nnonsense\nShowDeleted=on\n");
    ASSERT_EQ(parsed.faults.size(), 3u);
    EXPECT_EQ(parsed.faults[0], L"settings, line 2: there is no setting Data.Colour");
    EXPECT_EQ(parsed.faults[1],
              L"settings, line 3: Data.CodePage cannot be \"abc\", expected the number of a known code page");
    EXPECT_EQ(parsed.faults[2], L"settings, line 4: expected Key=Value or [Section]");
    EXPECT_TRUE(parsed.settings.showDeleted);
    EXPECT_EQ(parsed.settings.codePage, 1252u);
}

TEST(SettingsFile, IsReadAsUtf8Utf16AndAnsi) {
    const test::TemporaryFolder folder;
    const std::wstring expected = folder.path() + L"\\M\u00FCll";
    const auto read = [&](std::string_view bytes) {
        return ReadSettings(folder.Write(L"zuengine.ini", bytes), {}).dataFolder;
    };
    EXPECT_EQ(read("[Data]\nFolder=M\xC3\xBCll\n"), expected);
    EXPECT_EQ(read("\xEF\xBB\xBF[Data]\nFolder=M\xC3\xBCll\n"), expected);
    EXPECT_EQ(read("[Data]\nFolder=M\xFCll\n"), expected);
    EXPECT_EQ(
        read(std::string_view("\xFF\xFE[\0D\0a\0t\0a\0]\0\n\0F\0o\0l\0d\0e\0r\0=\0M\0\xFC\0l\0l\0\n\0", 44)),
        expected);
}

TEST(SettingsFile, AMissingFileGivesTheDefaultsAndAFault) {
    std::vector<std::wstring> faults;
    const Settings settings = ReadSettings(L"C:\\no such folder\\zuengine.ini",
                                           [&](const std::wstring& fault) { faults.push_back(fault); });
    EXPECT_EQ(settings.defaultTechnology, L"DBF");
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_NE(faults[0].find(L"no such folder"), std::wstring::npos);
}

TEST(SettingsFile, AnOversizedFileIsNotRead) {
    const test::TemporaryFolder folder;
    std::vector<std::wstring> faults;
    ReadSettings(folder.Write(L"big.ini", std::string((1 << 20) + 1, ' ')),
                 [&](const std::wstring& fault) { faults.push_back(fault); });
    EXPECT_EQ(faults.size(), 1u);
}

TEST(SettingsFile, TheEnvironmentNamesItAheadOfEverythingElse) {
    SetEnvironmentVariableW(L"ZUENGINE_INI", L"C:\\somewhere\\own.ini");
    EXPECT_EQ(FindSettingsFile(), L"C:\\somewhere\\own.ini");
    SetEnvironmentVariableW(L"ZUENGINE_INI", nullptr);
}

TEST(SettingsFile, TheUsersApplicationDataComesLast) {
    const test::TemporaryFolder folder;
    std::wstring before(300, L'\0');
    before.resize(GetEnvironmentVariableW(L"APPDATA", before.data(), 300));
    SetEnvironmentVariableW(L"APPDATA", folder.path().c_str());
    EXPECT_EQ(FindSettingsFile(), L"");
    CreateDirectoryW((folder.path() + L"\\Zuengine").c_str(), nullptr);
    folder.Write(L"Zuengine\\zuengine.ini", "");
    EXPECT_EQ(FindSettingsFile(), folder.path() + L"\\Zuengine\\zuengine.ini");
    SetEnvironmentVariableW(L"APPDATA", before.c_str());
}

}  // namespace
}  // namespace zu::host
