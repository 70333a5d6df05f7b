// ZuDbRef.Process: a routine of the script for each selected record.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Process : public ContractTest {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        table_ = Open();
        TakeCalls();
    }
    void TearDown() override {
        table_.reset();
        ContractTest::TearDown();
    }

    LONG Run(const wchar_t* condition = L"A>1", LONG maxRecords = 0,
             const std::vector<VARIANT*>& arguments = {}) {
        VARIANT* given[10] = {};
        std::copy(arguments.begin(), arguments.end(), given);
        LONG processed = 12345;
        EXPECT_EQ(table_->Process(Bstr(L"Each").get(), condition ? Bstr(condition).get() : nullptr,
                                  Variant::Missing(), maxRecords, given[0], given[1], given[2], given[3],
                                  given[4], given[5], given[6], given[7], given[8], given[9], &processed),
                  S_OK);
        return processed;
    }
    /// The argument lists with which the routine was called.
    Calls ArgumentsOf(const Calls& calls) {
        Calls lists;
        const std::string lead = "ZuEngineContext.CallRoutine(<routine 1>, \"Each\", ";
        for (const std::string& call : calls) {
            if (call.compare(0, lead.size(), lead) == 0) {
                lists.push_back(call.substr(lead.size(), call.size() - lead.size() - 1));
            }
        }
        return lists;
    }
    std::size_t RoutineCalls(const Calls& calls) { return ArgumentsOf(calls).size(); }

    ComPtr<_ZuDbRef> table_;
};

TEST_F(Process, CallsTheRoutineOncePerRecordInThisOrder) {
    Scene().records = 2;
    Scene().contextItems[106] = Variant(L"outer view");
    Scene().contextItems[102] = Variant(LONG{41});
    EXPECT_EQ(Run(), 2);
    EXPECT_THAT(TakeCalls(),
                ElementsAre("DataTable.Select(\"A>1\", I4 0, 0, missing)",
                            // what the run needs of the engine
                            "ZuEngineContext.ContextItemHandle(6)", "ZuEngineContext.ContextItemHandle(2)",
                            "ZuEngineContext.Routine(\"Each\")",
                            // the items of an outer run are kept
                            "ZuEngineContext.SaveContextItem(106)", "ZuEngineContext.SaveContextItem(102)",
                            "ZuEngineContext.SetContextItem(106, <view 1>)", "ZuDataView.MoveFirst(0)",
                            // first record
                            "ZuDataView.Eof(0)", "ZuEngineContext.SetContextItem(102, I4 1)",
                            "ZuEngineContext.CallRoutine(<routine 1>, \"Each\", [-1..-1: Empty])",
                            "ZuDataView.MoveNext(-1)",
                            // second record
                            "ZuDataView.Eof(0)", "ZuEngineContext.SetContextItem(102, I4 2)",
                            "ZuEngineContext.CallRoutine(<routine 1>, \"Each\", [-1..-1: Empty])",
                            "ZuDataView.MoveNext(-1)", "ZuDataView.Eof(0)",
                            // and put back
                            "ZuEngineContext.SetContextItem(106, \"outer view\")",
                            "ZuEngineContext.SetContextItem(102, I4 41)"));
}

TEST_F(Process, ViewWithoutRecordsCallsNothing) {
    Scene().records = 0;
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(RoutineCalls(TakeCalls()), 0u);
}

TEST_F(Process, MaxRecordsLimitsTheRun) {
    Scene().records = 5;
    EXPECT_EQ(Run(L"A>1", 2), 2);
    const Calls calls = TakeCalls();
    EXPECT_EQ(calls.front(), "DataTable.Select(\"A>1\", I4 2, 0, missing)");
    EXPECT_EQ(RoutineCalls(calls), 2u);
}

TEST_F(Process, FalseOnTheFirstRecordEndsTheRunWithNothing) {
    Scene().routine = [](int, SAFEARRAY*) { return false; };
    EXPECT_EQ(Run(), 0);
    const Calls calls = TakeCalls();
    EXPECT_EQ(RoutineCalls(calls), 1u);
    EXPECT_THAT(calls, ::testing::Not(::testing::Contains("ZuDataView.MoveNext(-1)")));
    EXPECT_EQ(calls.back(), "ZuEngineContext.SetContextItem(102, Empty)");
}

TEST_F(Process, FalseLaterEndsTheRunWithoutCountingThatRecord) {
    Scene().records = 5;
    Scene().routine = [](int call, SAFEARRAY*) { return call < 3; };
    EXPECT_EQ(Run(), 2);
    EXPECT_EQ(RoutineCalls(TakeCalls()), 3u);
}

TEST_F(Process, OmittedConditionIsTheEmptyText) {
    Run(nullptr);
    EXPECT_EQ(TakeCalls().front(), "DataTable.Select(\"\", I4 0, 0, missing)");
}

TEST_F(Process, FieldNamesGoToTheSelection) {
    LONG processed = 0;
    EXPECT_EQ(table_->Process(Bstr(L"Each").get(), nullptr, Array({L"NAME"}), 0, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed),
              S_OK);
    EXPECT_EQ(TakeCalls().front(), "DataTable.Select(\"\", I4 0, 0, [0..0: \"NAME\"])");
}

TEST_F(Process, ArgumentsArePassedInOrder) {
    Scene().records = 1;
    Variant first(L"a");
    Variant second(LONG{2});
    EXPECT_EQ(Run(L"", 0, {first.address(), second.address()}), 1);
    EXPECT_THAT(ArgumentsOf(TakeCalls()), ElementsAre("[0..1: \"a\", I4 2]"));
}

TEST_F(Process, AllTenArgumentsArePassed) {
    Scene().records = 1;
    std::vector<Variant> values;
    std::vector<VARIANT*> arguments;
    values.reserve(10);
    for (LONG number = 0; number < 10; ++number) {
        values.emplace_back(number);
        arguments.push_back(values.back().address());
    }
    EXPECT_EQ(Run(L"", 0, arguments), 1);
    EXPECT_THAT(ArgumentsOf(TakeCalls()),
                ElementsAre("[0..9: I4 0, I4 1, I4 2, I4 3, I4 4, I4 5, I4 6, I4 7, I4 8, I4 9]"));
}

TEST_F(Process, FirstMissingArgumentEndsTheList) {
    Scene().records = 1;
    Variant first(L"a");
    Variant missing = Variant::Missing();
    Variant third(L"c");
    EXPECT_EQ(Run(L"", 0, {first.address(), missing.address(), third.address()}), 1);
    EXPECT_EQ(Run(L"", 0, {first.address(), nullptr, third.address()}), 1);
    EXPECT_EQ(Run(L"", 0, {missing.address(), first.address()}), 1);
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, ::testing::Contains(::testing::HasSubstr("\"Each\", [0..0: \"a\"])")).Times(2));
    EXPECT_THAT(calls, ::testing::Contains(::testing::HasSubstr("\"Each\", [-1..-1: Empty])")).Times(1));
}

TEST_F(Process, ArgumentsAreCopiesWithReferencesLookedThrough) {
    Scene().records = 2;
    Variant variable(L"kept");
    VARIANT reference = ReferenceTo(variable);
    Scene().routine = [](int call, SAFEARRAY* arguments) {
        LONG index = 0;
        Variant changed(LONG{call});
        SafeArrayPutElement(arguments, &index, changed.address());
        return true;
    };
    EXPECT_EQ(Run(L"", 0, {&reference}), 2);
    // What the routine wrote stays in the list, and the caller's variable is as it was.
    EXPECT_THAT(ArgumentsOf(TakeCalls()), ElementsAre("[0..0: \"kept\"]", "[0..0: I4 1]"));
    EXPECT_EQ(variable.ToText().view(), L"kept");
}

TEST_F(Process, NullEmptyAndObjectsAreArgumentsToo) {
    Scene().records = 1;
    Variant null = Variant::Null();
    Variant empty;
    Variant nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(Run(L"", 0, {null.address(), empty.address(), nothing.address()}), 1);
    EXPECT_THAT(ArgumentsOf(TakeCalls()), ElementsAre("[0..2: Null, Empty, Nothing]"));
}

TEST_F(Process, NoViewEndsItBeforeTheEngineIsAsked) {
    Scene().selects = false;
    EXPECT_EQ(Run(), 0);
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.Select(\"A>1\", I4 0, 0, missing)"));
}

TEST_F(Process, MissingRoutineLeavesTheContextItemsAlone) {
    Journal::OfThread().FailOn("ZuEngineContext.Routine");
    EXPECT_EQ(Run(), 0);
    for (const std::string& call : TakeCalls())
        EXPECT_EQ(call.find("SetContextItem"), std::string::npos);
}

TEST_F(Process, ErrorInTheRoutineEndsTheRunAndLeavesTheContextItemsAsTheyAre) {
    Scene().records = 5;
    Scene().contextItems[106] = Variant(L"outer view");
    Scene().contextItems[102] = Variant(LONG{41});
    Scene().routine = [](int call, SAFEARRAY*) {
        if (call == 2) Journal::OfThread().FailOn("ZuEngineContext.CallRoutine");
        return true;
    };
    EXPECT_EQ(Run(), 2);
    const Calls calls = TakeCalls();
    EXPECT_EQ(calls.back(), "ZuEngineContext.CallRoutine(<routine 1>, \"Each\", [-1..-1: Empty])");
    EXPECT_EQ(Scene().contextItems[106].type(), VT_DISPATCH);
    EXPECT_EQ(Scene().contextItems[102].ToLong(), 3);
}

TEST_F(Process, ErrorOfMoveNextKeepsTheCountReached) {
    Journal::OfThread().FailOn("ZuDataView.MoveNext");
    EXPECT_EQ(Run(), 1);
}

TEST_F(Process, RoutineCanCallTheFunctionsOnTheViewInHand) {
    Scene().records = 3;
    std::vector<LONG> numbers;
    std::vector<bool> tops;
    std::vector<bool> bottoms;
    Scene().routine = [&](int, SAFEARRAY*) {
        VARIANT_BOOL top = VARIANT_FALSE;
        VARIANT_BOOL bottom = VARIANT_FALSE;
        LONG number = -1;
        EXPECT_EQ(functions().DbfTop(nullptr, &top), S_OK);
        EXPECT_EQ(functions().DbfBottom(nullptr, &bottom), S_OK);
        EXPECT_EQ(functions().DbfRecNo(nullptr, &number), S_OK);
        tops.push_back(top != VARIANT_FALSE);
        bottoms.push_back(bottom != VARIANT_FALSE);
        numbers.push_back(number);
        return true;
    };
    EXPECT_EQ(Run(), 3);
    EXPECT_THAT(tops, ElementsAre(true, false, false));
    EXPECT_THAT(bottoms, ElementsAre(false, false, true));
    EXPECT_THAT(numbers, ElementsAre(0, 1, 2));
}

TEST_F(Process, RunsInsideARunPutTheOuterItemsBack) {
    Scene().records = 2;
    bool inner = false;
    std::vector<LONG> numbers;
    Scene().routine = [&](int, SAFEARRAY*) {
        if (!inner) {
            inner = true;
            EXPECT_EQ(Run(), 2);
            inner = false;
            numbers.push_back(Scene().contextItems[102].ToLong());
        }
        return true;
    };
    EXPECT_EQ(Run(), 2);
    EXPECT_THAT(numbers, ElementsAre(1, 2));
}

TEST_F(Process, RoutineMayCloseTheTable) {
    Scene().routine = [&](int, SAFEARRAY*) {
        table_->CloseTable();
        return true;
    };
    EXPECT_EQ(Run(), 3);
}

}  // namespace zu::contract
