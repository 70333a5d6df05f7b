#include "host/technologies/dbf/cdx/KeyOrder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "host/technologies/dbf/cdx/KeyBuffer.h"

namespace zu::dbf::cdx {
namespace {

int Sign(int order) {
    return (order > 0) - (order < 0);
}

std::vector<std::byte> RandomKey(std::mt19937& random, std::size_t length, unsigned different) {
    std::vector<std::byte> key(length, std::byte{0x41});
    for (unsigned i = 0; i < different && length != 0; ++i)
        key[random() % length] = static_cast<std::byte>(random());
    return key;
}

TEST(KeyOrder, IsThatOfUnsignedBytesAtEveryLength) {
    std::mt19937 random(5);
    for (std::size_t length = 0; length <= 40; ++length) {
        for (int i = 0; i < 400; ++i) {
            const auto left = RandomKey(random, length, i % 3);
            const auto right = RandomKey(random, length, i % 2);
            EXPECT_EQ(Sign(CompareKeys(left.data(), right.data(), length)),
                      Sign(length == 0 ? 0 : std::memcmp(left.data(), right.data(), length)))
                << length;
        }
    }
}

TEST(KeyOrder, EqualKeysFollowTheirRecordNumbers) {
    const std::byte key[3] = {std::byte{1}, std::byte{0xFF}, std::byte{2}};
    EXPECT_LT(CompareEntries(key, 7, key, 8, 3), 0);
    EXPECT_EQ(CompareEntries(key, 8, key, 8, 3), 0);
    EXPECT_GT(CompareEntries(key, 0xFFFFFFFF, key, 8, 3), 0);
}

TEST(KeyBuffer, HoldsAKeyOfAnyLength) {
    EXPECT_TRUE(KeyBuffer().empty());
    const KeyBuffer longest(kMaxKeyLength, std::byte{0xFE});
    KeyBuffer copy(longest.span());
    EXPECT_EQ(copy.size(), kMaxKeyLength);
    EXPECT_TRUE(copy == longest);
    copy.data()[kMaxKeyLength - 1] = std::byte{0};
    EXPECT_FALSE(copy == longest);
    copy = KeyBuffer(2, std::byte{0xFE});
    EXPECT_EQ(copy.size(), 2U);
    EXPECT_FALSE(copy == longest);
    const KeyBuffer& same = copy;
    copy = same;
    EXPECT_TRUE(copy == KeyBuffer(2, std::byte{0xFE}));
}

}  // namespace
}  // namespace zu::dbf::cdx
