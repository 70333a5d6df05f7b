#include "runner/ScriptArguments.h"

#include <gtest/gtest.h>

#include "com/ComError.h"
#include "runner/DispatchCall.h"
#include "runner/ValueText.h"

namespace zu::runner {
namespace {

using com::Variant;

Variant Text(const wchar_t* text) {
    return Variant(std::wstring_view(text));
}

std::wstring Read(IDispatch* object, const wchar_t* member, std::initializer_list<Variant> arguments = {}) {
    return ValueText(CallMember(object, member, arguments));
}

std::wstring Walk(IDispatch* object) {
    const DISPPARAMS none{};
    const auto walk =
        com::ObjectOf<IEnumVARIANT>(InvokeMember(object, DISPID_NEWENUM, DISPATCH_PROPERTYGET, none));
    std::wstring texts;
    Variant element;
    while (walk->Next(1, element.put(), nullptr) == S_OK)
        texts += ValueText(element) + L";";
    return texts;
}

TEST(ScriptArguments, GivesItemsByNumberAndTheirCount) {
    const auto arguments = MakeUnknown<ScriptArguments>(std::vector<std::wstring>{L"one", L"two three"});
    EXPECT_EQ(Read(arguments.get(), L"Item", {Variant(LONG{1})}), L"two three");
    EXPECT_EQ(Read(arguments.get(), L"Item", {Text(L"0")}), L"one");
    EXPECT_EQ(Read(arguments.get(), L"Count"), L"2");
    EXPECT_EQ(Read(arguments.get(), L"length"), L"2");
    EXPECT_EQ(Walk(arguments.get()), L"one;two three;");
}

TEST(ScriptArguments, RefusesANumberThatIsNotThere) {
    const auto arguments = MakeUnknown<ScriptArguments>(std::vector<std::wstring>{L"one"});
    for (const LONG index : {-1L, 1L}) {
        try {
            Read(arguments.get(), L"Item", {Variant(index)});
            FAIL() << index;
        } catch (const com::ComError& error) {
            EXPECT_EQ(error.code(), com::kSubscriptOutOfRange);
            EXPECT_NE(error.description().find(std::to_wstring(index)), std::wstring::npos);
        }
    }
}

TEST(ScriptArguments, WithoutArgumentsIsEmpty) {
    const auto arguments = MakeUnknown<ScriptArguments>(std::vector<std::wstring>{});
    EXPECT_EQ(Read(arguments.get(), L"Count"), L"0");
    EXPECT_EQ(Walk(arguments.get()), L"");
}

TEST(ScriptArguments, SortsOutNamedOnes) {
    const auto arguments = MakeUnknown<ScriptArguments>(
        std::vector<std::wstring>{L"a", L"/name:x:y", L"/on+", L"/off-", L"/bare", L"/", L"b"});
    const auto named = com::ObjectOf<IDispatch>(CallMember(arguments.get(), L"Named"));
    EXPECT_EQ(Read(named.get(), L"Item", {Text(L"NAME")}), L"x:y");
    EXPECT_EQ(Read(named.get(), L"Item", {Text(L"on")}), L"True");
    EXPECT_EQ(Read(named.get(), L"Item", {Text(L"off")}), L"False");
    EXPECT_EQ(CallMember(named.get(), L"Item", {Text(L"bare")}).type(), VT_EMPTY);
    EXPECT_EQ(Read(named.get(), L"Exists", {Text(L"bare")}), L"True");
    EXPECT_EQ(Read(named.get(), L"Exists", {Text(L"other")}), L"False");
    EXPECT_EQ(Read(named.get(), L"Count"), L"4");
    EXPECT_EQ(Walk(named.get()), L"name;on;off;bare;");
    const auto unnamed = com::ObjectOf<IDispatch>(CallMember(arguments.get(), L"Unnamed"));
    EXPECT_EQ(Walk(unnamed.get()), L"a;/;b;");
    EXPECT_EQ(Read(arguments.get(), L"Unnamed", {Variant(LONG{2})}), L"b");
}

}  // namespace
}  // namespace zu::runner
