// DbfVarDeclare and DbfVarReset.
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordVariable : public ContractTest {
protected:
    ComPtr<ZuDataView> Declare() {
        ComPtr<ZuDataView> view;
        EXPECT_EQ(functions().DbfVarDeclare(Variant(L"X|d>t"), view.put()), S_OK);
        return view;
    }
    VARTYPE Reset(ZuDataView* view) {
        Variant result;
        EXPECT_EQ(functions().DbfVarReset(&view, result.put()), S_OK);
        return result.type();
    }
};

TEST_F(RecordVariable, IsInitialisedFromTheLayoutOfTheTable) {
    const ComPtr<ZuDataView> variable = Declare();
    ASSERT_TRUE(variable);
    EXPECT_EQ(TakeCalls(), OpenedThen({"DataTable.Layout()", "ZuEngineData.NewRecordVariable()",
                                       "ZuRecordVariable.Initialise(<view 1>, 1)"}));
    EXPECT_EQ(LiveObjects(), 1u) << "only the variable is left";
    EXPECT_TRUE(variable.tryAs<ZuRecordVariable>());
}

TEST_F(RecordVariable, IsNoObjectForATableThatCannotBeOpened) {
    Scene().opensTable = false;
    EXPECT_FALSE(Declare());
    EXPECT_EQ(TakeCalls(), Opened("X|d", "t"));
}

TEST_F(RecordVariable, IsNoObjectWithoutALayout) {
    Scene().hasLayout = false;
    EXPECT_FALSE(Declare());
    EXPECT_EQ(TakeCalls().back(), "DataTable.Layout()");
}

TEST_F(RecordVariable, IsNoObjectWhenItDoesNotInitialise) {
    Scene().initialises = false;
    EXPECT_FALSE(Declare());
    EXPECT_EQ(LiveObjects(), 0u);
}

TEST_F(RecordVariable, IsNoObjectWhenTheEngineHasNone) {
    Journal::OfThread().AnswerNothingOn("ZuEngineData.NewRecordVariable");
    EXPECT_FALSE(Declare());
    Journal::OfThread().Clear();
    Scene().withheld = {__uuidof(ZuRecordVariable)};
    EXPECT_FALSE(Declare());
}

TEST_F(RecordVariable, ResetClearsItAndAnswersEmpty) {
    const ComPtr<ZuDataView> variable = Declare();
    TakeCalls();
    EXPECT_EQ(Reset(variable.get()), VT_EMPTY);
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuRecordVariable.Reset()"));
}

TEST_F(RecordVariable, ResetOfAnythingElseAnswersEmptyToo) {
    const ComPtr<ZuDataView> view = Select();
    TakeCalls();
    EXPECT_EQ(Reset(view.get()), VT_EMPTY);
    EXPECT_EQ(Reset(nullptr), VT_EMPTY);
    Variant result;
    EXPECT_EQ(functions().DbfVarReset(nullptr, result.put()), S_OK);
    EXPECT_EQ(result.type(), VT_EMPTY);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(RecordVariable, FailingResetAnswersEmptyToo) {
    const ComPtr<ZuDataView> variable = Declare();
    Journal::OfThread().FailOn("ZuRecordVariable.Reset");
    EXPECT_EQ(Reset(variable.get()), VT_EMPTY);
}

}  // namespace zu::contract
