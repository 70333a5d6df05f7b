// DbfUpdate and DbfModify.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Variant;
using fake::Scene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class UpdatingRecords : public ContractTest {
protected:
    bool UpdateRecord(Variant list, Variant key = Variant(L"SMITH")) {
        VARIANT content = list.detach();
        VARIANT_BOOL updated = 77;
        EXPECT_EQ(functions().DbfUpdate(Variant(L"X|d>t"), key.address(), &content.parray, &updated), S_OK);
        VariantClear(&content);
        return updated == VARIANT_TRUE;
    }
};

TEST_F(UpdatingRecords, FindsTheRecordByABeginningOfItsKeyAndCommitsTheFields) {
    Scene().fields = {{L"A", VT_BSTR, Variant()}, {L"B", VT_I4, Variant()}};
    EXPECT_TRUE(UpdateRecord(Array({Variant(L"A"), Variant(L"x"), Variant(L"B"), Variant(LONG{2})})));
    EXPECT_EQ(
        TakeCalls(),
        OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.CurrentIndex(0)", "DataIndex.KeyFields()",
                    "DataKeyFields.Count()", "DataKeyFields.Item(I4 0)", "ZuEngineData.ToBoolean(False)",
                    "DataKeyField.Exact(#0 = False)", "DataKeyField.Value(#0 = \"SMITH\")",
                    "DataTable.Seek(<index 1>, 0, 1, 0, missing)", "ZuDataView.Updateable()",
                    "ZuDataView.Fields()", "ZuDataFields.Item(\"A\")", "ZuDataField.Value(\"A\" = \"x\")",
                    "ZuDataFields.Item(\"B\")", "ZuDataField.Value(\"B\" = I4 2)", "ZuDataView.Update()"}));
}

TEST_F(UpdatingRecords, ConditionAsKeySelects) {
    EXPECT_TRUE(UpdateRecord(Array({L"NAME", L"x"}), Variant(L"NAME='a'")));
    EXPECT_THAT(TakeCalls(), Contains("DataTable.Select(\"NAME='a'\", I4 1, 0, missing)"));
}

TEST_F(UpdatingRecords, ListWithoutWholePairsIsReportedAndNoTableIsOpened) {
    for (const Variant& list : {Array({L"A", L"x", L"B"}), Array({L"A"}), Array(std::vector<Variant>())}) {
        EXPECT_FALSE(UpdateRecord(list));
        EXPECT_THAT(TakeCalls(), ElementsAre("ZuEngineMessages.RaiseError(80041031, [-1..-1: Empty])"));
    }
}

TEST_F(UpdatingRecords, ListThatWasNeverDimensionedIsFalse) {
    EXPECT_FALSE(UpdateRecord(UndimensionedArray()));
    VARIANT_BOOL updated = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfUpdate(Variant(L"X|d>t"), nullptr, nullptr, &updated), S_OK);
    EXPECT_EQ(updated, VARIANT_FALSE);
}

TEST_F(UpdatingRecords, SixPairsUpdateSixFields) {
    Scene().fields.clear();
    std::vector<Variant> list;
    for (const wchar_t* name : {L"A", L"B", L"C", L"D", L"E", L"F"}) {
        Scene().fields.push_back({name, VT_BSTR, Variant()});
        list.emplace_back(name);
        list.emplace_back(L"new");
    }
    EXPECT_TRUE(UpdateRecord(Array(list)));
    const Calls calls = TakeCalls();
    for (const char* name : {"A", "B", "C", "D", "E", "F"}) {
        EXPECT_THAT(calls, Contains(std::string("ZuDataField.Value(\"") + name + "\" = \"new\")"));
    }
}

TEST_F(UpdatingRecords, KeyThatMatchesNothingYieldsFalse) {
    Scene().selects = false;
    EXPECT_FALSE(UpdateRecord(Array({L"NAME", L"x"})));
    EXPECT_THAT(TakeCalls(), Not(Contains(::testing::StartsWith("ZuDataView"))));
    // A view without a record refuses to be written.
    Scene().selects = true;
    Scene().records = 0;
    Scene().takesValue = [](const std::wstring&, const VARIANT&) { return E_FAIL; };
    EXPECT_FALSE(UpdateRecord(Array({L"NAME", L"x"})));
    EXPECT_THAT(TakeCalls(), Not(Contains("ZuDataView.Update()")));
}

TEST_F(UpdatingRecords, ViewThatIsNotUpdateableIsNotTouched) {
    Scene().updateable = false;
    EXPECT_FALSE(UpdateRecord(Array({L"NAME", L"x"})));
    EXPECT_EQ(TakeCalls().back(), "ZuDataView.Updateable()");
}

TEST_F(UpdatingRecords, UnknownFieldAndRefusedValueYieldFalseAndCommitNothing) {
    EXPECT_FALSE(UpdateRecord(Array({L"NAME", L"x", L"NOSUCH", L"y"})));
    Calls calls = TakeCalls();
    EXPECT_THAT(calls, Contains("ZuDataField.Value(\"NAME\" = \"x\")"));
    EXPECT_THAT(calls, Not(Contains("ZuDataView.Update()")));
    Scene().takesValue = [](const std::wstring&, const VARIANT&) { return DISP_E_TYPEMISMATCH; };
    EXPECT_FALSE(UpdateRecord(Array({L"NAME", L"x"})));
    calls = TakeCalls();
    EXPECT_THAT(calls, Not(Contains("ZuDataView.Update()")));
    EXPECT_THAT(calls, Not(Contains(::testing::HasSubstr("RaiseError"))));
}

TEST_F(UpdatingRecords, UpdateThatAnswersFalseIsTheResult) {
    Scene().updates = [](int) { return false; };
    EXPECT_FALSE(UpdateRecord(Array({L"NAME", L"x"})));
}

TEST_F(UpdatingRecords, ModifyIsReportedAsMissingForAnyArguments) {
    for (const Variant& table : {Variant(L"X|d>t"), Variant(LONG{5}), Variant::Missing(), Variant::Null()}) {
        VARIANT_BOOL modified = VARIANT_TRUE;
        EXPECT_EQ(functions().DbfModify(table, table, &modified), S_OK);
        EXPECT_EQ(modified, VARIANT_FALSE);
        EXPECT_THAT(TakeCalls(), ElementsAre("ZuEngineMessages.RaiseError(8004103C, [0..0: \"DbfModify\"])"));
    }
}

TEST_F(UpdatingRecords, NullResultPointersAreRefused) {
    EXPECT_EQ(functions().DbfUpdate(Variant(L"X|d>t"), nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfModify(Variant(L"X|d>t"), Variant(L"X|d>t"), nullptr), E_POINTER);
}

}  // namespace zu::contract
