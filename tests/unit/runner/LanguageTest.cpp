#include "runner/Language.h"

#include <gtest/gtest.h>

namespace zu::runner {
namespace {

TEST(Language, ByNameInAnyCase) {
    EXPECT_EQ(LanguageByName(L"VBScript"), Language::VBScript);
    EXPECT_EQ(LanguageByName(L"vbs"), Language::VBScript);
    EXPECT_EQ(LanguageByName(L"JSCRIPT"), Language::JScript);
    EXPECT_EQ(LanguageByName(L"javascript"), Language::JScript);
    EXPECT_EQ(LanguageByName(L"js"), Language::JScript);
    EXPECT_FALSE(LanguageByName(L"perl"));
    EXPECT_FALSE(LanguageByName(L""));
}

TEST(Language, ByExtensionOfTheLastPartOfThePath) {
    EXPECT_EQ(LanguageByExtension(L"C:\\a\\b.VBS"), Language::VBScript);
    EXPECT_EQ(LanguageByExtension(L"x.js"), Language::JScript);
    EXPECT_FALSE(LanguageByExtension(L"C:\\scripts.vbs\\run"));
    EXPECT_FALSE(LanguageByExtension(L"a.vbs.txt"));
    EXPECT_FALSE(LanguageByExtension(L"vbs"));
    EXPECT_FALSE(LanguageByExtension(L""));
}

TEST(Language, GuessesFromWordsAndSigns) {
    EXPECT_EQ(GuessLanguage(L"Echo DbfCount(\"a\", \"B == 2 && {x};\")"), Language::VBScript);
    EXPECT_EQ(GuessLanguage(L"Dim x\nx = 1 : If x = 1 Then Echo x"), Language::VBScript);
    EXPECT_EQ(GuessLanguage(L"var a = [1, 2]; Echo(a.length);"), Language::JScript);
    EXPECT_EQ(GuessLanguage(L"for (i = 0; i < 3; i++) { Echo(i) }"), Language::JScript);
}

TEST(Language, UndecidedCodeIsVBScript) {
    EXPECT_EQ(GuessLanguage(L"Echo(1)"), Language::VBScript);
    EXPECT_EQ(GuessLanguage(L""), Language::VBScript);
}

}  // namespace
}  // namespace zu::runner
