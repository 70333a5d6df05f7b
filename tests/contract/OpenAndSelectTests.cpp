// DbfOpen, DbfSelect, DbfLookup, DbfCount.
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

class OpenAndSelect : public ContractTest {};

TEST_F(OpenAndSelect, DbfOpenAnswersAnOpenTable) {
    const ComPtr<_ZuDbRef> table = Open(L"X|sales>orders");
    ASSERT_TRUE(table);
    EXPECT_EQ(TakeCalls(), Opened("X|sales", "orders"));
    EXPECT_EQ(Journal::OfThread().Live("table"), 1u);
}

TEST_F(OpenAndSelect, DbfOpenIsNoObjectForWhatCannotBeOpened) {
    EXPECT_FALSE(Open(Variant(LONG{5})));
    Scene().opensTable = false;
    EXPECT_FALSE(Open(L"X|sales>orders"));
}

TEST_F(OpenAndSelect, DbfOpenWithAMissingDefinitionOpensTheEmptyNames) {
    // A missing definition is "the names held already" to an open table, and a new one holds none.
    EXPECT_TRUE(Open(Variant::Missing()));
    EXPECT_EQ(TakeCalls(), Opened("", ""));
}

TEST_F(OpenAndSelect, DbfSelectOpensFiltersAndLetsTheTableGo) {
    const ComPtr<ZuDataView> view = Select(L"X|d>t", L"A>1");
    ASSERT_TRUE(view);
    EXPECT_EQ(TakeCalls(), OpenedThen({"DataTable.Select(\"A>1\", I4 0, 0, missing)"}));
    EXPECT_EQ(LiveObjects(), 1u);
    LONG count = 0;
    EXPECT_EQ(view->get_RecordCount(0, &count), S_OK);
    EXPECT_EQ(count, 3);
}

TEST_F(OpenAndSelect, DbfSelectWithoutConditionPassesTheEmptyText) {
    EXPECT_TRUE(Select());
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"\", I4 0, 0, missing)");
}

TEST_F(OpenAndSelect, DbfSelectHandsFieldNamesAndMaxRecordsOn) {
    Variant fields = Array({L"NAME", L"CITY"});
    ComPtr<ZuDataView> view;
    EXPECT_EQ(functions().DbfSelect(Variant(L"X|d>t"), Bstr(L"A>1").get(), fields.address(), 9, view.put()),
              S_OK);
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"A>1\", I4 9, 0, [0..1: \"NAME\", \"CITY\"])");
}

TEST_F(OpenAndSelect, DbfSelectOpensNoIndex) {
    Select();
    EXPECT_THAT(TakeCalls(), ::testing::Not(::testing::Contains(::testing::HasSubstr("Index"))));
}

TEST_F(OpenAndSelect, DbfSelectIsNoObjectForWhatCannotBeOpened) {
    Scene().opensTable = false;
    EXPECT_FALSE(Select());
    EXPECT_EQ(TakeCalls(), Opened("X|d", "t"));
}

TEST_F(OpenAndSelect, DbfCountSelectsNoFieldsAndAsksForTheCount) {
    EXPECT_EQ(Count(L"X|d>t", L"A>1"), 3);
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.Select(\"A>1\", I4 0, 0, I2 0)", "ZuDataView.RecordCount(0)"}));
    EXPECT_EQ(LiveObjects(), 0u);
}

TEST_F(OpenAndSelect, DbfCountWithoutConditionCountsAll) {
    EXPECT_EQ(Count(), 3);
    EXPECT_THAT(TakeCalls(), ::testing::Contains("DataTable.Select(\"\", I4 0, 0, I2 0)"));
}

TEST_F(OpenAndSelect, DbfCountOfAnEmptySelectionIsZero) {
    Scene().records = 0;
    EXPECT_EQ(Count(), 0);
}

TEST_F(OpenAndSelect, DbfCountIsMinusOneForATableThatCannotBeOpened) {
    Scene().opensTable = false;
    EXPECT_EQ(Count(), -1);
}

TEST_F(OpenAndSelect, DbfCountIsMinusOneForADefinitionThatIsNone) {
    LONG count = 0;
    EXPECT_EQ(functions().DbfCount(Variant(LONG{5}), nullptr, &count), S_OK);
    EXPECT_EQ(count, -1);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(OpenAndSelect, DbfCountIsMinusOneWhenNoCountIsToBeHad) {
    Scene().selects = false;
    EXPECT_EQ(Count(), -1);
    Scene().selects = true;
    Journal::OfThread().FailOn("ZuDataView.RecordCount");
    EXPECT_EQ(Count(), -1);
}

TEST_F(OpenAndSelect, DbfLookupOpensTheDefaultIndexAndSeeksTheKey) {
    const ComPtr<ZuDataView> view = Lookup(Variant(L"SMITH"));
    ASSERT_TRUE(view);
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.CurrentIndex(0)", "DataIndex.KeyFields()",
                          "DataKeyFields.Count()", "DataKeyFields.Item(I4 0)", "ZuEngineData.ToBoolean(True)",
                          "DataKeyField.Exact(#0 = True)", "DataKeyField.Value(#0 = \"SMITH\")",
                          "DataTable.Seek(<index 1>, 0, 1, 0, missing)"}));
    EXPECT_EQ(LiveObjects(), 1u);
}

TEST_F(OpenAndSelect, DbfLookupSelectsByAConditionWithoutAnIndex) {
    EXPECT_TRUE(Lookup(Variant(L"AMOUNT>100")));
    EXPECT_EQ(TakeCalls(), OpenedThen({"DataTable.Select(\"AMOUNT>100\", I4 1, 0, missing)"}));
}

TEST_F(OpenAndSelect, EachOfTheFourCharactersMakesACondition) {
    for (const wchar_t* condition : {L"A=1", L"A<1", L"A>1", L"EMPTY(A", L"=", L"<", L">", L"(", L"x y ="}) {
        EXPECT_TRUE(Lookup(Variant(condition)));
        EXPECT_EQ(TakeCalls().back().find("DataTable.Select("), 0u) << condition;
    }
}

TEST_F(OpenAndSelect, OtherTextsAreKeys) {
    for (const wchar_t* key : {L"", L"SMITH", L"A)", L"A#B", L"A$B", L"!", L"A+B", L".T.", L"\uff1d"}) {
        EXPECT_TRUE(Lookup(Variant(key)));
        EXPECT_EQ(TakeCalls().back().find("DataTable.Seek("), 0u) << key;
    }
}

TEST_F(OpenAndSelect, OtherContentsAreKeys) {
    for (const Variant& key : {Variant(LONG{12}), Variant(1.5), Variant(true), Variant::Null(), Variant(),
                               Array({L"A=1"}), TextArray({L"A>1"}, 0)}) {
        EXPECT_TRUE(Lookup(key));
        EXPECT_EQ(TakeCalls().back().find("DataTable.Seek("), 0u) << key.type();
    }
}

TEST_F(OpenAndSelect, ConditionByReferenceIsOneToo) {
    Variant variable(L"AMOUNT>100");
    EXPECT_TRUE(Lookup(ReferenceTo(variable)));
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"AMOUNT>100\", I4 1, 0, missing)");

    Bstr text(L"AMOUNT>100");
    VARIANT reference{};
    reference.vt = VT_BSTR | VT_BYREF;
    reference.pbstrVal = text.address();
    EXPECT_TRUE(Lookup(reference));
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"AMOUNT>100\", I4 1, 0, missing)");
}

TEST_F(OpenAndSelect, DbfLookupWithoutKeyLooksUpTheEmptyKey) {
    ComPtr<ZuDataView> view;
    EXPECT_EQ(functions().DbfLookup(Variant(L"X|d>t"), nullptr, Variant::Missing(), nullptr, 1, view.put()),
              S_OK);
    EXPECT_TRUE(view);
    EXPECT_THAT(TakeCalls(), ::testing::IsSupersetOf({"DataKeyField.Value(#0 = \"\")",
                                                      "DataTable.Seek(<index 1>, 0, 1, 0, missing)"}));
    EXPECT_TRUE(Lookup(Variant::Missing()));
    EXPECT_THAT(TakeCalls(), ::testing::Contains("DataKeyField.Value(#0 = \"\")"));
}

TEST_F(OpenAndSelect, DbfLookupPassesExactThroughTheEnginesTruthValue) {
    EXPECT_TRUE(Lookup(Variant(L"SM"), Variant(false)));
    EXPECT_THAT(TakeCalls(),
                ::testing::IsSupersetOf({"ZuEngineData.ToBoolean(False)", "DataKeyField.Exact(#0 = False)"}));
}

TEST_F(OpenAndSelect, DbfLookupHandsFieldNamesAndMaxRecordsOn) {
    Variant fields(L"NAME");
    Variant key(L"SMITH");
    Variant condition(L"A=1");
    ComPtr<ZuDataView> view;
    EXPECT_EQ(functions().DbfLookup(Variant(L"X|d>t"), key.address(), Variant::Missing(), fields.address(), 5,
                                    view.put()),
              S_OK);
    EXPECT_EQ(TakeCalls().back(), "DataTable.Seek(<index 1>, 0, 5, 0, \"NAME\")");
    EXPECT_EQ(functions().DbfLookup(Variant(L"X|d>t"), condition.address(), Variant::Missing(),
                                    fields.address(), 5, view.put()),
              S_OK);
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"A=1\", I4 5, 0, \"NAME\")");
}

TEST_F(OpenAndSelect, DbfLookupGoesOnWhenTheIndexDoesNotOpen) {
    Scene().opensIndex = false;
    EXPECT_TRUE(Lookup(Variant(L"SMITH")));
    EXPECT_EQ(TakeCalls(), OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.CurrentIndex(0)",
                                       "DataTable.Select(\"\", I4 1, 0, missing)"}));
    Journal::OfThread().FailOn("DataTable.OpenIndex");
    EXPECT_TRUE(Lookup(Variant(L"SMITH")));
}

TEST_F(OpenAndSelect, DbfLookupIsNoObjectForWhatCannotBeOpened) {
    Scene().opensTable = false;
    EXPECT_FALSE(Lookup(Variant(L"SMITH")));
    EXPECT_FALSE(Lookup(Variant(L"A=1")));
}

TEST_F(OpenAndSelect, NullResultPointersAreRefused) {
    const Variant table(L"X|d>t");
    EXPECT_EQ(functions().DbfOpen(table, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfSelect(table, nullptr, nullptr, 0, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfLookup(table, nullptr, Variant::Missing(), nullptr, 1, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfCount(table, nullptr, nullptr), E_POINTER);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

}  // namespace zu::contract
