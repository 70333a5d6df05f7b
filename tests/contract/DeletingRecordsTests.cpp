// DbfDelete, DbfUndelete, DbfCleanup.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DeletingRecords : public ContractTest {
protected:
    LONG Delete(Variant key, VARIANT_BOOL exact = VARIANT_TRUE, LONG maxRecords = 1) {
        LONG deleted = 12345;
        EXPECT_EQ(functions().DbfDelete(Variant(L"X|d>t"), key.address(), exact, maxRecords, &deleted), S_OK);
        return deleted;
    }
};

TEST_F(DeletingRecords, KeyIsLookedUpOnTheDefaultIndex) {
    EXPECT_EQ(Delete(Variant(L"SMITH")), 1);
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.CurrentIndex(0)", "DataIndex.KeyFields()",
                          "DataKeyFields.Count()", "DataKeyFields.Item(I4 0)", "ZuEngineData.ToBoolean(True)",
                          "DataKeyField.Exact(#0 = True)", "DataKeyField.Value(#0 = \"SMITH\")",
                          "DataTable.Seek(<index 1>, 0, 1, 0, missing)", "ZuDataView.Updateable()",
                          "ZuDataView.RecordCount(0)", "ZuDataView.Delete(0)"}));
}

TEST_F(DeletingRecords, ConditionIsSelectedWithoutAnIndex) {
    EXPECT_EQ(Delete(Variant(L"AMOUNT>100"), VARIANT_TRUE, 0), 3);
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.Select(\"AMOUNT>100\", I4 0, 0, missing)", "ZuDataView.Updateable()",
                          "ZuDataView.RecordCount(0)", "ZuDataView.Delete(2)", "ZuDataView.Delete(1)",
                          "ZuDataView.Delete(0)"}));
}

TEST_F(DeletingRecords, LettersAndNumbersAreKeys) {
    EXPECT_EQ(Delete(Variant(L"letters")), 1);
    EXPECT_THAT(TakeCalls(), Contains("DataKeyField.Value(#0 = \"letters\")"));
    EXPECT_EQ(Delete(Variant(LONG{12})), 1);
    EXPECT_THAT(TakeCalls(), Contains("DataKeyField.Value(#0 = I4 12)"));
}

TEST_F(DeletingRecords, DefaultsDeleteOneRecordAtMost) {
    Scene().records = 5;
    EXPECT_EQ(Delete(Variant(L"SMITH")), 1);
    Scene().records = 0;
    EXPECT_EQ(Delete(Variant(L"SMITH")), 0);
}

TEST_F(DeletingRecords, RowsGoFromTheEndOfTheViewToItsStart) {
    Scene().records = 4;
    std::vector<LONG> rows;
    Scene().deletes = [&](LONG row) {
        rows.push_back(row);
        return true;
    };
    EXPECT_EQ(Delete(Variant(L"SMITH"), VARIANT_FALSE, 0), 4);
    EXPECT_THAT(rows, ElementsAre(3, 2, 1, 0));
    EXPECT_THAT(TakeCalls(), Contains("ZuEngineData.ToBoolean(False)"));
}

TEST_F(DeletingRecords, OnlyRowsThatWereDeletedCount) {
    Scene().records = 4;
    Scene().deletes = [](LONG row) { return row != 1; };
    EXPECT_EQ(Delete(Variant(L"SMITH"), VARIANT_TRUE, 0), 3);
}

TEST_F(DeletingRecords, ErrorInTheMiddleGivesZero) {
    Scene().records = 4;
    Scene().deletes = [](LONG row) {
        if (row == 3) Journal::OfThread().FailAt(2);
        return true;
    };
    EXPECT_EQ(Delete(Variant(L"SMITH"), VARIANT_TRUE, 0), 0);
    EXPECT_EQ(TakeCalls().back(), "ZuDataView.Delete(1)");
}

TEST_F(DeletingRecords, ReadOnlyViewIsNotTouched) {
    Scene().updateable = false;
    EXPECT_EQ(Delete(Variant(L"SMITH")), 0);
    EXPECT_EQ(TakeCalls().back(), "ZuDataView.Updateable()");
}

TEST_F(DeletingRecords, NoViewDeletesNothing) {
    Scene().selects = false;
    EXPECT_EQ(Delete(Variant(L"SMITH")), 0);
    Scene().opensTable = false;
    EXPECT_EQ(Delete(Variant(L"A=1")), 0);
}

TEST_F(DeletingRecords, UndeleteGoesToTheServiceWithTheResolvedNames) {
    VARIANT_BOOL done = VARIANT_FALSE;
    Bstr condition(L"A>1");
    EXPECT_EQ(functions().DbfUndelete(Variant(L"sales>orders"), condition.address(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuEngineData.DefaultTechnology()", "ZuEngineData.DatabaseService()",
                                         "ZuDatabaseService.Undelete(\"T|sales\", \"orders\", \"A>1\")"));
}

TEST_F(DeletingRecords, UndeleteWithoutAConditionPassesTheEmptyText) {
    VARIANT_BOOL done = VARIANT_FALSE;
    Bstr none;
    EXPECT_EQ(functions().DbfUndelete(Variant(L"X|d>t"), nullptr, &done), S_OK);
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.Undelete(\"X|d\", \"t\", \"\")");
    EXPECT_EQ(functions().DbfUndelete(Variant(L"X|d>t"), none.address(), &done), S_OK);
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.Undelete(\"X|d\", \"t\", \"\")");
}

TEST_F(DeletingRecords, CleanupPacksThroughTheService) {
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(functions().DbfCleanup(Variant(L"X|d>t"), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineData.DatabaseService()", "ZuDatabaseService.Pack(\"X|d\", \"t\")"));
}

TEST_F(DeletingRecords, WhatTheServiceAnswersIsTheResult) {
    Scene().answers = false;
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfCleanup(Variant(L"X|d>t"), &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    done = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfUndelete(Variant(L"X|d>t"), nullptr, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(DeletingRecords, DefinitionThatIsNoneIsFalseAndCallsNothing) {
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfCleanup(Variant(LONG{5}), &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    done = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfUndelete(Variant(LONG{5}), nullptr, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(DeletingRecords, NullResultPointersAreRefused) {
    EXPECT_EQ(functions().DbfDelete(Variant(L"X|d>t"), nullptr, VARIANT_TRUE, 1, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfUndelete(Variant(L"X|d>t"), nullptr, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfCleanup(Variant(L"X|d>t"), nullptr), E_POINTER);
}

}  // namespace zu::contract
