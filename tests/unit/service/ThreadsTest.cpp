#include <thread>

#include "ScriptObject.h"
#include "ServiceTest.h"
#include "com/SafeArray.h"
#include "host/engine/Zuproject.h"

namespace zu::test {
namespace {

class ThreadsTest : public ServiceTest {
protected:
    static com::ComPtr<ZuEngineMessages> Messages() {
        return com::MakeObject<host::Zuproject>().as<ZuEngineMessages>();
    }
};

TEST_F(ThreadsTest, EachThreadHasItsOwnLastErrorAndRoutines) {
    Messages()->RaiseError(5, nullptr);
    const auto script = ScriptObject::Make();
    com::MakeObject<host::Zuproject>()->putref_RoutineHolder(script.get());
    LONG other = -1;
    bool hasHolder = true;
    std::thread([&] {
        const Apartment apartment;
        Messages()->get_LastErrorCode(&other);
        com::ComPtr<IDispatch> holder;
        com::MakeObject<host::Zuproject>()->get_RoutineHolder(holder.put());
        hasHolder = static_cast<bool>(holder);
        Messages()->RaiseError(6, nullptr);
    }).join();
    EXPECT_EQ(other, 0);
    EXPECT_FALSE(hasHolder);
    LONG own = 0;
    Messages()->get_LastErrorCode(&own);
    EXPECT_EQ(own, 5);
    com::MakeObject<host::Zuproject>()->ClearRoutines();
}

TEST_F(ThreadsTest, TheStateGoesWithTheLastApartmentOfItsThread) {
    const auto script = ScriptObject::Make();
    ULONG held = 0;
    std::thread([&] {
        {
            const Apartment apartment;
            com::MakeObject<host::Zuproject>()->putref_RoutineHolder(script.get());
            held = script->references();
        }
    }).join();
    EXPECT_EQ(held, 2u);
    EXPECT_EQ(script->references(), 1u);
}

TEST_F(ThreadsTest, TwoApartmentsWorkSideBySide) {
    MemoryTechnology::Table("LEFT");
    MemoryTechnology::Table("RIGHT");
    int sums[2] = {0, 0};
    const auto work = [&sums](int which) {
        const Apartment apartment;
        for (int round = 0; round < 200; ++round) {
            const auto view = Everything(which ? L"RIGHT" : L"LEFT");
            for (VARIANT_BOOL eof = VARIANT_FALSE; view->get_Eof(0, &eof), eof == VARIANT_FALSE;
                 view->MoveNext(-1))
                sums[which] += static_cast<int>(Value(*view, Text(L"AGE")).ToLong());
            Messages()->RaiseError(which + 1, nullptr);
            LONG code = 0;
            Messages()->get_LastErrorCode(&code);
            if (code != which + 1) sums[which] = -1'000'000;
        }
    };
    std::thread left(work, 0);
    std::thread right(work, 1);
    left.join();
    right.join();
    EXPECT_EQ(sums[0], 200 * (31 + 44 + 27 + 61));
    EXPECT_EQ(sums[1], sums[0]);
}

TEST_F(ThreadsTest, WorksOnAThreadWithoutAnApartment) {
    LONG count = -1;
    std::thread([&] {
        const auto view = Everything();
        view->get_RecordCount(0, &count);
    }).join();
    EXPECT_EQ(count, 4);
}

TEST_F(ThreadsTest, TenThousandObjectsComeAndGo) {
    const LONG before = com::Module::objects();
    for (int i = 0; i < 10'000; ++i) {
        const auto project = com::MakeObject<host::Zuproject>();
        com::ComPtr<IDispatch> service;
        project->DatabaseService(service.put());
    }
    EXPECT_EQ(com::Module::objects(), before);
}

}  // namespace
}  // namespace zu::test
