#include "runner/ScriptSource.h"

#include <gtest/gtest.h>

#include <functional>

#include "portable/error/Error.h"
#include "tests/unit/runner/TemporaryFile.h"

namespace zu::runner {
namespace {

using namespace std::string_literals;

ErrorKind KindOf(const std::function<void()>& action, std::string* text = nullptr) {
    try {
        action();
    } catch (const Error& error) {
        if (text) *text = error.what();
        return error.kind();
    }
    return ErrorKind::Internal;
}

TEST(ScriptSource, LoadsAFileAndTellsItsLanguageByTheExtension) {
    const TemporaryFile file(L"a.js", "var x;\r\n");
    const ScriptSource source = ScriptSource::FromFile(file.path(), std::nullopt);
    EXPECT_EQ(source.language(), Language::JScript);
    EXPECT_EQ(source.text(), L"var x;\r\n");
    EXPECT_EQ(source.name(), file.path());
    EXPECT_TRUE(source.fileName().ends_with(L"-a.js"));
    EXPECT_EQ(source.fileName().find_first_of(L"/\\"), std::wstring::npos);
}

TEST(ScriptSource, AStatedLanguageGoesBeforeTheExtension) {
    const TemporaryFile file(L"b.js", "Dim x");
    EXPECT_EQ(ScriptSource::FromFile(file.path(), Language::VBScript).language(), Language::VBScript);
}

TEST(ScriptSource, RefusesAFileWhoseLanguageIsUnknown) {
    const TemporaryFile file(L"c.txt", "x");
    std::string text;
    EXPECT_EQ(KindOf([&] { ScriptSource::FromFile(file.path(), std::nullopt); }, &text),
              ErrorKind::InvalidArgument);
    EXPECT_NE(text.find("--language"), std::string::npos);
}

TEST(ScriptSource, SaysThatAFileIsMissingAndNamesIt) {
    std::string text;
    EXPECT_EQ(KindOf([] { ScriptSource::FromFile(L"no such folder\\x.vbs", std::nullopt); }, &text),
              ErrorKind::NotFound);
    EXPECT_NE(text.find("no such folder\\x.vbs"), std::string::npos);
}

TEST(ScriptSource, DoesNotTakeAFolderForAScript) {
    wchar_t folder[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, folder);
    EXPECT_NE(KindOf([&] { ScriptSource::FromFile(folder, Language::VBScript); }), ErrorKind::Internal);
}

TEST(ScriptSource, RefusesZeroCharactersWithTheirLine) {
    std::string text;
    EXPECT_EQ(
        KindOf([] { ScriptSource::FromBytes(L"stdin", "one\ntwo\nth\0ree"s, Language::VBScript); }, &text),
        ErrorKind::Unsupported);
    EXPECT_NE(text.find("line 3"), std::string::npos);
}

TEST(ScriptSource, CutsLinesAtEveryKindOfLineEnd) {
    const ScriptSource source = ScriptSource::FromText(L"-e", L"one\r\ntwo\nthree\rfour", Language::VBScript);
    EXPECT_EQ(source.Line(1), L"one");
    EXPECT_EQ(source.Line(2), L"two");
    EXPECT_EQ(source.Line(3), L"three");
    EXPECT_EQ(source.Line(4), L"four");
    EXPECT_EQ(source.Line(5), L"");
    EXPECT_EQ(source.Line(1'000'000), L"");
}

TEST(ScriptSource, CodeWithoutAFileGetsAGuessedLanguage) {
    EXPECT_EQ(ScriptSource::FromText(L"-e", L"var x = 1;", std::nullopt).language(), Language::JScript);
    EXPECT_EQ(ScriptSource::FromText(L"-e", L"Dim x", std::nullopt).language(), Language::VBScript);
    EXPECT_EQ(ScriptSource::FromText(L"-e", L"Dim x", std::nullopt).fullPath(), L"-e");
}

}  // namespace
}  // namespace zu::runner
