#include "runner/ScriptRoutines.h"

#include <gtest/gtest.h>

#include "runner/DispatchCall.h"
#include "tests/unit/runner/RunningScript.h"

namespace zu::runner {
namespace {

using com::Variant;

com::ComError FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const com::ComError& error) {
        return error;
    }
    return com::ComError(S_OK);
}

TEST(ScriptRoutines, CallsRoutinesOfBothLanguagesWithTheirArguments) {
    RunningScript vbscript(Language::VBScript);
    vbscript.Run(L"Function Add(a, b)\nAdd = a + b\nEnd Function");
    const auto first = MakeUnknown<ScriptRoutines>(vbscript.host());
    EXPECT_EQ(CallMember(first.get(), L"Add", {Variant(LONG{1}), Variant(LONG{2})}).ToLong(), 3);
    RunningScript jscript(Language::JScript);
    jscript.Run(L"function Add(a, b) { return a + '-' + b; }");
    const auto second = MakeUnknown<ScriptRoutines>(jscript.host());
    EXPECT_EQ(com::TextOf(CallMember(second.get(), L"Add", {Variant(LONG{1}), Variant(LONG{2})})), L"1-2");
}

TEST(ScriptRoutines, AnUnknownRoutineIsNotFound) {
    RunningScript script(Language::VBScript);
    script.Run(L"x = 1");
    const auto routines = MakeUnknown<ScriptRoutines>(script.host());
    EXPECT_FALSE(FindMember(routines.get(), L"NoSuchRoutine"));
}

TEST(ScriptRoutines, WorkWhileTheTopLevelCodeIsRunning) {
    RunningScript script(Language::VBScript);
    const auto routines = MakeUnknown<ScriptRoutines>(script.host());
    script.globals().AddMethod(L"CallBack",
                               [&](const CallArguments&) { return CallMember(routines.get(), L"Later"); });
    script.Run(L"Note CallBack()\nFunction Later()\nLater = \"called\"\nEnd Function");
    EXPECT_EQ(script.notes, L"called;");
}

TEST(ScriptRoutines, AFailingRoutineGivesItsOwnErrorAndIsReportedAtItsLine) {
    RunningScript script(Language::VBScript);
    script.Run(L"Sub Fail()\nErr.Raise 1234, \"me\", \"too bad\"\nEnd Sub");
    const auto routines = MakeUnknown<ScriptRoutines>(script.host());
    const com::ComError failure = FailureOf([&] { CallMember(routines.get(), L"Fail"); });
    EXPECT_EQ(failure.description(), L"too bad");
    ASSERT_EQ(script.errors.size(), 1U);
    EXPECT_EQ(script.errors[0].line, 2U);
    EXPECT_TRUE(script.host().failed());
}

TEST(ScriptRoutines, AWrongNumberOfArgumentsIsExplained) {
    RunningScript script(Language::VBScript);
    script.Run(L"Sub One(a)\nEnd Sub");
    const auto routines = MakeUnknown<ScriptRoutines>(script.host());
    const com::ComError failure = FailureOf([&] {
        CallMember(routines.get(), L"One", {Variant(LONG{1}), Variant(LONG{2})});
    });
    EXPECT_TRUE(FAILED(failure.code()));
    EXPECT_FALSE(failure.description().empty());
}

TEST(ScriptRoutines, FailsQuietlyWhenTheScriptIsGone) {
    RunningScript script(Language::VBScript);
    script.Run(L"Sub S()\nEnd Sub");
    const auto routines = MakeUnknown<ScriptRoutines>(script.host());
    const DISPID id = FindMember(routines.get(), L"S").value();
    routines->Disconnect();
    script.host().Close();
    EXPECT_FALSE(FindMember(routines.get(), L"S"));
    const DISPPARAMS none{};
    EXPECT_EQ(FailureOf([&] { InvokeMember(routines.get(), id, DISPATCH_METHOD, none); }).code(),
              CO_E_OBJNOTCONNECTED);
}

}  // namespace
}  // namespace zu::runner
