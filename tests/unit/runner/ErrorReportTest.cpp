#include "runner/ErrorReport.h"

#include <gtest/gtest.h>

#include "runner/ErrorTexts.h"
#include "runner/ScriptSource.h"

namespace zu::runner {
namespace {

ScriptSource Source(const wchar_t* text) {
    return ScriptSource::FromText(L"a.vbs", text, Language::VBScript);
}

ScriptError Fault(unsigned line, unsigned column, const wchar_t* text = L"Type mismatch") {
    return {static_cast<HRESULT>(0x800A000D), text, line, column};
}

TEST(ErrorReport, ShowsPositionMessageLineAndCaret) {
    EXPECT_EQ(ErrorReport(Source(L"x = 1\ny = x + z\n"), Fault(2, 5)),
              L"a.vbs:2:5: Type mismatch (0x800A000D)\ny = x + z\n    ^");
}

TEST(ErrorReport, KeepsTabsInFrontOfTheCaret) {
    EXPECT_EQ(ErrorReport(Source(L"\t\tx = y"), Fault(1, 5)),
              L"a.vbs:1:5: Type mismatch (0x800A000D)\n\t\tx = y\n\t\t  ^");
}

TEST(ErrorReport, TheCaretMayStandBehindTheLastCharacter) {
    EXPECT_EQ(ErrorReport(Source(L"x = ("), Fault(1, 6)),
              L"a.vbs:1:6: Type mismatch (0x800A000D)\nx = (\n     ^");
}

TEST(ErrorReport, LeavesOutWhatIsNotKnown) {
    EXPECT_EQ(ErrorReport(Source(L"x"), Fault(0, 0)), L"a.vbs: Type mismatch (0x800A000D)");
    EXPECT_EQ(ErrorReport(Source(L"x"), Fault(1, 0)), L"a.vbs:1: Type mismatch (0x800A000D)\nx");
    EXPECT_EQ(ErrorReport(Source(L"x"), Fault(1, 99)), L"a.vbs:1:99: Type mismatch (0x800A000D)\nx");
    EXPECT_EQ(ErrorReport(Source(L"x"), Fault(7, 1)), L"a.vbs:7:1: Type mismatch (0x800A000D)");
}

TEST(ErrorReport, PutsAMessageOfSeveralLinesOnOne) {
    EXPECT_EQ(ErrorReport(Source(L""), Fault(0, 0, L"one\r\ntwo\r\n")), L"a.vbs: one  two (0x800A000D)");
}

TEST(ErrorTexts, KnowsTheErrorsOfScriptRunTimesAndOfAutomation) {
    EXPECT_EQ(ScriptErrorText(static_cast<HRESULT>(0x800A000D)), L"Type mismatch");
    EXPECT_EQ(ScriptErrorText(DISP_E_DIVBYZERO), L"Division by zero");
    EXPECT_EQ(ScriptErrorText(E_NOTIMPL), L"Not implemented");
}

TEST(ErrorTexts, AnUnknownErrorIsNamedByItsNumber) {
    EXPECT_EQ(ScriptErrorText(static_cast<HRESULT>(0x8FFF1234)), L"error 0x8FFF1234");
    EXPECT_EQ(ErrorNumber(static_cast<HRESULT>(0x0000000A)), L"0x0000000A");
}

}  // namespace
}  // namespace zu::runner
