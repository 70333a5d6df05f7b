// DbfIndex.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Variant;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class IndexBuilding : public ContractTest {
protected:
    bool Build(Variant fields, const Variant& tableDefn = Variant(L"X|d>t")) {
        VARIANT content = fields.detach();
        VARIANT_BOOL built = 77;
        EXPECT_EQ(functions().DbfIndex(tableDefn, &content.parray, &built), S_OK);
        VariantClear(&content);
        return built == VARIANT_TRUE;
    }
    /// The fields that reached the list.
    Calls Added() {
        Calls added;
        const std::string lead = "DataFieldList.Add(";
        for (const std::string& call : TakeCalls()) {
            if (call.compare(0, lead.size(), lead) == 0)
                added.push_back(call.substr(lead.size(), call.size() - lead.size() - 1));
        }
        return added;
    }
};

TEST_F(IndexBuilding, ListGoesToTheServiceWithTheResolvedNames) {
    EXPECT_TRUE(Build(Array({L"NAME", L"CITY"})));
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineData.DatabaseService()", "ZuDatabaseService.NewFieldList()",
                            "DataFieldList.Add(\"NAME\", False)", "DataFieldList.Add(\"CITY\", False)",
                            "ZuEngineData.DatabaseService()",
                            "ZuDatabaseService.CreateIndex(\"X|d\", \"t\", <field list 1>)"));
}

TEST_F(IndexBuilding, ScriptsNameOfTheRecordNumberIsReplacedInAnyCase) {
    EXPECT_TRUE(Build(Array({L"DbfRecno", L"dbfrecno", L"DBFRECNO", L"STR(dbfRECNO, 5)"})));
    EXPECT_THAT(Added(), ElementsAre("\"RecNo\", False", "\"RecNo\", False", "\"RecNo\", False",
                                     "\"STR(RecNo, 5)\", False"));
}

TEST_F(IndexBuilding, OnlyTheFirstOccurrenceInAnElementIsReplaced) {
    EXPECT_TRUE(Build(Array({L"DbfRecno + DbfRecno"})));
    EXPECT_THAT(Added(), ElementsAre("\"RecNo + DbfRecno\", False"));
}

TEST_F(IndexBuilding, NumbersPassThroughUnchanged) {
    EXPECT_TRUE(Build(Array({Variant(LONG{2}), Variant(1.5), Variant(SHORT{0})})));
    EXPECT_THAT(Added(), ElementsAre("I4 2, False", "R8 1.5, False", "I2 0, False"));
    EXPECT_TRUE(Build(LongArray({3, 1}, 1)));
    EXPECT_THAT(Added(), ElementsAre("I4 3, False", "I4 1, False"));
}

TEST_F(IndexBuilding, EveryElementIsTakenWhateverTheBounds) {
    EXPECT_TRUE(Build(TextArray({L"A", L"B"}, 5)));
    EXPECT_THAT(Added(), ElementsAre("\"A\", False", "\"B\", False"));
    EXPECT_TRUE(Build(Array(std::vector<Variant>())));
    EXPECT_THAT(Added(), IsEmpty());
}

TEST_F(IndexBuilding, DefinitionThatIsNoneIsFalseAndCallsNothing) {
    EXPECT_FALSE(Build(Array({L"NAME"}), Variant(LONG{5})));
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(IndexBuilding, WhatTheServiceAnswersIsTheResult) {
    Scene().answers = false;
    EXPECT_FALSE(Build(Array({L"NAME"})));
}

TEST_F(IndexBuilding, ListThatWasNeverDimensionedIsFalse) {
    EXPECT_FALSE(Build(UndimensionedArray()));
    VARIANT_BOOL built = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfIndex(Variant(L"X|d>t"), nullptr, &built), S_OK);
    EXPECT_EQ(built, VARIANT_FALSE);
    EXPECT_EQ(functions().DbfIndex(Variant(L"X|d>t"), nullptr, nullptr), E_POINTER);
}

}  // namespace zu::contract
