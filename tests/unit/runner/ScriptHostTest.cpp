#include "runner/ScriptHost.h"

#include <gtest/gtest.h>

#include "tests/unit/runner/RunningScript.h"

namespace zu::runner {
namespace {

TEST(ScriptHost, RunsTopLevelCodeOfBothLanguages) {
    RunningScript vbscript(Language::VBScript);
    vbscript.Run(L"Note 1 + 2\nGlobals.Note \"x\"");
    EXPECT_EQ(vbscript.notes, L"3;x;");
    EXPECT_FALSE(vbscript.host().failed());
    RunningScript jscript(Language::JScript);
    jscript.Run(L"Note(1 + 2); Globals.Note('x');");
    EXPECT_EQ(jscript.notes, L"3;x;");
    EXPECT_FALSE(jscript.host().failed());
}

TEST(ScriptHost, ReportsTheLineAndColumnOfARunTimeError) {
    RunningScript script(Language::VBScript);
    script.Run(L"Note 1\n  Err.Raise 5, \"src\", \"broken\"\nNote 2");
    EXPECT_EQ(script.notes, L"1;");
    ASSERT_EQ(script.errors.size(), 1U);
    EXPECT_EQ(script.errors[0].line, 2U);
    EXPECT_EQ(script.errors[0].column, 3U);
    EXPECT_EQ(script.errors[0].description, L"broken");
    EXPECT_TRUE(script.host().failed());
}

TEST(ScriptHost, ReportsASyntaxErrorAndRunsNothing) {
    for (const Language language : {Language::VBScript, Language::JScript}) {
        RunningScript script(language);
        script.Run(language == Language::JScript ? L"Note(1);\nx = = 2" : L"Note 1\nx = = 2");
        EXPECT_EQ(script.notes, L"");
        ASSERT_EQ(script.errors.size(), 1U);
        EXPECT_EQ(script.errors[0].line, 2U);
        EXPECT_FALSE(script.errors[0].description.empty());
        EXPECT_TRUE(script.host().failed());
    }
}

TEST(ScriptHost, AnErrorThatTheScriptHandlesIsNoFailure) {
    RunningScript vbscript(Language::VBScript);
    vbscript.Run(L"On Error Resume Next\nErr.Raise 5\nNote Err.Number");
    EXPECT_EQ(vbscript.notes, L"5;");
    EXPECT_FALSE(vbscript.host().failed());
    RunningScript jscript(Language::JScript);
    jscript.Run(L"try { throw new Error('x'); } catch (e) { Note(e.message); }");
    EXPECT_EQ(jscript.notes, L"x;");
    EXPECT_FALSE(jscript.host().failed());
}

TEST(ScriptHost, ErrorsOfObjectsArriveWithTheirTextBeyondAscii) {
    RunningScript script(Language::VBScript);
    script.globals().AddMethod(L"Fail", [](const CallArguments&) -> com::Variant {
        throw com::ComError(E_FAIL, L"Gr\u00F6\u00DFe \u20AC");
    });
    script.Run(L"Fail");
    ASSERT_EQ(script.errors.size(), 1U);
    EXPECT_EQ(script.errors[0].description, L"Gr\u00F6\u00DFe \u20AC");
}

TEST(ScriptHost, AnUnnamedErrorGetsAText) {
    RunningScript script(Language::VBScript);
    script.globals().AddMethod(L"Fail",
                               [](const CallArguments&) -> com::Variant { throw com::ComError(E_NOTIMPL); });
    script.Run(L"Fail");
    ASSERT_EQ(script.errors.size(), 1U);
    EXPECT_FALSE(script.errors[0].description.empty());
}

TEST(ScriptHost, RunsTheEmptyScript) {
    RunningScript script(Language::VBScript);
    script.Run(L"");
    EXPECT_FALSE(script.host().failed());
}

TEST(ScriptHost, LetsTheScriptsObjectsGoWhenItCloses) {
    RunningScript script(Language::VBScript);
    const auto object = MakeUnknown<NamedMembers>();
    script.globals().AddProperty(L"Held",
                                 [&] { return com::Variant(static_cast<IDispatch*>(object.get())); });
    script.Run(L"Set kept = Held");
    IDispatch* raw = object.copy();
    EXPECT_EQ(raw->Release(), 2U);
    script.host().Close();
    raw = object.copy();
    EXPECT_EQ(raw->Release(), 1U);
    script.host().Close();
    EXPECT_FALSE(script.host().routines());
}

TEST(ScriptHost, AStoppedScriptReportsNoMoreErrors) {
    RunningScript script(Language::VBScript);
    script.globals().AddMethod(L"Leave", [&](const CallArguments&) -> com::Variant {
        script.host().Stop();
        throw com::ComError(E_ABORT);
    });
    script.Run(L"Leave");
    EXPECT_TRUE(script.host().stopped());
    EXPECT_TRUE(script.errors.empty());
    EXPECT_FALSE(script.host().failed());
}

}  // namespace
}  // namespace zu::runner
