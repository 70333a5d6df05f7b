#include "runner/EventBindings.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include "com/ComError.h"
#include "runner/DispatchCall.h"
#include "runner/ScriptRoutines.h"
#include "tests/unit/runner/EventSource.h"
#include "tests/unit/runner/RunningScript.h"

namespace zu::runner {
namespace {

com::ComPtr<IDispatch> RoutinesOf(RunningScript& script) {
    return MakeUnknown<ScriptRoutines>(script.host()).as<IDispatch>();
}

TEST(EventBindings, CallTheRoutineNamedPrefixPlusEvent) {
    RunningScript script(Language::VBScript);
    script.Run(L"Sub obj_ProvideValue(name, value)\nNote name & \"=\" & value\nEnd Sub");
    const auto source = MakeUnknown<EventSource>();
    EventBindings bindings;
    bindings.Connect(source.get(), L"obj_", RoutinesOf(script));
    source->Ask(L"first", L"1");
    EXPECT_EQ(script.notes, L"first=1;");
    bindings.Disconnect(source.get());
    source->Ask(L"second", L"2");
    EXPECT_EQ(script.notes, L"first=1;");
    EXPECT_EQ(source->sinks(), 0U);
}

TEST(EventBindings, LetVBScriptWriteToArgumentsByReference) {
    RunningScript script(Language::VBScript);
    script.Run(L"Sub x_ProvideValue(name, value)\nvalue = name & \" of \" & value\nEnd Sub");
    const auto source = MakeUnknown<EventSource>();
    EventBindings bindings;
    bindings.Connect(source.get(), L"x_", RoutinesOf(script));
    EXPECT_EQ(source->Ask(L"length", L"7"), L"length of 7");
}

TEST(EventBindings, HandTheResultOfAJScriptRoutineBack) {
    RunningScript script(Language::JScript);
    script.Run(L"function x_ProvideValue(name, value) { return 'js ' + name + value; }");
    const auto source = MakeUnknown<EventSource>();
    EventBindings bindings;
    bindings.Connect(source.get(), L"x_", RoutinesOf(script));
    EXPECT_EQ(source->AskForResult(L"size", L"7"), L"js size7");
}

TEST(EventBindings, AnEventWithoutARoutineIsPassedOver) {
    RunningScript script(Language::VBScript);
    script.Run(L"Sub other()\nEnd Sub");
    const auto source = MakeUnknown<EventSource>();
    EventBindings bindings;
    bindings.Connect(source.get(), L"obj_", RoutinesOf(script));
    source->Ask(L"x", L"1");
    EXPECT_EQ(script.notes, L"");
    EXPECT_TRUE(script.errors.empty());
}

TEST(EventBindings, LetEverythingGoAtTheEnd) {
    RunningScript script(Language::VBScript);
    script.Run(L"");
    const auto source = MakeUnknown<EventSource>();
    {
        EventBindings bindings;
        bindings.Connect(source.get(), L"a_", RoutinesOf(script));
        bindings.Connect(source.get(), L"b_", RoutinesOf(script));
        EXPECT_EQ(source->sinks(), 2U);
    }
    EXPECT_EQ(source->sinks(), 0U);
    IDispatch* raw = source.copy();
    EXPECT_EQ(raw->Release(), 1U);
}

TEST(EventBindings, AnObjectWithoutEventsIsRefused) {
    RunningScript script(Language::VBScript);
    EventBindings bindings;
    const auto plain = MakeUnknown<NamedMembers>();
    EXPECT_THROW(bindings.Connect(plain.get(), L"x_", RoutinesOf(script)), com::ComError);
    EXPECT_THROW(bindings.Connect(nullptr, L"x_", RoutinesOf(script)), com::ComError);
    bindings.Disconnect(plain.get());
    bindings.Disconnect(nullptr);
}

}  // namespace
}  // namespace zu::runner
