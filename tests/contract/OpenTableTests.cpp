// ZuDbRef: the reference to an open table.
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

class OpenTable : public ContractTest {
protected:
    /// An open table with nothing in the journal.
    ComPtr<_ZuDbRef> OpenedTable() {
        ComPtr<_ZuDbRef> table = Open();
        EXPECT_TRUE(table);
        TakeCalls();
        return table;
    }
    static bool OpenIndex(_ZuDbRef& table, const wchar_t* name) {
        Bstr text(name);
        VARIANT_BOOL opened = VARIANT_FALSE;
        EXPECT_EQ(table.OpenIndex(text.address(), &opened), S_OK);
        return opened != VARIANT_FALSE;
    }
    static ComPtr<ZuDataView> Filter(_ZuDbRef& table, const VARIANT& condition, LONG maxRecords = 0,
                                     VARIANT* fieldNames = nullptr) {
        ComPtr<ZuDataView> view;
        EXPECT_EQ(table.Filter(condition, maxRecords, fieldNames, view.put()), S_OK);
        return view;
    }
    static ComPtr<ZuDataView> LookupIn(_ZuDbRef& table, Variant key,
                                       const VARIANT& exact = Variant::Missing(), LONG maxRecords = 0) {
        ComPtr<ZuDataView> view;
        EXPECT_EQ(table.Lookup(key.address(), exact, maxRecords, nullptr, view.put()), S_OK);
        return view;
    }
};

TEST_F(OpenTable, AsksForTheDatabaseServiceInEachOpenAndLetsItGo) {
    const ComPtr<_ZuDbRef> first = Open();
    const ComPtr<_ZuDbRef> second = Open();
    EXPECT_EQ(TakeCalls(), Opened("X|d", "t") + Opened("X|d", "t"));
    EXPECT_EQ(Journal::OfThread().Live("service"), 0u);
    EXPECT_EQ(Journal::OfThread().Live("table"), 2u);
}

TEST_F(OpenTable, IsNoObjectWhenTheServiceHasNoTable) {
    Scene().opensTable = false;
    EXPECT_FALSE(Open());
}

TEST_F(OpenTable, IsNoObjectWhenTheServiceFails) {
    Journal::OfThread().FailOn("ZuDatabaseService.OpenTable");
    EXPECT_FALSE(Open());
}

TEST_F(OpenTable, IsNoObjectWhenWhatTheServiceOpensIsNoTable) {
    Scene().withheld = {__uuidof(DataTable)};
    EXPECT_FALSE(Open());
}

TEST_F(OpenTable, FilterHandsItsArgumentsOn) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    Variant fields(L"NAME,CITY");
    EXPECT_TRUE(Filter(*table, Variant(L"A>1"), 7, fields.address()));
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.Select(\"A>1\", I4 7, 0, \"NAME,CITY\")"));
}

TEST_F(OpenTable, FilterPassesOmittedFieldNamesAsOmitted) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    EXPECT_TRUE(Filter(*table, Variant(L"A>1")));
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.Select(\"A>1\", I4 0, 0, missing)"));
    Variant missing = Variant::Missing();
    EXPECT_TRUE(Filter(*table, Variant(L"A>1"), 0, missing.address()));
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.Select(\"A>1\", I4 0, 0, missing)"));
}

TEST_F(OpenTable, FilterPassesTheConditionAsItIs) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    Filter(*table, Variant::Null());
    Filter(*table, Variant::Missing());
    Filter(*table, Variant(LONG{5}));
    Filter(*table, Variant());
    EXPECT_THAT(
        TakeCalls(),
        ElementsAre("DataTable.Select(Null, I4 0, 0, missing)", "DataTable.Select(missing, I4 0, 0, missing)",
                    "DataTable.Select(I4 5, I4 0, 0, missing)", "DataTable.Select(Empty, I4 0, 0, missing)"));
}

TEST_F(OpenTable, FilterLooksThroughReferences) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    Variant condition(L"A>1");
    Variant fields = Array({L"NAME", L"CITY"});
    VARIANT variable = ReferenceTo(fields);
    EXPECT_TRUE(Filter(*table, ReferenceTo(condition), 0, &variable));
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.Select(\"A>1\", I4 0, 0, [0..1: \"NAME\", \"CITY\"])"));
}

TEST_F(OpenTable, FilterIsNoObjectWhenNoViewComesBackOrTheObjectIsNoView) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    Scene().selects = false;
    EXPECT_FALSE(Filter(*table, Variant(L"")));
    Scene().selects = true;
    Scene().withheld = {__uuidof(ZuDataView)};
    EXPECT_FALSE(Filter(*table, Variant(L"")));
}

TEST_F(OpenTable, ViewOutlivesTheTable) {
    ComPtr<_ZuDbRef> table = OpenedTable();
    const ComPtr<ZuDataView> view = Filter(*table, Variant(L""));
    table.reset();
    LONG count = 0;
    EXPECT_EQ(view->get_RecordCount(0, &count), S_OK);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(Journal::OfThread().Live("table"), 0u);
}

TEST_F(OpenTable, CloseTableOnlyReleasesTheTable) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    EXPECT_EQ(table->CloseTable(), S_OK);
    EXPECT_THAT(TakeCalls(), IsEmpty());
    EXPECT_EQ(Journal::OfThread().Live("table"), 0u);
    EXPECT_EQ(table->CloseTable(), S_OK);  // once more is no harm
}

TEST_F(OpenTable, ClosedTableAnswersNothing) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    table->CloseTable();
    EXPECT_FALSE(Filter(*table, Variant(L"")));
    EXPECT_FALSE(LookupIn(*table, Variant(L"A")));
    EXPECT_FALSE(OpenIndex(*table, L""));
    LONG processed = 5;
    EXPECT_EQ(table->Process(Bstr(L"Each").get(), nullptr, Variant::Missing(), 0, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed),
              S_OK);
    EXPECT_EQ(processed, 0);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(OpenTable, ReferenceThatAScriptCreatesItselfIsClosed) {
    const auto table = Create(L"ZuDBFFunctions.ZuDbRef").tryAs<_ZuDbRef>();
    ASSERT_TRUE(table);
    EXPECT_FALSE(Filter(*table, Variant(L"")));
    EXPECT_FALSE(LookupIn(*table, Variant(L"A")));
    EXPECT_FALSE(OpenIndex(*table, L""));
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(OpenTable, OpenIndexHandsTheNameOnAndAnswersWhatTheTableSays) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    EXPECT_TRUE(OpenIndex(*table, L"BYNAME"));
    Scene().opensIndex = false;
    EXPECT_FALSE(OpenIndex(*table, L"NOSUCH"));
    Journal::OfThread().FailOn("DataTable.OpenIndex");
    EXPECT_FALSE(OpenIndex(*table, L"BYNAME"));
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.OpenIndex(\"BYNAME\")", "DataTable.OpenIndex(\"NOSUCH\")",
                                         "DataTable.OpenIndex(\"BYNAME\")"));
}

TEST_F(OpenTable, OpenIndexWithoutNameOpensTheDefaultIndex) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    VARIANT_BOOL opened = VARIANT_FALSE;
    EXPECT_EQ(table->OpenIndex(nullptr, &opened), S_OK);
    EXPECT_EQ(opened, VARIANT_TRUE);
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.OpenIndex(\"\")"));
    BSTR none = nullptr;
    EXPECT_EQ(table->OpenIndex(&none, &opened), S_OK);
    EXPECT_THAT(TakeCalls(), ElementsAre("DataTable.OpenIndex(\"\")"));
    EXPECT_EQ(none, nullptr);
}

TEST_F(OpenTable, LookupWithoutOpenIndexSelectsAllWhateverTheKey) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    const ComPtr<ZuDataView> view = LookupIn(*table, Variant(L"A"), Variant(false), 2);
    ASSERT_TRUE(view);
    EXPECT_THAT(TakeCalls(),
                ElementsAre("DataTable.CurrentIndex(0)", "DataTable.Select(\"\", I4 2, 0, missing)"));
    LONG count = 0;
    view->get_RecordCount(0, &count);
    EXPECT_EQ(count, 2);
}

TEST_F(OpenTable, LookupLoadsOneValueIntoTheFirstKeyFieldOnly) {
    Scene().keyFields = 2;
    const ComPtr<_ZuDbRef> table = OpenedTable();
    OpenIndex(*table, L"");
    TakeCalls();
    EXPECT_TRUE(LookupIn(*table, Variant(L"A"), Variant(false), 5));
    EXPECT_THAT(TakeCalls(),
                ElementsAre("DataTable.CurrentIndex(0)", "DataIndex.KeyFields()", "DataKeyFields.Count()",
                            "DataKeyFields.Item(I4 0)", "ZuEngineData.ToBoolean(False)",
                            "DataKeyField.Exact(#0 = False)", "DataKeyField.Value(#0 = \"A\")",
                            "DataTable.Seek(<index 1>, 0, 5, 0, missing)"));
}

TEST_F(OpenTable, LookupIsExactUnlessToldOtherwise) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    OpenIndex(*table, L"");
    TakeCalls();
    EXPECT_TRUE(LookupIn(*table, Variant(L"A")));
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls,
                ::testing::IsSupersetOf({"ZuEngineData.ToBoolean(True)", "DataKeyField.Exact(#0 = True)"}));
}

TEST_F(OpenTable, ExactGoesThroughTheEnginesTruthValue) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    OpenIndex(*table, L"");
    TakeCalls();
    EXPECT_TRUE(LookupIn(*table, Variant(L"A"), Variant(LONG{0})));
    EXPECT_THAT(TakeCalls(),
                ::testing::IsSupersetOf({"ZuEngineData.ToBoolean(I4 0)", "DataKeyField.Exact(#0 = False)"}));
}

TEST_F(OpenTable, LookupWithoutKeySeeksTheEmptyText) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    OpenIndex(*table, L"");
    TakeCalls();
    EXPECT_TRUE(LookupIn(*table, Variant::Missing()));
    EXPECT_THAT(TakeCalls(), ::testing::Contains("DataKeyField.Value(#0 = \"\")"));
    ComPtr<ZuDataView> view;
    EXPECT_EQ(table->Lookup(nullptr, Variant::Missing(), 0, nullptr, view.put()), S_OK);
    EXPECT_TRUE(view);
    EXPECT_THAT(TakeCalls(), ::testing::Contains("DataKeyField.Value(#0 = \"\")"));
}

TEST_F(OpenTable, LookupOnAnIndexWithoutKeyFieldsSeeksWithoutAKey) {
    Scene().keyFields = 0;
    const ComPtr<_ZuDbRef> table = OpenedTable();
    OpenIndex(*table, L"");
    TakeCalls();
    EXPECT_TRUE(LookupIn(*table, Variant(L"A")));
    EXPECT_THAT(TakeCalls(),
                ElementsAre("DataTable.CurrentIndex(0)", "DataIndex.KeyFields()", "DataKeyFields.Count()",
                            "DataTable.Seek(<index 1>, 0, 0, 0, missing)"));
}

TEST_F(OpenTable, LookupPassesValuesOfEveryTypeThrough) {
    const ComPtr<_ZuDbRef> table = OpenedTable();
    OpenIndex(*table, L"");
    for (const auto& [value, shown] :
         std::vector<std::pair<Variant, std::string>>{{Variant(LONG{12}), "I4 12"},
                                                      {Variant(1.5), "R8 1.5"},
                                                      {Variant::Null(), "Null"},
                                                      {Variant(), "Empty"},
                                                      {Variant(true), "True"}}) {
        TakeCalls();
        EXPECT_TRUE(LookupIn(*table, value));
        EXPECT_THAT(TakeCalls(), ::testing::Contains("DataKeyField.Value(#0 = " + shown + ")"));
    }
}

/// Lookup with an array as the key.
class ArrayKey : public OpenTable {
protected:
    /// The calls on the key fields that looking `key` up makes, on an index of `keyFields` fields.
    Calls KeyCallsFor(LONG keyFields, const VARIANT& key) {
        Scene().keyFields = keyFields;
        const ComPtr<_ZuDbRef> table = OpenedTable();
        OpenIndex(*table, L"");
        TakeCalls();
        VARIANT argument = key;
        found_ = nullptr;
        EXPECT_EQ(table->Lookup(&argument, Variant::Missing(), 0, nullptr, found_.put()), S_OK);
        Calls calls;
        for (const std::string& call : TakeCalls()) {
            if (call.find("DataKeyField.") == 0 || call.find("ZuEngineData.ToBoolean") == 0) {
                calls.push_back(call);
            }
        }
        return calls;
    }
    void TearDown() override {
        found_.reset();
        OpenTable::TearDown();
    }

    ComPtr<ZuDataView> found_;
};

TEST_F(ArrayKey, AlternatesValueAndExactnessAndTheLastValueIsExact) {
    EXPECT_THAT(KeyCallsFor(2, Array({Variant(L"A"), Variant(false), Variant(L"B")})),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "ZuEngineData.ToBoolean(False)",
                            "DataKeyField.Exact(#0 = False)", "DataKeyField.Value(#1 = \"B\")",
                            "DataKeyField.Exact(#1 = True)"));
    EXPECT_TRUE(found_);
}

TEST_F(ArrayKey, CompletePairsTakeEachExactness) {
    EXPECT_THAT(KeyCallsFor(2, Array({Variant(L"A"), Variant(true), Variant(L"B"), Variant(false)})),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "ZuEngineData.ToBoolean(True)",
                            "DataKeyField.Exact(#0 = True)", "DataKeyField.Value(#1 = \"B\")",
                            "ZuEngineData.ToBoolean(False)", "DataKeyField.Exact(#1 = False)"));
}

TEST_F(ArrayKey, StopsWhenTheArrayEndsBeforeTheKeyFields) {
    EXPECT_THAT(KeyCallsFor(3, Array({Variant(L"A"), Variant(false)})),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "ZuEngineData.ToBoolean(False)",
                            "DataKeyField.Exact(#0 = False)"));
    EXPECT_TRUE(found_);
}

TEST_F(ArrayKey, IgnoresWhatIsLeftWhenTheKeyFieldsEnd) {
    EXPECT_THAT(KeyCallsFor(1, Array({Variant(L"A"), Variant(false), Variant(L"B"), Variant(true)})),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "ZuEngineData.ToBoolean(False)",
                            "DataKeyField.Exact(#0 = False)"));
    EXPECT_TRUE(found_);
}

TEST_F(ArrayKey, EmptyArrayLoadsNothing) {
    EXPECT_THAT(KeyCallsFor(2, Array(std::vector<Variant>())), IsEmpty());
    EXPECT_TRUE(found_);
}

TEST_F(ArrayKey, TypedArraysAndReferencesAreReadTheSameWay) {
    EXPECT_THAT(KeyCallsFor(1, TextArray({L"A"}, 0)),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "DataKeyField.Exact(#0 = True)"));
    EXPECT_THAT(KeyCallsFor(2, LongArray({7, 0, 9}, 0)),
                ElementsAre("DataKeyField.Value(#0 = I4 7)", "ZuEngineData.ToBoolean(I4 0)",
                            "DataKeyField.Exact(#0 = False)", "DataKeyField.Value(#1 = I4 9)",
                            "DataKeyField.Exact(#1 = True)"));
    Variant variable = Array({L"A"});
    EXPECT_THAT(KeyCallsFor(1, ReferenceTo(variable)),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "DataKeyField.Exact(#0 = True)"));
}

TEST_F(ArrayKey, ElementIndexesAreTheArraysOwn) {
    // -1 To 0: the walk begins at element 0.
    EXPECT_THAT(KeyCallsFor(2, TextArray({L"unread", L"A"}, -1)),
                ElementsAre("DataKeyField.Value(#0 = \"A\")", "DataKeyField.Exact(#0 = True)"));
    // 1 To 1: element 0 does not exist, which ends the lookup without a view.
    EXPECT_THAT(KeyCallsFor(1, TextArray({L"A"}, 1)), IsEmpty());
    EXPECT_FALSE(found_);
}

TEST_F(ArrayKey, ArrayThatCannotBeReadGivesNoView) {
    KeyCallsFor(1, UndimensionedArray());
    EXPECT_FALSE(found_);
    KeyCallsFor(1, TwoDimensionalArray());
    EXPECT_FALSE(found_);
}

TEST_F(ArrayKey, ElementThatIsNoTruthValueGivesNoView) {
    KeyCallsFor(2, Array({Variant(L"A"), Variant(L"neither"), Variant(L"B")}));
    EXPECT_FALSE(found_);
}

}  // namespace zu::contract
