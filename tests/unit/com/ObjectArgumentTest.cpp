#include "Caller.h"

namespace zu::com::test {
namespace {

class ObjectArgument : public ::testing::Test {
protected:
    Caller target{MakeObject<Target>().as<IDispatch>()};
    ComPtr<IDispatch> named = MakeObject<Named>(L"first").as<IDispatch>();
};

/// References to an object, the one asking not counted.
ULONG References(IUnknown& object) {
    object.AddRef();
    return object.Release();
}

VARIANT DispatchReference(IDispatch*& object) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_DISPATCH;
    reference.ppdispVal = &object;
    return reference;
}

TEST_F(ObjectArgument, IsTakenByValueAndByReference) {
    EXPECT_EQ(target.Call(L"NameOf", {Variant(named.get())}).text(), L"8 first");
    Variant variable(named.get());
    EXPECT_EQ(target.Call(L"NameOf", {ByReference(variable)}).text(), L"8 first");
    IDispatch* raw = named.get();
    EXPECT_EQ(target.Call(L"NameOf", {DispatchReference(raw)}).text(), L"8 first");
    VARIANT unknown;
    VariantInit(&unknown);
    unknown.vt = VT_UNKNOWN;
    unknown.punkVal = named.get();
    EXPECT_EQ(target.Call(L"NameOf", {unknown}).text(), L"8 first");
}

TEST_F(ObjectArgument, NothingAndNullAndEmptyAreNoObject) {
    EXPECT_EQ(target.Call(L"NameOf", {Variant(static_cast<IDispatch*>(nullptr))}).text(), L"8 <none>");
    EXPECT_EQ(target.Call(L"NameOf", {Variant::Null()}).text(), L"8 <none>");
    EXPECT_EQ(target.Call(L"NameOf", {Variant()}).text(), L"8 <none>");
}

TEST_F(ObjectArgument, OfAnotherKindIsATypeMismatch) {
    EXPECT_EQ(target.Call(L"NameOf", {Variant(&target.object())}).code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(target.Call(L"NameOf", {Variant(L"first")}).code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(target.Call(L"SwapObject", {Variant(LONG{1})}).code, DISP_E_TYPEMISMATCH);
}

TEST_F(ObjectArgument, ForAByReferenceParameterComesInAnyWrapping) {
    EXPECT_EQ(target.Call(L"SwapObject", {Variant(named.get())}).text(), L"8 first");
    Variant variable(named.get());
    EXPECT_EQ(target.Call(L"SwapObject", {ByReference(variable)}).text(), L"8 first");
    EXPECT_EQ(target.Call(L"NameOf", {variable}).text(), L"8 other") << "the new object is in the variable";
    EXPECT_EQ(variable.type(), VT_DISPATCH);
    IDispatch* raw = named.copy();
    EXPECT_EQ(target.Call(L"SwapObject", {DispatchReference(raw)}).text(), L"8 first");
    const auto swapped = ComPtr<IDispatch>::Adopt(raw);
    EXPECT_EQ(target.Call(L"NameOf", {Variant(swapped.get())}).text(), L"8 other");
}

TEST_F(ObjectArgument, FillsAnEmptyVariable) {
    Variant variable;
    EXPECT_EQ(target.Call(L"SwapObject", {ByReference(variable)}).text(), L"8 <none>");
    EXPECT_EQ(target.Call(L"NameOf", {variable}).text(), L"8 other");
}

TEST_F(ObjectArgument, IsReleasedAfterTheCall) {
    const ULONG before = References(*named);
    Variant variable(named.get());
    target.Call(L"NameOf", {ByReference(variable)});
    target.Call(L"SwapObject", {ByReference(variable)});
    target.Call(L"SwapObject", {Variant(named.get())});
    target.Call(L"Echo", {Variant(named.get())});
    target.Call(L"Join", {Variant(named.get()), Variant(named.get())});
    EXPECT_EQ(References(*named), before);
}

TEST_F(ObjectArgument, ThatNobodyTakesIsReleased) {
    const LONG before = Module::objects();
    target.Call(L"SwapObject");
    target.Call(L"SwapObject", {Variant(named.get())});
    target.Call(L"Child");
    EXPECT_EQ(Module::objects(), before);
}

TEST_F(ObjectArgument, IsReleasedAfterAFailingCall) {
    const ULONG before = References(*named);
    target.Call(L"Order", {Variant(named.get()), Variant(named.get())});
    target.Call(L"Mixed", {Variant(named.get())});
    EXPECT_EQ(References(*named), before);
}

}  // namespace
}  // namespace zu::com::test
