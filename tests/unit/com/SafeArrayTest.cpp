#include "com/SafeArray.h"

#include <gtest/gtest.h>

#include "com/ComError.h"

namespace zu::com {
namespace {

TEST(SafeArray, HoldsItsElementsFromZero) {
    const SafeArray array = SafeArray::Of({Variant(L"a"), Variant(LONG{2})});
    EXPECT_EQ(UpperBound(array.get()), 1);
    const std::vector<Variant> elements = ReadArguments(array.get());
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].ToText().view(), L"a");
    EXPECT_EQ(elements[1].ToLong(), 2);
}

TEST(SafeArray, NoArgumentsHaveTheUpperBoundMinusOne) {
    const SafeArray array = SafeArray::NoArguments();
    LONG lower = 0;
    ASSERT_EQ(SafeArrayGetLBound(array.get(), 1, &lower), S_OK);
    EXPECT_EQ(lower, -1);
    EXPECT_EQ(UpperBound(array.get()), -1);
    EXPECT_EQ(array.get()->rgsabound[0].cElements, 1u);
    EXPECT_TRUE(ReadArguments(array.get()).empty());
}

TEST(SafeArray, AnEmptyListMeansNoArgumentsToo) {
    const SafeArray array = SafeArray::Of({});
    EXPECT_EQ(UpperBound(array.get()), -1);
    EXPECT_TRUE(ReadArguments(array.get()).empty());
    EXPECT_TRUE(ReadArguments(nullptr).empty());
}

TEST(SafeArray, ElementsMayBeReferences) {
    const SafeArray array = SafeArray::Of({Variant()});
    LONG number = 7;
    VARIANT* data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(array.get(), reinterpret_cast<void**>(&data)), S_OK);
    data->vt = VT_BYREF | VT_I4;
    data->plVal = &number;
    SafeArrayUnaccessData(array.get());
    EXPECT_EQ(ReadArguments(array.get()).at(0).ToLong(), 7);
}

TEST(SafeArray, BecomesAVariant) {
    const Variant value = SafeArray::Of({Variant(L"a")}).ToVariant();
    EXPECT_EQ(value.type(), VT_ARRAY | VT_VARIANT);
}

TEST(SafeArray, ArgumentsOfTwoDimensionsAreRefused) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    EXPECT_THROW(ReadArguments(array), ComError);
    SafeArrayDestroy(array);
}

}  // namespace
}  // namespace zu::com
