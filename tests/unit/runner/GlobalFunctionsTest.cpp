#include "runner/GlobalFunctions.h"

#include <gtest/gtest.h>

#include "runner/DispatchCall.h"
#include "runner/NamedMembers.h"

namespace zu::runner {
namespace {

using com::Variant;

com::ComPtr<GlobalFunctions> WithComponent(int& created) {
    return MakeUnknown<GlobalFunctions>([&created] {
        ++created;
        auto component = MakeUnknown<NamedMembers>();
        component->AddMethod(L"DbfCount",
                             [](const CallArguments& call) { return Variant(call.Long(0) + 1); });
        return component.as<IDispatch>();
    });
}

com::ComPtr<GlobalFunctions> WithoutComponent(int& tries) {
    return MakeUnknown<GlobalFunctions>([&tries]() -> com::ComPtr<IDispatch> {
        ++tries;
        throw com::ComError(REGDB_E_CLASSNOTREG, L"nothing there");
    });
}

TEST(GlobalFunctions, CreateTheComponentAtTheFirstNameAndOnlyOnce) {
    int created = 0;
    const auto functions = WithComponent(created);
    EXPECT_EQ(created, 0);
    EXPECT_EQ(CallMember(functions.get(), L"DbfCount", {Variant(LONG{4})}).ToLong(), 5);
    EXPECT_FALSE(FindMember(functions.get(), L"NoSuchName"));
    EXPECT_EQ(created, 1);
}

TEST(GlobalFunctions, WithoutTheComponentItsFunctionsSayWhy) {
    int tries = 0;
    const auto functions = WithoutComponent(tries);
    for (const wchar_t* name : {L"DbfCount", L"dbfanything", L"Descend"}) {
        try {
            CallMember(functions.get(), name);
            FAIL() << name;
        } catch (const com::ComError& error) {
            EXPECT_EQ(error.description(), L"nothing there");
        }
    }
}

TEST(GlobalFunctions, WithoutTheComponentOtherNamesAreUnknown) {
    int tries = 0;
    const auto functions = WithoutComponent(tries);
    EXPECT_FALSE(FindMember(functions.get(), L"x"));
    EXPECT_FALSE(FindMember(functions.get(), L"counter"));
    EXPECT_EQ(tries, 1) << "every unknown name of a script asks; the answer does not change";
}

}  // namespace
}  // namespace zu::runner
