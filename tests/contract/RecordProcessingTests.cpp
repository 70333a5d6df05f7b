// DbfProcess and DbfReplace.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class RecordProcessing : public ContractTest {
protected:
    void TearDown() override {
        Scene().contextItems.clear();
        ContractTest::TearDown();
    }

    LONG ProcessRecords(const wchar_t* routine = L"Each", VARIANT* argument = nullptr, LONG maxRecords = 0,
                        VARIANT* fields = nullptr) {
        LONG processed = 12345;
        EXPECT_EQ(
            functions().DbfProcess(Variant(L"X|d>t"), routine ? Bstr(routine).get() : nullptr,
                                   Bstr(L"A>1").get(), fields, maxRecords, argument, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed),
            S_OK);
        return processed;
    }
    Variant Replace(Variant list) {
        Variant result(L"not written");
        VARIANT content = list.detach();
        EXPECT_EQ(functions().DbfReplace(&content.parray, result.put()), S_OK);
        VariantClear(&content);
        return result;
    }
};

TEST_F(RecordProcessing, TracesOpensSelectsAndRunsTheRoutine) {
    Scene().records = 1;
    Variant argument(L"a");
    EXPECT_EQ(ProcessRecords(L"Each", argument.address()), 1);
    EXPECT_EQ(
        TakeCalls(),
        Calls({"ZuEngineMessages.Trace(\"entered DbfProcess\")"}) + Opened("X|d", "t") +
            Calls({"DataTable.Select(\"A>1\", I4 0, 0, missing)", "ZuEngineContext.ContextItemHandle(6)",
                   "ZuEngineContext.ContextItemHandle(2)", "ZuEngineContext.Routine(\"Each\")",
                   "ZuEngineContext.SaveContextItem(106)", "ZuEngineContext.SaveContextItem(102)",
                   "ZuEngineContext.SetContextItem(106, <view 1>)", "ZuDataView.MoveFirst(0)",
                   "ZuDataView.Eof(0)", "ZuEngineContext.SetContextItem(102, I4 1)",
                   "ZuEngineContext.CallRoutine(<routine 1>, \"Each\", [0..0: \"a\"])",
                   "ZuDataView.MoveNext(-1)", "ZuDataView.Eof(0)",
                   "ZuEngineContext.SetContextItem(106, Empty)",
                   "ZuEngineContext.SetContextItem(102, Empty)"}));
}

TEST_F(RecordProcessing, EmptyRoutineNameIsReportedAndNoTableIsOpened) {
    const Calls expected = {"ZuEngineMessages.Trace(\"entered DbfProcess\")",
                            "ZuEngineMessages.RaiseError(8004102C, [0..0: \"DbfProcess\"])"};
    EXPECT_EQ(ProcessRecords(L""), 0);
    EXPECT_EQ(TakeCalls(), expected);
    EXPECT_EQ(ProcessRecords(nullptr), 0);
    EXPECT_EQ(TakeCalls(), expected);
}

TEST_F(RecordProcessing, TableThatDoesNotOpenGivesZeroWithoutAReport) {
    Scene().opensTable = false;
    EXPECT_EQ(ProcessRecords(), 0);
    EXPECT_EQ(TakeCalls(), Calls({"ZuEngineMessages.Trace(\"entered DbfProcess\")"}) + Opened("X|d", "t"));
}

TEST_F(RecordProcessing, FieldNamesAndMaxRecordsGoToTheSelection) {
    Scene().records = 5;
    Variant fields = Array({L"NAME"});
    EXPECT_EQ(ProcessRecords(L"Each", nullptr, 2, fields.address()), 2);
    EXPECT_THAT(TakeCalls(), Contains("DataTable.Select(\"A>1\", I4 2, 0, [0..0: \"NAME\"])"));
}

TEST_F(RecordProcessing, RoutineThatFailsEndsTheRunWithTheCountReached) {
    Scene().records = 5;
    Scene().routine = [](int call, SAFEARRAY*) {
        if (call == 2) Journal::OfThread().FailAt(2);  // the call after MoveNext's Eof: the next routine call
        return true;
    };
    EXPECT_EQ(ProcessRecords(), 2);
    EXPECT_THAT(TakeCalls(), Not(Contains(::testing::HasSubstr("RaiseError"))));
}

TEST_F(RecordProcessing, NestedRunsEachHaveTheirOwnViewAndGiveTheOuterItsBack) {
    Scene().records = 2;
    bool inner = false;
    std::vector<LONG> numbers;
    Scene().routine = [&](int, SAFEARRAY*) {
        const LONG number = Scene().contextItems[102].ToLong();
        numbers.push_back(number);
        if (!inner) {
            inner = true;
            const Variant outerView(Scene().contextItems[106]);
            EXPECT_EQ(ProcessRecords(L"Inner"), 2);
            EXPECT_EQ(Scene().contextItems[106]->pdispVal, outerView->pdispVal);
            EXPECT_EQ(Scene().contextItems[102].ToLong(), number);
            inner = false;
        }
        return true;
    };
    EXPECT_EQ(ProcessRecords(), 2);
    EXPECT_THAT(numbers, ElementsAre(1, 1, 2, 2, 1, 2));
    EXPECT_EQ(Scene().contextItems[106].type(), VT_EMPTY);
}

TEST_F(RecordProcessing, NullResultPointersAreRefused) {
    EXPECT_EQ(functions().DbfProcess(Variant(L"X|d>t"), Bstr(L"Each").get(), nullptr, nullptr, 0, nullptr,
                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr),
              E_POINTER);
    EXPECT_EQ(functions().DbfReplace(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(TakeCalls(), Calls());
}

TEST_F(RecordProcessing, ReplaceWithTwoElementsSetsOneFieldAndAnswersWhatUpdateAnswers) {
    Scene().contextItems[106] = Variant(Select().get());
    TakeCalls();
    const Variant saved = Replace(Array({L"NAME", L"new"}));
    EXPECT_EQ(saved.type(), VT_BOOL);
    EXPECT_TRUE(saved.ToBoolean());
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineContext.ContextItemHandle(6)", "ZuEngineContext.ContextItem(106)",
                            "ZuDataView.Fields()", "ZuDataFields.Item(\"NAME\")",
                            "ZuDataField.Value(\"NAME\" = \"new\")", "ZuDataView.Update()"));
    Scene().updates = [](int) { return false; };
    const Variant refused = Replace(Array({L"NAME", L"new"}));
    EXPECT_EQ(refused.type(), VT_BOOL);
    EXPECT_FALSE(refused.ToBoolean());
}

TEST_F(RecordProcessing, ReplaceSetsTheFieldsInTheirOrder) {
    Scene().fields = {{L"A", VT_BSTR, Variant()}, {L"B", VT_I4, Variant()}};
    Scene().contextItems[106] = Variant(Select().get());
    TakeCalls();
    Replace(Array({Variant(L"B"), Variant(LONG{2}), Variant(LONG{0}), Variant::Null()}));
    EXPECT_THAT(TakeCalls(),
                ElementsAre(::testing::_, ::testing::_, "ZuDataView.Fields()", "ZuDataFields.Item(\"B\")",
                            "ZuDataField.Value(\"B\" = I4 2)", "ZuDataFields.Item(I4 0)",
                            "ZuDataField.Value(\"A\" = Null)", "ZuDataView.Update()"));
}

TEST_F(RecordProcessing, ReplaceOutsideARoutineIsEmpty) {
    EXPECT_EQ(Replace(Array({L"NAME", L"new"})).type(), VT_EMPTY);
    Scene().contextItems[106] = Variant(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(Replace(Array({L"NAME", L"new"})).type(), VT_EMPTY);
    Scene().contextItems[106] = Variant(functions_.get());
    EXPECT_EQ(Replace(Array({L"NAME", L"new"})).type(), VT_EMPTY);
    EXPECT_THAT(TakeCalls(), Not(Contains("ZuDataView.Update()")));
}

TEST_F(RecordProcessing, ReplaceWithAnythingButWholePairsIsEmptyAndChangesNothing) {
    Scene().contextItems[106] = Variant(Select().get());
    TakeCalls();
    for (const Variant& list : {Array({L"NAME", L"new", L"NAME"}), Array({L"NAME"}),
                                Array(std::vector<Variant>()), TextArray({L"NAME", L"new"}, 1)}) {
        EXPECT_EQ(Replace(list).type(), VT_EMPTY);
    }
    EXPECT_EQ(Replace(UndimensionedArray()).type(), VT_EMPTY);
    EXPECT_EQ(functions().DbfReplace(nullptr, Variant().put()), S_OK);
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, Not(Contains(::testing::StartsWith("ZuDataField"))));
    EXPECT_THAT(calls, Not(Contains("ZuDataView.Update()")));
}

TEST_F(RecordProcessing, UnknownFieldEndsReplaceWithEmptyAndKeepsWhatWasPut) {
    Scene().contextItems[106] = Variant(Select().get());
    TakeCalls();
    EXPECT_EQ(Replace(Array({L"NAME", L"new", L"NOSUCH", L"x"})).type(), VT_EMPTY);
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, Contains("ZuDataField.Value(\"NAME\" = \"new\")"));
    EXPECT_THAT(calls, Not(Contains("ZuDataView.Update()")));
}

TEST_F(RecordProcessing, RefusedValueEndsReplaceWithEmpty) {
    Scene().contextItems[106] = Variant(Select().get());
    Scene().takesValue = [](const std::wstring&, const VARIANT&) { return DISP_E_OVERFLOW; };
    EXPECT_EQ(Replace(Array({L"NAME", L"new"})).type(), VT_EMPTY);
    EXPECT_THAT(TakeCalls(), Not(Contains("ZuDataView.Update()")));
}

}  // namespace zu::contract
