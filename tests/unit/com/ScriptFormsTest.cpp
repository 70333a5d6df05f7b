#include "Caller.h"
#include "ScriptEngine.h"

// What the script engines of the system really pass. The scripts leave what they got in Target.Cell(0).
namespace zu::com::test {
namespace {

class ScriptForms : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(Module::objects(), before_) << "no call may keep an object"; }

    /// Runs a script and answers what it left, or its error.
    std::wstring Left(const wchar_t* language, const wchar_t* code) {
        const ComPtr<IDispatch> target = MakeObject<Target>().as<IDispatch>();
        std::wstring error = ScriptEngine(language, target).Run(code);
        if (!error.empty()) return error;
        return Caller(target).Call(L"Cell", {Variant(LONG{0})}).text();
    }
    std::wstring Vbs(const wchar_t* code) { return Left(L"VBScript", code); }
    std::wstring Js(const wchar_t* code) { return Left(L"JScript", code); }

private:
    const LONG before_ = Module::objects();
};

TEST_F(ScriptForms, VbScriptPassesListsInEveryForm) {
    const wchar_t* const forms[] = {
        L"Target.Cell(0) = Target.Join(Array(\"A\", 1))",
        L"list = Array(\"A\", 1): Target.Cell(0) = Target.Join(list)",
        L"list = Array(\"A\", 1): Target.Cell(0) = Target.Join((list))",
        L"Dim list(1): list(0) = \"A\": list(1) = 1: Target.Cell(0) = Target.Join(list)",
        L"Target.Cell(0) = Target.Join(\"A\", 1)",
        L"a = \"A\": b = 1: Target.Cell(0) = Target.Join(a, b)",
        L"a = \"A\": b = 1: list = Array(a, b): Target.Cell(0) = Target.Join(list)",
    };
    for (const wchar_t* form : forms) {
        EXPECT_EQ(Vbs(form), L"8 [0..1] 8 A|2 1") << testing::PrintToString(std::wstring(form));
    }
}

TEST_F(ScriptForms, JScriptPassesListsInEveryForm) {
    const wchar_t* const forms[] = {
        L"Target.Cell(0) = Target.Join(['A', 1]);",
        L"var list = ['A', 1]; Target.Cell(0) = Target.Join(list);",
        L"var list = new Array(); list[0] = 'A'; list[1] = 1; Target.Cell(0) = Target.Join(list);",
        L"Target.Cell(0) = Target.Join('A', 1);",
        L"var a = 'A', b = 1; Target.Cell(0) = Target.Join(a, b);",
    };
    for (const wchar_t* form : forms) {
        EXPECT_EQ(Js(form), L"8 [0..1] 8 A|3 1") << testing::PrintToString(std::wstring(form));
    }
}

TEST_F(ScriptForms, ListsBehindOtherArgumentsWork) {
    EXPECT_EQ(Vbs(L"k = \"key\": Target.Cell(0) = Target.JoinAfter(\"t\", k, Array(\"A\", 1))"),
              L"8 8 t / 8 key / [0..1] 8 A|2 1");
    EXPECT_EQ(Vbs(L"k = \"key\": Target.Cell(0) = Target.JoinAfter(\"t\", k, \"A\", 1)"),
              L"8 8 t / 8 key / [0..1] 8 A|2 1");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.JoinAfter('t', 'key', ['A', 1]);"),
              L"8 8 t / 8 key / [0..1] 8 A|3 1");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.JoinAfter('t', 'key', 'A', 1);"),
              L"8 8 t / 8 key / [0..1] 8 A|3 1");
}

TEST_F(ScriptForms, VbScriptGetsChangedVariablesBack) {
    EXPECT_EQ(Vbs(L"t = \"abc\": Target.ChangeText t: Target.Cell(0) = t"), L"8 abc!");
    EXPECT_EQ(Vbs(L"n = 5: Target.ChangeLong n: Target.Cell(0) = n"), L"3 6");
    EXPECT_EQ(Vbs(L"n = 5: Target.KeepLong n: Target.Cell(0) = n"), L"2 5");
    EXPECT_EQ(Vbs(L"v = \"x\": Target.SetVariant v: Target.Cell(0) = v"), L"3 42");
    EXPECT_EQ(Vbs(L"list = Array(1, 2): Target.FillFirst list: Target.Cell(0) = list(0)"), L"8 changed");
    EXPECT_EQ(Vbs(L"Set o = Target.Child: Target.SwapObject o: Target.Cell(0) = o.Name"), L"8 other");
    EXPECT_EQ(Vbs(L"Set o = Nothing: Target.SwapObject o: Target.Cell(0) = o.Name"), L"8 other");
    EXPECT_EQ(Vbs(L"Dim o: Target.SwapObject o: Target.Cell(0) = o.Name"), L"8 other");
}

TEST_F(ScriptForms, ObjectsByReferenceAreTakenFromAnyExpression) {
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.SwapObject(Target.Child)"), L"8 child");
    EXPECT_EQ(Vbs(L"Set o = Target.Child: Target.Cell(0) = Target.SwapObject(o)"), L"8 child");
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.SwapObject(Nothing)"), L"8 <none>");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.SwapObject(Target.Child);"), L"8 child");
    EXPECT_EQ(Js(L"var o = Target.Child; Target.Cell(0) = Target.SwapObject(o);"), L"8 child");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.SwapObject(null);"), L"8 <none>");
}

TEST_F(ScriptForms, ArgumentsAreLeftOutAtTheEndAndInTheMiddle) {
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.Order(\"a\")"), L"8 a|<null>|<null>");
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.Order(\"a\", , \"c\")"), L"8 a|<null>|c");
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.Add(1)"), L"3 8");
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.ChangeText()"), L"8 <null>");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.Order('a');"), L"8 a|<null>|<null>");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.Order('a', undefined, 'c');"), L"8 a|<null>|c");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.Add(1, undefined);"), L"3 8");
}

TEST_F(ScriptForms, DefaultMembersAreReadAndWritten) {
    EXPECT_EQ(Vbs(L"Target.Item(\"child\") = \"new\": Target.Cell(0) = Target.Child.Content"), L"8 new");
    EXPECT_EQ(Vbs(L"Set t = Target: Target.Cell(0) = t(\"child\").Name"), L"8 child");
    EXPECT_EQ(Vbs(L"Target.Child = \"new\": Target.Cell(0) = Target.Child & \"\""), L"8 new");
    EXPECT_EQ(Vbs(L"Target.Cell(0) = Target.Child(\"x\")"), L"8 content x");
    EXPECT_EQ(Js(L"Target.Child.Content = 'new'; Target.Cell(0) = Target.Item('child').Content;"), L"8 new");
    EXPECT_EQ(Js(L"Target.Cell(0) = Target.Child('x');"), L"8 content x");
}

TEST_F(ScriptForms, CollectionsAreWalked) {
    // Only here: the Enumerator of Wine's JScript never lets go of the object that it walks with.
    EXPECT_EQ(Vbs(L"For Each n In Target: s = s & n & \";\": Next: Target.Cell(0) = s"), L"8 0;10;20;");
}

TEST_F(ScriptForms, ErrorsArriveWithTheirText) {
    EXPECT_EQ(Vbs(L"Target.Fail 457, \"the reason\""), L"the reason") << "a success code is no success here";
    EXPECT_EQ(Vbs(L"Target.Fail &H800A01C9, \"the reason\""), L"the reason");
    EXPECT_EQ(Vbs(L"On Error Resume Next: Target.Fail &H800A01C9, \"the reason\": Target.Cell(0) = "
                  L"Err.Number & \" \" & "
                  L"Err.Description"),
              L"8 457 the reason");
    EXPECT_EQ(Js(L"try { Target.Fail(-2146827831, 'the reason'); } catch (e) { Target.Cell(0) = (e.number & "
                 L"0xFFFF) + "
                 L"' ' + e.description; }"),
              L"8 457 the reason");
}

TEST_F(ScriptForms, InternalOperationsRaiseTheErrorOfAForbiddenCall) {
    EXPECT_EQ(Vbs(L"On Error Resume Next: Target.Secret: Target.Cell(0) = Err.Number"), L"3 97");
    EXPECT_EQ(Vbs(L"On Error Resume Next: Target.NoSuchMember: Target.Cell(0) = Err.Number"), L"3 438");
}

}  // namespace
}  // namespace zu::com::test
