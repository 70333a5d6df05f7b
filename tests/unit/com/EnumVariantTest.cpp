#include "com/EnumVariant.h"

#include <gtest/gtest.h>

#include "com/ComError.h"

namespace zu::com {
namespace {

/// Three numbers: 0, 10, 20.
ComPtr<IEnumVARIANT> Numbers() {
    return EnumVariant::Make([](ULONG position) -> std::optional<Variant> {
               if (position >= 3) return std::nullopt;
               return Variant(static_cast<LONG>(position * 10));
           })
        .as<IEnumVARIANT>();
}

LONG NextOf(IEnumVARIANT& walk) {
    Variant value;
    return walk.Next(1, value.put(), nullptr) == S_OK ? value.ToLong() : -1;
}

TEST(EnumVariant, WalksOneByOne) {
    const auto walk = Numbers();
    EXPECT_EQ(NextOf(*walk), 0);
    EXPECT_EQ(NextOf(*walk), 10);
    EXPECT_EQ(NextOf(*walk), 20);
    EXPECT_EQ(NextOf(*walk), -1);
    EXPECT_EQ(NextOf(*walk), -1);
}

TEST(EnumVariant, WalksSeveralAtOnce) {
    const auto walk = Numbers();
    VARIANT values[5];
    ULONG fetched = 9;
    EXPECT_EQ(walk->Next(2, values, &fetched), S_OK);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(values[1].lVal, 10);
    EXPECT_EQ(walk->Next(5, values, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(values[0].lVal, 20);
    EXPECT_EQ(values[1].vt, VT_EMPTY);
}

TEST(EnumVariant, SkipsAndStartsAgain) {
    const auto walk = Numbers();
    EXPECT_EQ(walk->Skip(2), S_OK);
    EXPECT_EQ(NextOf(*walk), 20);
    EXPECT_EQ(walk->Skip(1), S_FALSE);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(NextOf(*walk), 0);
}

TEST(EnumVariant, ClonesHaveTheirOwnPosition) {
    const auto walk = Numbers();
    NextOf(*walk);
    ComPtr<IEnumVARIANT> copy;
    ASSERT_EQ(walk->Clone(copy.put()), S_OK);
    EXPECT_EQ(NextOf(*copy), 10);
    EXPECT_EQ(NextOf(*copy), 20);
    EXPECT_EQ(NextOf(*walk), 10);
}

TEST(EnumVariant, AFailingElementEndsTheCallAndKeepsThePosition) {
    bool broken = true;
    const auto walk = EnumVariant::Make([&](ULONG position) -> std::optional<Variant> {
                          if (position == 1 && broken) throw ComError(E_ACCESSDENIED, L"locked");
                          return Variant(static_cast<LONG>(position));
                      }).as<IEnumVARIANT>();
    VARIANT values[2];
    ULONG fetched = 9;
    EXPECT_EQ(walk->Next(2, values, &fetched), E_ACCESSDENIED);
    EXPECT_EQ(fetched, 0u);
    broken = false;
    EXPECT_EQ(NextOf(*walk), 0);
}

TEST(EnumVariant, RefusesImpossibleRequests) {
    const auto walk = Numbers();
    VARIANT values[2];
    EXPECT_EQ(walk->Next(2, values, nullptr), E_INVALIDARG);
    EXPECT_EQ(walk->Next(1, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(walk->Clone(nullptr), E_POINTER);
}

TEST(EnumVariant, IsCountedAsAnObject) {
    const LONG before = Module::objects();
    {
        const auto walk = Numbers();
        EXPECT_EQ(Module::objects(), before + 1);
    }
    EXPECT_EQ(Module::objects(), before);
}

}  // namespace
}  // namespace zu::com
