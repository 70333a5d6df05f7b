#include "Caller.h"
#include "com/SafeArray.h"
#include "com/ScriptList.h"

namespace zu::com::test {
namespace {

class ArrayArgument : public ::testing::Test {
protected:
    Caller target{MakeObject<Target>().as<IDispatch>()};

    static Variant Array(const std::vector<Variant>& elements) { return SafeArray::Of(elements).ToVariant(); }
    static Variant Pair() { return Array({Variant(L"NAME"), Variant(LONG{1})}); }
    static Variant Typed(VARTYPE type, const std::vector<Variant>& elements) {
        SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(elements.size()));
        for (LONG index = 0; index < static_cast<LONG>(elements.size()); ++index) {
            const Variant value = Convert(elements[static_cast<std::size_t>(index)], type);
            const bool pointer = type == VT_BSTR || type == VT_DISPATCH;
            SafeArrayPutElement(
                array, &index,
                pointer ? static_cast<void*>(value->bstrVal) : const_cast<LONGLONG*>(&value->llVal));
        }
        VARIANT result;
        VariantInit(&result);
        result.vt = static_cast<VARTYPE>(VT_ARRAY | type);
        result.parray = array;
        return Variant::Adopt(result);
    }

    static constexpr const wchar_t* kPair = L"8 [0..1] 8 NAME|3 1";
};

TEST_F(ArrayArgument, TakesAnArrayByValue) {
    EXPECT_EQ(target.Call(L"Join", {Pair()}).text(), kPair);
}

TEST_F(ArrayArgument, TakesAnArrayInAVariable) {
    Variant variable = Pair();
    EXPECT_EQ(target.Call(L"Join", {ByReference(variable)}).text(), kPair);
}

TEST_F(ArrayArgument, TakesAnArrayByReference) {
    Variant owner = Pair();
    EXPECT_EQ(target.Call(L"Join", {ByReference(owner.address()->parray)}).text(), kPair);
}

TEST_F(ArrayArgument, TakesAnArrayByReferenceInAVariable) {
    Variant owner = Pair();
    VARIANT inner = ByReference(owner.address()->parray);
    VARIANT outer;
    VariantInit(&outer);
    outer.vt = VT_BYREF | VT_VARIANT;
    outer.pvarVal = &inner;
    EXPECT_EQ(target.Call(L"Join", {outer}).text(), kPair);
}

TEST_F(ArrayArgument, TakesAScriptArray) {
    const auto array = MakeScriptArray({Variant(L"NAME"), Variant(LONG{1})});
    EXPECT_EQ(target.Call(L"Join", {Variant(array.get())}).text(), kPair);
    Variant variable(array.get());
    EXPECT_EQ(target.Call(L"Join", {ByReference(variable)}).text(), kPair);
    EXPECT_EQ(target.Call(L"Join", {Variant(MakeScriptArray({}).get())}).text(), L"8 [0..-1]");
}

TEST_F(ArrayArgument, HolesOfAScriptArrayAreEmpty) {
    const auto array = MakeScriptArray({Variant(L"A"), Variant(), Variant(L"B")});
    EXPECT_EQ(target.Call(L"Join", {Variant(array.get())}).text(), L"8 [0..2] 8 A|empty|8 B");
}

TEST_F(ArrayArgument, TakesTypedArrays) {
    EXPECT_EQ(target.Call(L"Join", {Typed(VT_BSTR, {Variant(L"A"), Variant(L"B")})}).text(),
              L"8 [0..1] 8 A|8 B");
    EXPECT_EQ(target.Call(L"Join", {Typed(VT_I4, {Variant(LONG{1}), Variant(LONG{2})})}).text(),
              L"8 [0..1] 3 1|3 2");
    EXPECT_EQ(target.Call(L"Join", {Typed(VT_R8, {Variant(1.5)})}).text(), L"8 [0..0] 5 1.5");
    EXPECT_EQ(target.Call(L"Join", {Typed(VT_UI1, {Variant(LONG{200})})}).text(), L"8 [0..0] 17 200");
    Variant variable = Typed(VT_BSTR, {Variant(L"A")});
    EXPECT_EQ(target.Call(L"Join", {ByReference(variable)}).text(), L"8 [0..0] 8 A");
}

TEST_F(ArrayArgument, GathersAPlainListOfValues) {
    EXPECT_EQ(target.Call(L"Join", {Variant(L"NAME"), Variant(LONG{1})}).text(), kPair);
    EXPECT_EQ(target.Call(L"Join", {Variant(L"NAME")}).text(), L"8 [0..0] 8 NAME");
    Variant name(L"NAME");
    Variant value(LONG{1});
    EXPECT_EQ(target.Call(L"Join", {ByReference(name), ByReference(value)}).text(), kPair);
    EXPECT_EQ(target.Call(L"Join", {Variant(L"A"), Variant::Missing(), Variant::Null()}).text(),
              L"8 [0..2] 8 A|missing|null");
}

TEST_F(ArrayArgument, GathersBehindOtherArguments) {
    EXPECT_EQ(
        target.Call(L"JoinAfter", {Variant(L"t"), Variant(L"k"), Variant(L"NAME"), Variant(LONG{1})}).text(),
        L"8 8 t / 8 k / [0..1] 8 NAME|3 1");
    EXPECT_EQ(target.Call(L"JoinAfter", {Variant(L"t"), Variant(L"k"), Pair()}).text(),
              L"8 8 t / 8 k / [0..1] 8 NAME|3 1");
}

TEST_F(ArrayArgument, AnArrayAmongPlainValuesIsOneValue) {
    EXPECT_EQ(target.Call(L"Join", {Variant(L"NAME"), Pair()}).text(), L"8 [0..1] 8 NAME|8204");
    EXPECT_EQ(target.Call(L"Join", {Pair(), Variant(LONG{5})}).text(), L"8 [0..1] 8204|3 5");
}

TEST_F(ArrayArgument, AnObjectThatIsNoListIsOneValue) {
    const auto named = MakeObject<Named>(L"n").as<IDispatch>();
    EXPECT_EQ(target.Call(L"Join", {Variant(named.get())}).text(), L"8 [0..0] object");
}

TEST_F(ArrayArgument, KeepsTheBoundsOfTheCallersArray) {
    Variant none = SafeArray::NoArguments().ToVariant();
    EXPECT_EQ(target.Call(L"Join", {none}).text(), L"8 [-1..-1] empty");
    SAFEARRAYBOUND bound{2, 5};
    VARIANT array;
    VariantInit(&array);
    array.vt = VT_ARRAY | VT_VARIANT;
    array.parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
    const Variant owner = Variant::Adopt(array);
    EXPECT_EQ(target.Call(L"Join", {owner}).text(), L"8 [5..6] empty|empty");
}

TEST_F(ArrayArgument, ChangesOfElementsReachTheCallersArray) {
    Variant variable = Pair();
    EXPECT_EQ(target.Call(L"FillFirst", {ByReference(variable)}).code, S_OK);
    EXPECT_EQ(target.Call(L"Join", {variable}).text(), L"8 [0..1] 8 changed|3 1");
}

TEST_F(ArrayArgument, AnArrayByValueCannotBeTakenAway) {
    Variant owner = Pair();
    EXPECT_EQ(target.Call(L"DropArray", {owner}).code, DISP_E_EXCEPTION);
    EXPECT_EQ(target.Call(L"Join", {owner}).text(), kPair);
}

TEST_F(ArrayArgument, MustBeGiven) {
    EXPECT_EQ(target.Call(L"Join").code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(target.Call(L"Join", {Variant::Missing()}).code, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(target.Call(L"JoinAfter", {Variant(L"t"), Variant(L"k")}).code, DISP_E_BADPARAMCOUNT);
}

TEST_F(ArrayArgument, RefusesAListOfAbsurdLength) {
    for (const double length : {-1.0, 1e7, 4e9, 1e300}) {
        const auto array = MakeScriptArray({Variant(L"A")}, Variant(length));
        EXPECT_EQ(target.Call(L"Join", {Variant(array.get())}).code, DISP_E_TYPEMISMATCH) << length;
    }
}

TEST_F(ArrayArgument, RefusesTypedArraysOfTwoDimensions) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    VARIANT array;
    VariantInit(&array);
    array.vt = VT_ARRAY | VT_I4;
    array.parray = SafeArrayCreate(VT_I4, 2, bounds);
    const Variant owner = Variant::Adopt(array);
    EXPECT_EQ(target.Call(L"Join", {owner}).code, DISP_E_TYPEMISMATCH);
}

TEST_F(ArrayArgument, AnArrayReachesAVariantParameterWhole) {
    Variant variable = Pair();
    EXPECT_EQ(target.Call(L"Describe", {ByReference(variable)}).text(), L"8 8204");
    EXPECT_EQ(target.Call(L"Echo", {ByReference(variable)}).text(), L"8204");
}

TEST(ScriptList, LeavesOtherValuesAlone) {
    std::vector<Variant> elements{Variant(L"kept")};
    EXPECT_FALSE(ReadList(Variant(L"text"), elements));
    EXPECT_FALSE(ReadList(Variant(), elements));
    EXPECT_FALSE(ReadList(Variant(MakeObject<Named>(L"n").as<IDispatch>().get()), elements));
    EXPECT_EQ(elements.size(), 1u);
}

TEST(ScriptList, ReadsAnArrayWithoutBoundsAsEmpty) {
    VARIANT array;
    VariantInit(&array);
    array.vt = VT_ARRAY | VT_VARIANT;
    array.parray = nullptr;
    std::vector<Variant> elements{Variant(L"gone")};
    EXPECT_TRUE(ReadList(array, elements));
    EXPECT_TRUE(elements.empty());
}

}  // namespace
}  // namespace zu::com::test
