#include <cmath>
#include <limits>

#include "Caller.h"

namespace zu::com::test {
namespace {

class Argument : public ::testing::Test {
protected:
    Caller target{MakeObject<Target>().as<IDispatch>()};
};

TEST_F(Argument, ByValueVariantsArriveAsTheyAre) {
    EXPECT_EQ(target.Call(L"Echo", {Variant(L"abc")}).text(), L"8 abc");
    EXPECT_EQ(target.Call(L"Echo", {Variant(SHORT{3})}).text(), L"2 3");
    EXPECT_EQ(target.Call(L"Echo", {Variant::Null()}).text(), L"null");
    EXPECT_EQ(target.Call(L"Echo", {Variant()}).text(), L"empty");
}

TEST_F(Argument, VariablesAreLookedThrough) {
    Variant inner(L"abc");
    EXPECT_EQ(target.Call(L"Echo", {ByReference(inner)}).text(), L"8 abc");
    VARIANT twice = ByReference(inner);
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &twice;
    EXPECT_EQ(target.Call(L"Echo", {reference}).text(), L"8 abc");
    LONG number = 7;
    EXPECT_EQ(target.Call(L"Echo", {ByReference(number)}).text(), L"3 7");
    BSTR text = inner.get().bstrVal;
    EXPECT_EQ(target.Call(L"Echo", {ByReference(text)}).text(), L"8 abc");
}

TEST_F(Argument, ReferencesOfEveryTypeAreLookedThrough) {
    struct Case {
        VARTYPE type;
        const wchar_t* text;
    };
    for (const Case& one : {Case{VT_UI1, L"1"}, Case{VT_I1, L"1"}, Case{VT_I2, L"1"}, Case{VT_UI2, L"1"},
                            Case{VT_I4, L"1"}, Case{VT_UI4, L"1"}, Case{VT_I8, L"1"}, Case{VT_R4, L"1"},
                            Case{VT_R8, L"1"}, Case{VT_CY, L"1"}, Case{VT_DECIMAL, L"1"}}) {
        Variant value = Convert(Variant(LONG{1}), one.type);
        VARIANT reference;
        VariantInit(&reference);
        reference.vt = static_cast<VARTYPE>(VT_BYREF | one.type);
        reference.byref = one.type == VT_DECIMAL ? static_cast<void*>(&value.address()->decVal)
                                                 : static_cast<void*>(&value.address()->llVal);
        EXPECT_EQ(target.Call(L"Echo", {reference}).text(), std::to_wstring(one.type) + L" " + one.text);
        EXPECT_EQ(target.Call(L"Add", {reference}).text(), L"3 8") << one.type;
    }
}

TEST_F(Argument, AVariantThatRefersToItselfDoesNotHang) {
    VARIANT loop;
    VariantInit(&loop);
    loop.vt = VT_BYREF | VT_VARIANT;
    loop.pvarVal = &loop;
    EXPECT_TRUE(FAILED(target.Call(L"Add", {loop}).code));
}

TEST_F(Argument, NumbersAreConvertedToTheTypeOfTheParameter) {
    EXPECT_EQ(target.Call(L"Add", {Variant(SHORT{2}), Variant(L"3")}).text(), L"3 5");
    EXPECT_EQ(target.Call(L"Add", {Variant(2.0), Variant(true)}).text(), L"3 1");
    Variant variable(SHORT{2});
    EXPECT_EQ(target.Call(L"Add", {ByReference(variable), Variant(LONG{1})}).text(), L"3 3");
    EXPECT_EQ(target.Call(L"Flag", {Variant(LONG{0})}).text(), L"11 False");
    EXPECT_EQ(target.Call(L"Flag", {Variant(L"True")}).text(), L"11 True");
    EXPECT_EQ(target.Call(L"Mix", {Variant(SHORT{2})}).text(), L"3 3");
}

TEST_F(Argument, TextsAreConvertedFromAnyValue) {
    EXPECT_EQ(target.Call(L"Texts", {Variant(LONG{12}), Variant(true)}).text(), L"8 12|True");
    Variant variable(L"v");
    EXPECT_EQ(target.Call(L"Texts", {ByReference(variable), Variant(L"")}).text(), L"8 v|");
}

TEST_F(Argument, AnObjectGivesItsDefaultValueForText) {
    const auto named = MakeObject<Named>(L"n").as<IDispatch>();
    EXPECT_EQ(target.Call(L"Texts", {Variant(named.get())}).text(), L"8 |<null>");
    ASSERT_EQ(Caller(named).Put(L"Content", {Variant(L"inner")}).code, S_OK);
    EXPECT_EQ(target.Call(L"Texts", {Variant(named.get())}).text(), L"8 inner|<null>");
}

TEST_F(Argument, WhatCannotBeConvertedIsReportedWithItsPlace) {
    Outcome outcome = target.Call(L"Add", {Variant(LONG{1}), Variant(L"many")});
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0u);
    outcome = target.Call(L"Add", {Variant(L"many"), Variant(LONG{1})});
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 1u);
    outcome = target.Call(L"Add", {Variant(1e10), Variant(LONG{1})});
    EXPECT_EQ(outcome.code, DISP_E_OVERFLOW);
    EXPECT_EQ(outcome.badArgument, 1u);
    EXPECT_EQ(target.Call(L"Add", {Variant::Null()}).code, DISP_E_TYPEMISMATCH);
}

TEST_F(Argument, LeftOutArgumentsGetTheirDefaults) {
    EXPECT_EQ(target.Call(L"Add", {Variant(LONG{1})}).text(), L"3 8");
    EXPECT_EQ(target.Call(L"Add", {Variant(LONG{1}), Variant::Missing()}).text(), L"3 8");
    EXPECT_EQ(target.Call(L"Flag").text(), L"11 True");
    EXPECT_EQ(target.Call(L"Texts", {Variant(L"a")}).text(), L"8 a|<null>");
    EXPECT_EQ(target.Call(L"Describe").text(), L"8 missing");
    EXPECT_EQ(target.Call(L"ChangeLong").text(), L"3 5");
    EXPECT_EQ(target.Call(L"ChangeText").text(), L"8 <null>");
    EXPECT_EQ(target.Call(L"SwapObject").text(), L"8 <none>");
    EXPECT_EQ(target.Call(L"Order", {Variant(L"a"), Variant::Missing(), Variant(L"c")}).text(),
              L"8 a|<null>|c");
}

TEST_F(Argument, AMissingMarkInAVariableCountsAsLeftOut) {
    Variant missing = Variant::Missing();
    EXPECT_EQ(target.Call(L"Add", {Variant(LONG{1}), ByReference(missing)}).text(), L"3 8");
    EXPECT_EQ(target.Call(L"Describe", {ByReference(missing)}).text(), L"8 missing");
}

TEST_F(Argument, UndefinedOfJScriptLeavesAnOptionalArgumentOut) {
    EXPECT_EQ(target.Call(L"Add", {Variant(LONG{1}), Variant()}).text(), L"3 8");
    EXPECT_EQ(target.Call(L"Describe", {Variant()}).text(), L"8 missing");
    Variant unset;
    EXPECT_EQ(target.Call(L"Describe", {ByReference(unset)}).text(), L"8 empty") << "a variable is a value";
}

TEST_F(Argument, OmittedVariantsArriveAsMissingWhateverTheirDefault) {
    EXPECT_EQ(target.Call(L"Defaults").text(), L"8 missing missing");
    EXPECT_EQ(target.Call(L"Defaults", {Variant(false)}).text(), L"8 11 False missing");
}

TEST_F(Argument, RequiredArgumentsMustBeGiven) {
    EXPECT_EQ(target.Call(L"Add").code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(target.Call(L"Echo").code, DISP_E_BADPARAMCOUNT);
    const Outcome hole = target.Call(L"Add", {Variant::Missing(), Variant(LONG{1})});
    EXPECT_EQ(hole.code, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(hole.badArgument, 1u);
}

TEST_F(Argument, TooManyArgumentsAreRefused) {
    EXPECT_EQ(target.Call(L"Nop", {Variant(LONG{1})}).code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(target.Call(L"Add", {Variant(LONG{1}), Variant(LONG{1}), Variant(LONG{1})}).code,
              DISP_E_BADPARAMCOUNT);
}

TEST_F(Argument, NamedArgumentsFindTheirPlace) {
    const DISPID id = target.IdOf(L"Order");
    // Named ones come first in the array of the call, so last in natural order.
    EXPECT_EQ(target.Invoke(id, {Variant(L"a"), Variant(L"c")}, DISPATCH_METHOD, {2}).text(),
              L"8 a|<null>|c");
    EXPECT_EQ(target.Invoke(id, {Variant(L"a"), Variant(L"c")}, DISPATCH_METHOD, {2, 0}).text(),
              L"8 a|<null>|c");
    EXPECT_EQ(target.Invoke(id, {Variant(L"c")}, DISPATCH_METHOD, {2}).code, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(target.Invoke(id, {Variant(L"c")}, DISPATCH_METHOD, {9}).code, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(target.Invoke(id, {Variant(L"a"), Variant(L"b")}, DISPATCH_METHOD, {0}).code,
              DISP_E_BADPARAMCOUNT)
        << "the first parameter is given twice";
}

TEST_F(Argument, ValuesOfAllSizesReachTheirPlaces) {
    Variant money = Convert(Variant(2.5), VT_CY);
    Variant date = Convert(Variant(36526.5), VT_DATE);
    EXPECT_EQ(target
                  .Call(L"Mixed", {Variant(SHORT{1}), Variant(2.5), Variant(L"three"), Variant(L"four"),
                                   Variant(5.25), Variant(true), money, date})
                  .text(),
              L"8 1 2.500000 8 three four 5.250000 -1 25000 36526.500000");
    // The same through conversions.
    EXPECT_EQ(target
                  .Call(L"Mixed", {Variant(L"1"), Variant(SHORT{2}), Variant(true), Variant(LONG{4}),
                                   Variant(L"5"), Variant(LONG{0}), Variant(SHORT{3}), Variant(LONG{1})})
                  .text(),
              L"8 1 2.000000 11 True 4 5.000000 0 30000 1.000000");
}

TEST_F(Argument, ByReferenceVariantsAreTheCallersOwnVariables) {
    Variant variable(L"before");
    EXPECT_EQ(target.Call(L"SetVariant", {ByReference(variable)}).code, S_OK);
    EXPECT_EQ(Describe(variable), L"3 42");
}

TEST_F(Argument, ByReferenceVariantsTakeLiterals) {
    Variant literal(L"before");
    EXPECT_EQ(target.Call(L"SetVariant", {literal}).code, S_OK);
    EXPECT_EQ(Describe(literal), L"8 before") << "a value stays the caller's";
    EXPECT_EQ(target.Call(L"Describe", {Variant(L"x")}).text(), L"8 8 x");
}

TEST_F(Argument, ByReferenceVariantsHandTypedReferencesTheirNewValue) {
    LONG number = 1;
    EXPECT_EQ(target.Call(L"SetVariant", {ByReference(number)}).code, S_OK);
    EXPECT_EQ(number, 42);
    Bstr text(L"before");
    BSTR raw = text.detach();
    EXPECT_EQ(target.Call(L"SetVariant", {ByReference(raw)}).code, S_OK);
    EXPECT_EQ(Bstr::Adopt(raw).str(), L"42");
}

TEST_F(Argument, ChangedTextsGoBackToTheVariable) {
    Variant variable(L"abc");
    EXPECT_EQ(target.Call(L"ChangeText", {ByReference(variable)}).text(), L"8 abc");
    EXPECT_EQ(Describe(variable), L"8 abc!");
    BSTR raw = Bstr(L"abc").detach();
    EXPECT_EQ(target.Call(L"ChangeText", {ByReference(raw)}).text(), L"8 abc");
    EXPECT_EQ(Bstr::Adopt(raw).str(), L"abc!");
    EXPECT_EQ(target.Call(L"ChangeText", {Variant(L"literal")}).text(), L"8 literal");
}

TEST_F(Argument, ChangedNumbersGoBackToTheVariable) {
    Variant variable(SHORT{5});
    EXPECT_EQ(target.Call(L"ChangeLong", {ByReference(variable)}).text(), L"3 5");
    EXPECT_EQ(Describe(variable), L"3 6");
    LONG number = 8;
    EXPECT_EQ(target.Call(L"ChangeLong", {ByReference(number)}).text(), L"3 8");
    EXPECT_EQ(number, 9);
    double other = 1.5;
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_R8;
    reference.pdblVal = &other;
    EXPECT_EQ(target.Call(L"ChangeLong", {reference}).text(), L"3 2");
    EXPECT_EQ(other, 3.0) << "the value takes the type of the caller's variable";
}

TEST_F(Argument, UnchangedVariablesKeepTheirType) {
    Variant variable(SHORT{5});
    EXPECT_EQ(target.Call(L"KeepLong", {ByReference(variable)}).text(), L"3 5");
    EXPECT_EQ(variable.type(), VT_I2);
    Variant text(L"5");
    EXPECT_EQ(target.Call(L"KeepLong", {ByReference(text)}).text(), L"3 5");
    EXPECT_EQ(Describe(text), L"8 5");
}

TEST_F(Argument, NothingGoesBackWhenTheCallFails) {
    EXPECT_EQ(target.Call(L"KeepLong", {Variant(L"x")}).code, DISP_E_TYPEMISMATCH);
    Variant variable(L"x");
    EXPECT_EQ(target.Call(L"ChangeLong", {ByReference(variable)}).code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Describe(variable), L"8 x");
}

TEST_F(Argument, BrokenParameterBlocksAreRefused) {
    const DISPID id = target.IdOf(L"Echo");
    EXPECT_EQ(target.object().Invoke(id, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    DISPPARAMS noArray{nullptr, nullptr, 1, 0};
    EXPECT_EQ(target.object().Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &noArray, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    VARIANT one;
    VariantInit(&one);
    DISPID name = 0;
    DISPPARAMS moreNames{&one, &name, 1, 2};
    EXPECT_EQ(target.object().Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &moreNames, nullptr, nullptr, nullptr),
              E_INVALIDARG);
}

}  // namespace
}  // namespace zu::com::test
