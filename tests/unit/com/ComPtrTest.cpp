#include "com/ComPtr.h"

#include <gtest/gtest.h>

#include "Target.h"

namespace zu::com::test {
namespace {

ULONG References(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(ComPtr, CountsCopiesAndMoves) {
    const ComPtr<INamed> first = MakeObject<Named>(L"n").as<INamed>();
    EXPECT_EQ(References(first.get()), 1u);
    {
        ComPtr<INamed> copy = first;
        EXPECT_EQ(References(first.get()), 2u);
        const ComPtr<INamed> moved = std::move(copy);
        EXPECT_EQ(References(first.get()), 2u);
        copy = moved;
        EXPECT_EQ(References(first.get()), 3u);
        copy = nullptr;
        EXPECT_EQ(References(first.get()), 2u);
    }
    EXPECT_EQ(References(first.get()), 1u);
}

TEST(ComPtr, SurvivesAssignmentToItself) {
    ComPtr<INamed> pointer = MakeObject<Named>(L"n").as<INamed>();
    const ComPtr<INamed>& same = pointer;
    pointer = same;
    EXPECT_EQ(References(pointer.get()), 1u);
}

TEST(ComPtr, AsksForInterfaces) {
    const ComPtr<ITarget> target = MakeObject<Target>().as<ITarget>();
    EXPECT_TRUE(target.tryAs<IExtra>());
    EXPECT_FALSE(target.tryAs<INamed>());
    try {
        target.as<INamed>();
        FAIL() << "a refused interface is an error";
    } catch (const ComError& error) {
        EXPECT_EQ(error.code(), kTypeMismatch);
    }
    try {
        ComPtr<ITarget>().as<INamed>();
        FAIL() << "no object is an error";
    } catch (const ComError& error) {
        EXPECT_EQ(error.code(), kObjectNotSet);
    }
}

TEST(ComPtr, PutReleasesWhatItHeld) {
    ComPtr<INamed> pointer = MakeObject<Named>(L"n").as<INamed>();
    const ComPtr<INamed> other = pointer;
    pointer.put();
    EXPECT_EQ(References(other.get()), 1u);
    EXPECT_FALSE(pointer);
}

}  // namespace
}  // namespace zu::com::test
