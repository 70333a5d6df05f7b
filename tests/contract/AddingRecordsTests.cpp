// DbfAddNew and DbfConditionalAddNew.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::ComPtr;
using com::Variant;
using fake::Scene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class AddingRecords : public ContractTest {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        values_ = Select();  // <view 1>
        Scene().records = 0;
        fake::Journal::OfThread().Clear();
    }
    void TearDown() override {
        values_.reset();
        ContractTest::TearDown();
    }

    bool Add(const Variant& tableDefn = Variant(L"X|d>t")) {
        VARIANT_BOOL added = 77;
        ZuDataView* values = values_.detach();
        EXPECT_EQ(functions().DbfAddNew(tableDefn, &values, &added), S_OK);
        values_ = ComPtr<ZuDataView>::Adopt(values);
        return added == VARIANT_TRUE;
    }
    bool AddUnless(const VARIANT& key) {
        VARIANT_BOOL added = 77;
        VARIANT argument = key;
        ZuDataView* values = values_.detach();
        EXPECT_EQ(functions().DbfConditionalAddNew(Variant(L"X|d>t"), &values, &argument, &added), S_OK);
        values_ = ComPtr<ZuDataView>::Adopt(values);
        return added == VARIANT_TRUE;
    }

    ComPtr<ZuDataView> values_;
};

TEST_F(AddingRecords, AddNewAddsThroughAnEmptySelectionWithTheDefaultIndexOpen) {
    EXPECT_TRUE(Add());
    const Calls calls = TakeCalls();
    // Labels begin anew with each look at the calls: the view of the values is a stranger's number here.
    EXPECT_EQ(calls, OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.Select(Null, I4 1, 0, missing)",
                                 "ZuDataView.AddNew(<view 1>)", "ZuDataView.MoveFirst(0)",
                                 "ZuEngineData.RecordAdded(<view 1>)", "ZuDataView.Update()"}));
    EXPECT_EQ(LiveObjects(), 1u);
}

TEST_F(AddingRecords, AddNewThatAnswersFalseIsNeitherToldNorCommitted) {
    Scene().addsNew = [](int) { return false; };
    EXPECT_FALSE(Add());
    EXPECT_EQ(TakeCalls().back(), "ZuDataView.AddNew(<view 1>)");
}

TEST_F(AddingRecords, UpdateThatAnswersFalseIsTheResult) {
    Scene().updates = [](int) { return false; };
    EXPECT_FALSE(Add());
    EXPECT_EQ(TakeCalls().back(), "ZuDataView.Update()");
}

TEST_F(AddingRecords, ValuesThatComeBackReplaceTheCallers) {
    Scene().records = 3;
    const ComPtr<ZuDataView> other = Select();
    Scene().records = 0;
    Scene().replacedValues = Variant(other.get());
    EXPECT_TRUE(Add());
    EXPECT_EQ(values_.get(), other.get());
    EXPECT_EQ(LiveObjects(), 1u) << "the view given first is released";
}

TEST_F(AddingRecords, ValuesReplacedBySomethingElseFailTheCall) {
    Scene().replacedValues = Variant(functions_.get());
    EXPECT_FALSE(Add());
    EXPECT_TRUE(values_);
    EXPECT_THAT(TakeCalls(), Not(Contains("ZuDataView.Update()")));
}

TEST_F(AddingRecords, NoValuesAddNothing) {
    values_.reset();
    EXPECT_FALSE(Add());
    EXPECT_THAT(TakeCalls(), Not(Contains("ZuDataView.Update()")));
    VARIANT_BOOL added = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfAddNew(Variant(L"X|d>t"), nullptr, &added), S_OK);
    EXPECT_EQ(added, VARIANT_FALSE);
}

TEST_F(AddingRecords, TableThatCannotBeOpenedYieldsFalseFromBoth) {
    Scene().opensTable = false;
    EXPECT_FALSE(Add());
    EXPECT_FALSE(AddUnless(Variant(L"SMITH")));
    EXPECT_EQ(TakeCalls(), Opened("X|d", "t") + Opened("X|d", "t"));
    EXPECT_FALSE(Add(Variant(LONG{5})));
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(AddingRecords, IndexThatDoesNotOpenIsNoReasonToFail) {
    Scene().opensIndex = false;
    EXPECT_TRUE(Add());
}

TEST_F(AddingRecords, ConditionalAddWithAKeySeeksItExactly) {
    EXPECT_TRUE(AddUnless(Variant(L"SMITH")));
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.CurrentIndex(0)", "DataIndex.KeyFields()",
                          "DataKeyFields.Count()", "DataKeyFields.Item(I4 0)", "ZuEngineData.ToBoolean(True)",
                          "DataKeyField.Exact(#0 = True)", "DataKeyField.Value(#0 = \"SMITH\")",
                          "DataTable.Seek(<index 1>, 0, 1, 0, missing)", "ZuDataView.RecordCount(0)",
                          "ZuDataView.AddNew(<view 1>)", "ZuDataView.MoveFirst(0)",
                          "ZuEngineData.RecordAdded(<view 1>)", "ZuDataView.Update()"}));
}

TEST_F(AddingRecords, ConditionalAddWithAConditionFiltersWithTheIndexOpen) {
    EXPECT_TRUE(AddUnless(Variant(L"NAME='SMITH'")));
    EXPECT_EQ(
        TakeCalls(),
        OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.Select(\"NAME='SMITH'\", I4 1, 0, missing)",
                    "ZuDataView.RecordCount(0)", "ZuDataView.AddNew(<view 1>)", "ZuDataView.MoveFirst(0)",
                    "ZuEngineData.RecordAdded(<view 1>)", "ZuDataView.Update()"}));
}

TEST_F(AddingRecords, NumberIsAlwaysAKey) {
    EXPECT_TRUE(AddUnless(Variant(LONG{12})));
    EXPECT_THAT(TakeCalls(), Contains("DataKeyField.Value(#0 = I4 12)"));
}

TEST_F(AddingRecords, AnyOneOfTheFourCharactersMakesACondition) {
    for (const wchar_t* condition : {L"=", L"<", L">", L"("}) {
        EXPECT_TRUE(AddUnless(Variant(condition)));
        EXPECT_THAT(TakeCalls(), Not(Contains(::testing::StartsWith("DataTable.Seek"))));
    }
    EXPECT_TRUE(AddUnless(Variant(L"no such thing ) here")));
    EXPECT_THAT(TakeCalls(), Contains(::testing::StartsWith("DataTable.Seek")));
}

TEST_F(AddingRecords, MatchingRecordLeavesTheTableAlone) {
    Scene().records = 1;
    EXPECT_FALSE(AddUnless(Variant(L"SMITH")));
    EXPECT_EQ(TakeCalls().back(), "ZuDataView.RecordCount(0)");
}

TEST_F(AddingRecords, NoViewAddsNothing) {
    Scene().selects = false;
    EXPECT_FALSE(AddUnless(Variant(L"SMITH")));
    EXPECT_FALSE(Add());
}

TEST_F(AddingRecords, NullResultPointersAreRefused) {
    ZuDataView* values = values_.get();
    EXPECT_EQ(functions().DbfAddNew(Variant(L"X|d>t"), &values, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfConditionalAddNew(Variant(L"X|d>t"), &values, nullptr, nullptr), E_POINTER);
}

}  // namespace zu::contract
