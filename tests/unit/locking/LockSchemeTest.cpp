#include "host/technologies/dbf/locking/LockScheme.h"

#include <gtest/gtest.h>

namespace zu::dbf::locking {
namespace {

constexpr LockedTable kPlain{0x03, false, 97, 50};
constexpr LockedTable kIndexed{0x03, true, 97, 50};
constexpr LockedTable kVisual{0x30, false, 360, 50};

bool Contains(const LockRange& outer, const LockRange& inner) {
    return inner.offset >= outer.offset && inner.offset + inner.length <= outer.offset + outer.length;
}

TEST(LockScheme, FoxProLocksTheFileOffsetOfARecordWithoutAnIndex) {
    const auto lock = RecordLock(LockScheme::FoxPro, kPlain, 3);
    ASSERT_EQ(lock.count, 1U);
    EXPECT_EQ(lock.ranges[0].offset, 0x40000000U + 97 + 2 * 50);
    EXPECT_EQ(lock.ranges[0].length, 1U);
    EXPECT_EQ(HeaderLock(LockScheme::FoxPro, kPlain).ranges[0].offset, 0x40000000U);
}

TEST(LockScheme, FoxProCountsDownFromTheTopWithAnIndex) {
    const auto lock = RecordLock(LockScheme::FoxPro, kIndexed, 3);
    ASSERT_EQ(lock.count, 1U);
    EXPECT_EQ(lock.ranges[0].offset, 0x7FFFFFFEU - 3);
    EXPECT_EQ(HeaderLock(LockScheme::FoxPro, kIndexed).ranges[0].offset, 0x7FFFFFFEU);
    EXPECT_EQ(IndexLock(LockScheme::FoxPro).offset, 0x7FFFFFFEU);
}

TEST(LockScheme, AVisualFoxProTableWithoutIndexIsLockedBothWays) {
    const auto lock = RecordLock(LockScheme::FoxPro, kVisual, 1);
    ASSERT_EQ(lock.count, 2U);
    EXPECT_EQ(lock.ranges[0].offset, 0x40000000U + 360);
    EXPECT_EQ(lock.ranges[1].offset, 0x7FFFFFFEU - 1);
    EXPECT_EQ(HeaderLock(LockScheme::FoxPro, kVisual).count, 2U);
}

TEST(LockScheme, ClipperLocksOneThousandMillionPlusTheNumber) {
    const auto lock = RecordLock(LockScheme::Clipper, kIndexed, 12);
    ASSERT_EQ(lock.count, 1U);
    EXPECT_EQ(lock.ranges[0].offset, 1000000012U);
    EXPECT_EQ(HeaderLock(LockScheme::Clipper, kIndexed).ranges[0].offset, 1000000000U);
}

TEST(LockScheme, TheTableLockKeepsOutEveryRecordAndHeaderLock) {
    for (const auto scheme : {LockScheme::FoxPro, LockScheme::Clipper}) {
        for (const auto& table : {kPlain, kIndexed, kVisual}) {
            const auto whole = TableLock(scheme, table).ranges[0];
            for (const std::uint32_t number : {1U, 2U, 1000U, 1000000U}) {
                const auto record = RecordLock(scheme, table, number);
                for (std::size_t i = 0; i < record.count; ++i)
                    EXPECT_TRUE(Contains(whole, record.ranges[i]));
            }
            const auto header = HeaderLock(scheme, table);
            for (std::size_t i = 0; i < header.count; ++i)
                EXPECT_TRUE(Contains(whole, header.ranges[i]));
        }
    }
}

}  // namespace
}  // namespace zu::dbf::locking
