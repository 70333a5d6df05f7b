#include "runner/NamedMembers.h"

#include <gtest/gtest.h>

#include "com/ComError.h"
#include "runner/DispatchCall.h"

namespace zu::runner {
namespace {

using com::Variant;

DISPID IdOf(IDispatch* object, const wchar_t* name) {
    return FindMember(object, name).value_or(DISPID_UNKNOWN);
}

HRESULT CodeOf(const std::function<void()>& action, std::wstring* text = nullptr) {
    try {
        action();
    } catch (const com::ComError& error) {
        if (text) *text = error.description();
        return error.code();
    }
    return S_OK;
}

com::ComPtr<NamedMembers> Sample() {
    auto object = MakeUnknown<NamedMembers>();
    object->AddMethod(L"Double", [](const CallArguments& call) { return Variant(2 * call.Long(0)); });
    object->AddMethod(L"Item", [](const CallArguments& call) { return Variant(call.Long(0) + 100); });
    object->MakeDefault(L"Item");
    object->AddMethod(L"Fail",
                      [](const CallArguments&) -> Variant { throw com::ComError(E_FAIL, L"it broke"); });
    return object;
}

TEST(NamedMembers, FindsNamesInAnyCase) {
    const auto object = Sample();
    EXPECT_EQ(IdOf(object.get(), L"DOUBLE"), IdOf(object.get(), L"double"));
    EXPECT_FALSE(FindMember(object.get(), L"Triple"));
}

TEST(NamedMembers, CallsMethodsWithTheArgumentsInTheOrderOfTheScript) {
    const auto object = MakeUnknown<NamedMembers>();
    object->AddMethod(L"Join", [](const CallArguments& call) {
        return Variant(std::wstring_view(call.Text(0) + L"-" + call.Text(1)));
    });
    const Variant result =
        CallMember(object.get(), L"Join", {Variant(std::wstring_view(L"a")), Variant(LONG{2})});
    EXPECT_EQ(com::TextOf(result), L"a-2");
}

TEST(NamedMembers, TheDefaultMemberAnswersForTheObjectItself) {
    const auto object = Sample();
    VARIANT argument = Variant(LONG{5}).detach();
    const DISPPARAMS parameters{&argument, nullptr, 1, 0};
    EXPECT_EQ(InvokeMember(object.get(), DISPID_VALUE, DISPATCH_PROPERTYGET, parameters).ToLong(), 105);
}

TEST(NamedMembers, APropertyHandsArgumentsOnToTheDefaultMemberOfItsValue) {
    const auto inner = Sample();
    const auto outer = MakeUnknown<NamedMembers>();
    outer->AddProperty(L"List", [inner] { return Variant(static_cast<IDispatch*>(inner.get())); });
    EXPECT_EQ(CallMember(outer.get(), L"List", {Variant(LONG{7})}).ToLong(), 107);
    EXPECT_EQ(com::ObjectOf<IDispatch>(CallMember(outer.get(), L"List")).get(), inner.get());
}

TEST(NamedMembers, APropertyWithoutAnObjectTakesNoArguments) {
    const auto object = MakeUnknown<NamedMembers>();
    object->AddProperty(L"Size", [] { return Variant(LONG{3}); });
    EXPECT_EQ(CodeOf([&] { CallMember(object.get(), L"Size", {Variant(LONG{1})}); }), DISP_E_BADPARAMCOUNT);
}

TEST(NamedMembers, PropertiesCanBePutWhenTheyAreMeantTo) {
    const auto object = MakeUnknown<NamedMembers>();
    LONG stored = 0;
    object->AddProperty(
        L"Timeout", [&] { return Variant(stored); },
        [&](const VARIANT& value) { stored = Variant(value).ToLong(); });
    object->AddProperty(L"Version", [] { return Variant(LONG{1}); });
    PutMember(object.get(), L"Timeout", Variant(LONG{30}));
    EXPECT_EQ(stored, 30);
    EXPECT_EQ(CodeOf([&] { PutMember(object.get(), L"Version", Variant(LONG{2})); }), DISP_E_MEMBERNOTFOUND);
}

TEST(NamedMembers, ExceptionsReachTheCallerWithTheirText) {
    const auto object = Sample();
    std::wstring text;
    EXPECT_EQ(CodeOf([&] { CallMember(object.get(), L"Fail"); }, &text), E_FAIL);
    EXPECT_EQ(text, L"it broke");
}

TEST(NamedMembers, AMissingArgumentIsReported) {
    const auto object = Sample();
    EXPECT_EQ(CodeOf([&] { CallMember(object.get(), L"Double"); }), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(CodeOf([&] { CallMember(object.get(), L"Double", {Variant::Missing()}); }),
              DISP_E_PARAMNOTOPTIONAL);
}

TEST(NamedMembers, UnknownIdsAreRefused) {
    const auto object = Sample();
    const DISPPARAMS none{};
    for (const DISPID id : {-1, 99, -4, 0x7FFFFFFF}) {
        EXPECT_EQ(CodeOf([&] { InvokeMember(object.get(), id, DISPATCH_METHOD, none); }),
                  DISP_E_MEMBERNOTFOUND);
    }
    const auto bare = MakeUnknown<NamedMembers>();
    EXPECT_EQ(CodeOf([&] { InvokeMember(bare.get(), DISPID_VALUE, DISPATCH_METHOD, none); }),
              DISP_E_MEMBERNOTFOUND);
}

TEST(NamedMembers, ForEachWalksTheElements) {
    const auto object = MakeUnknown<NamedMembers>();
    object->SetElements([] {
        return std::vector<Variant>{Variant(LONG{1}), Variant(LONG{2}), Variant(LONG{3})};
    });
    const DISPPARAMS none{};
    const auto walk = com::ObjectOf<IEnumVARIANT>(
        InvokeMember(object.get(), DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, none));
    ASSERT_TRUE(walk);
    VARIANT elements[2];
    ULONG fetched = 0;
    EXPECT_EQ(walk->Next(2, elements, &fetched), S_OK);
    EXPECT_EQ(fetched, 2U);
    EXPECT_EQ(elements[1].lVal, 2);
    com::ComPtr<IEnumVARIANT> copy;
    EXPECT_EQ(walk->Clone(copy.put()), S_OK);
    EXPECT_EQ(walk->Next(2, elements, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1U);
    EXPECT_EQ(copy->Skip(1), S_OK);
    EXPECT_EQ(copy->Skip(1), S_FALSE);
    EXPECT_EQ(copy->Reset(), S_OK);
    EXPECT_EQ(copy->Next(1, elements, nullptr), S_OK);
    EXPECT_EQ(elements[0].lVal, 1);
}

TEST(NamedMembers, AnswersItsInterfacesAndCountsReferences) {
    const auto object = MakeUnknown<NamedMembers>();
    EXPECT_TRUE(object.tryAs<IDispatch>());
    EXPECT_TRUE(object.tryAs<IUnknown>());
    EXPECT_FALSE(object.tryAs<IEnumVARIANT>());
    com::ComPtr<IDispatch> second = object.as<IDispatch>();
    second.reset();
    IDispatch* raw = object.copy();
    EXPECT_EQ(raw->Release(), 1U);
}

}  // namespace
}  // namespace zu::runner
