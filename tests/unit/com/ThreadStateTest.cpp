#include "com/ThreadState.h"

#include <gtest/gtest.h>

#include <thread>

#include "Target.h"

namespace zu::com::test {
namespace {

/// Holds an object of the thread and tells when it is let go.
struct State {
    ~State() {
        ++released;
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        apartmentAlive = SUCCEEDED(CoGetApartmentType(&type, &qualifier));
    }
    ComPtr<Named> object = MakeObject<Named>(L"state");
    static inline std::atomic<int> released{0};
    static inline std::atomic<bool> apartmentAlive{false};
};
using PerThread = ThreadState<State>;

class ThreadStateTest : public ::testing::Test {
protected:
    void SetUp() override {
        State::released = 0;
        State::apartmentAlive = false;
    }
};

void OnThread(const std::function<void()>& body) {
    std::thread(body).join();
}

TEST_F(ThreadStateTest, IsMadeOncePerThread) {
    OnThread([] {
        CoInitialize(nullptr);
        EXPECT_EQ(PerThread::Existing(), nullptr);
        State* mine = &PerThread::Current();
        EXPECT_EQ(&PerThread::Current(), mine);
        EXPECT_EQ(PerThread::Existing(), mine);
        OnThread([mine] {
            CoInitialize(nullptr);
            EXPECT_EQ(PerThread::Existing(), nullptr);
            EXPECT_NE(&PerThread::Current(), mine);
            CoUninitialize();
        });
        EXPECT_EQ(State::released, 1) << "the other thread's";
        CoUninitialize();
    });
    EXPECT_EQ(State::released, 2);
}

TEST_F(ThreadStateTest, GoesWithTheLastApartmentWhileThatIsStillAlive) {
    const LONG objects = Module::objects();
    OnThread([] {
        CoInitialize(nullptr);
        CoInitialize(nullptr);
        PerThread::Current();
        EXPECT_EQ(Module::threadStates(), 1);
        EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
        CoUninitialize();
        EXPECT_EQ(State::released, 0);
        CoUninitialize();
        EXPECT_EQ(State::released, 1);
        EXPECT_TRUE(State::apartmentAlive);
    });
    EXPECT_EQ(Module::objects(), objects);
    EXPECT_EQ(Module::threadStates(), 0);
    EXPECT_EQ(Module::CanUnloadNow(), S_OK);
}

TEST_F(ThreadStateTest, IsMadeAgainInALaterApartment) {
    OnThread([] {
        for (int round = 1; round <= 3; ++round) {
            CoInitialize(nullptr);
            PerThread::Current();
            CoUninitialize();
            EXPECT_EQ(State::released, round);
            EXPECT_EQ(PerThread::Existing(), nullptr);
        }
    });
    EXPECT_EQ(Module::threadStates(), 0);
}

TEST_F(ThreadStateTest, CanBeReleasedEarly) {
    OnThread([] {
        CoInitialize(nullptr);
        PerThread::Current();
        PerThread::Release();
        EXPECT_EQ(State::released, 1);
        EXPECT_EQ(Module::threadStates(), 0);
        PerThread::Release();
        CoUninitialize();
        EXPECT_EQ(State::released, 1);
    });
}

TEST_F(ThreadStateTest, AFailingConstructionLeavesNothing) {
    OnThread([] {
        CoInitialize(nullptr);
        EXPECT_THROW(PerThread::Current([]() -> std::unique_ptr<State> { throw ComError(E_FAIL); }),
                     ComError);
        EXPECT_EQ(PerThread::Existing(), nullptr);
        EXPECT_EQ(Module::threadStates(), 0);
        PerThread::Current();
        CoUninitialize();
    });
    EXPECT_EQ(State::released, 1);
}

TEST_F(ThreadStateTest, WorksOnAThreadWithoutComAndKeepsTheModule) {
    OnThread([] {
        PerThread::Current();
        EXPECT_EQ(Module::threadStates(), 1);
        EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
        PerThread::Release();
    });
    EXPECT_EQ(Module::threadStates(), 0);
}

}  // namespace
}  // namespace zu::com::test
