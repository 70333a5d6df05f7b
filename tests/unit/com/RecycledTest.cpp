#include "com/Recycled.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace zu::com {
namespace {

/// Tells in its members whether somebody else has its memory.
class Passenger : public Recycled<Passenger> {
public:
    explicit Passenger(int number = 0) : first_(number), last_(number) {
        if (number < 0) throw std::invalid_argument("no such passenger");
    }
    bool IsAlone(int number) const noexcept { return first_ == number && last_ == number; }

private:
    int first_;
    char luggage_[200] = {};
    int last_;
};

TEST(Recycled, TheNextObjectHasTheMemoryOfTheLastOne) {
    auto* const first = new Passenger(1);
    const auto place = reinterpret_cast<std::uintptr_t>(first);
    delete first;
    auto* const second = new Passenger(2);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(second), place);
    EXPECT_TRUE(second->IsAlone(2));
    delete second;
}

TEST(Recycled, ObjectsThatLiveTogetherShareNothing) {
    std::vector<std::unique_ptr<Passenger>> all;
    for (int i = 0; i < 50; ++i)
        all.push_back(std::make_unique<Passenger>(i));
    all.erase(all.begin() + 10, all.begin() + 20);
    for (int i = 10; i < 20; ++i)
        all.insert(all.begin() + i, std::make_unique<Passenger>(i));
    for (int i = 0; i < 50; ++i)
        EXPECT_TRUE(all[static_cast<std::size_t>(i)]->IsAlone(i)) << i;
}

TEST(Recycled, AnObjectThatCannotBeMadeLeavesItsMemoryToTheNext) {
    delete new Passenger(1);
    EXPECT_THROW(delete new Passenger(-1), std::invalid_argument);
    auto* const first = new Passenger(2);
    auto* const second = new Passenger(3);
    EXPECT_TRUE(first->IsAlone(2));
    EXPECT_TRUE(second->IsAlone(3));
    delete first;
    delete second;
}

TEST(Recycled, SharedObjectsGoWithTheirLastOwner) {
    const Passenger* place = nullptr;
    {
        const auto first = MakeSharedRecycled<Passenger>(1);
        place = first.get();
        const std::shared_ptr<Passenger> other = first;
        EXPECT_NE(MakeSharedRecycled<Passenger>(2).get(), place);
    }
    const auto next = MakeSharedRecycled<Passenger>(3);
    const auto afterThat = MakeSharedRecycled<Passenger>(4);
    EXPECT_TRUE(next->IsAlone(3));
    EXPECT_TRUE(afterThat->IsAlone(4));
}

TEST(Recycled, NoTwoThreadsGetTheSameMemory) {
    std::atomic<bool> shared = false;
    std::vector<std::thread> threads;
    for (int number = 1; number <= 4; ++number) {
        threads.emplace_back([number, &shared] {
            for (int i = 0; i < 20'000; ++i) {
                const std::unique_ptr<Passenger> first = std::make_unique<Passenger>(number);
                const std::unique_ptr<Passenger> second = std::make_unique<Passenger>(number * 100);
                if (first == second || !first->IsAlone(number) || !second->IsAlone(number * 100))
                    shared = true;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_FALSE(shared);
}

}  // namespace
}  // namespace zu::com
