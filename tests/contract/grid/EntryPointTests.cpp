// DbfEdit and DbfPick up to their window: no window can be opened without a display, so the calls end there.
#include "com/SafeArray.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::Contains;

namespace {

class EntryPoints : public ContractTest {
protected:
    bool Edit(const Variant& condition = Variant::Missing()) {
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ(functions().DbfEdit(Variant(L"X|d>t"), Bstr(L"title").get(), condition, Variant::Missing(),
                                      400, Variant(LONG{600}), -1, -1, nullptr, VARIANT_FALSE, &result),
                  S_OK);
        return result != VARIANT_FALSE;
    }
    Variant Pick(const wchar_t* condition, VARIANT* returnField = nullptr) {
        Variant result(LONG{7});
        EXPECT_EQ(functions().DbfPick(Variant(L"X|d>t"), Bstr(L"title").get(), Bstr(condition).get(), 400,
                                      Variant(LONG{600}), -1, -1, nullptr, returnField, result.put()),
                  S_OK);
        return result;
    }
};

TEST_F(EntryPoints, DbfEditIsFalseForATableThatCannotBeOpened) {
    Scene().opensTable = false;
    EXPECT_FALSE(Edit());
    EXPECT_EQ(TakeCalls(), Opened("X|d", "t"));
}

TEST_F(EntryPoints, DbfEditSelectsAConditionForUpdateWithoutALimit) {
    Scene().selects = false;
    EXPECT_FALSE(Edit(Variant(L"A>1")));
    EXPECT_EQ(TakeCalls(), OpenedThen({"DataTable.Select(\"A>1\", I4 0, -1, missing)"}));
}

TEST_F(EntryPoints, DbfEditSeeksAKeyThatNeedNotBeExact) {
    Scene().selects = false;
    EXPECT_FALSE(Edit(Variant(L"SMITH")));
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, Contains("DataKeyField.Exact(#0 = False)"));
    EXPECT_EQ(calls.back(), "DataTable.Seek(<index 1>, 0, 0, -1, missing)");
}

TEST_F(EntryPoints, DbfPickNeverOpensForUpdate) {
    Scene().selects = false;
    EXPECT_EQ(Pick(L"A>1").type(), VT_EMPTY);
    EXPECT_EQ(TakeCalls(), OpenedThen({"DataTable.Select(\"A>1\", I4 0, 0, missing)"}));
    EXPECT_EQ(Pick(L"SMITH").type(), VT_EMPTY);
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, Contains("DataKeyField.Exact(#0 = True)"));
    EXPECT_EQ(calls.back(), "DataTable.Seek(<index 1>, 0, 0, 0, missing)");
}

TEST_F(EntryPoints, FailuresBeforeTheWindowAreFalseAndEmpty) {
    for (const char* call :
         {"ZuEngineData.DatabaseService", "ZuDatabaseService.OpenTable", "DataTable.Select"}) {
        Journal::OfThread().FailOn(call);
        EXPECT_FALSE(Edit(Variant(L"A>1"))) << call;
        EXPECT_EQ(Pick(L"A>1").type(), VT_EMPTY) << call;
        Journal::OfThread().Clear();
    }
}

TEST_F(EntryPoints, NullResultsAreRefused) {
    EXPECT_EQ(functions().DbfEdit(Variant(L"X|d>t"), nullptr, Variant::Missing(), Variant::Missing(), 400,
                                  Variant(LONG{600}), -1, -1, nullptr, VARIANT_FALSE, nullptr),
              E_POINTER);
    EXPECT_EQ(functions().DbfPick(Variant(L"X|d>t"), nullptr, nullptr, 400, Variant(LONG{600}), -1, -1,
                                  nullptr, nullptr, nullptr),
              E_POINTER);
}

}  // namespace
}  // namespace zu::contract
