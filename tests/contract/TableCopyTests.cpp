// DbfFromDbf, DbfToDbf, DbfFromDbfCorresponding.
#include <set>

#include "com/SafeArray.h"
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::Variant;
using fake::FieldContent;
using fake::Journal;
using fake::Scene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

std::vector<FieldContent> FieldsNamed(const std::vector<const wchar_t*>& names) {
    std::vector<FieldContent> fields;
    for (const wchar_t* name : names)
        fields.push_back({name, VT_BSTR, Variant(std::wstring(L"value of ") + name)});
    return fields;
}

Calls TextsOf(const Variant& list) {
    Calls texts;
    for (const Variant& element : com::ReadArguments(list->parray)) {
        EXPECT_EQ(element.type(), VT_BSTR);
        const std::wstring text = element.ToText().str();
        texts.emplace_back(text.begin(), text.end());
    }
    return texts;
}

}  // namespace

enum class Function { kFromDbf, kToDbf, kCorresponding };

class TableCopying : public ContractTest {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        Scene().records = 2;
        Scene().tableFields[L"s"] = FieldsNamed({L"A", L"B"});
        Scene().tableFields[L"d"] = FieldsNamed({L"A", L"B"});
    }

    bool Copy(Function function = Function::kFromDbf, bool outputs = true, LONG maxRecords = 0) {
        const Variant source(L"X|db>s");
        const Variant destination(L"X|db>d");
        const Bstr condition(L"A>1");
        const Variant none = Variant::Missing();
        VARIANT* rows = outputs ? rows_.address() : nullptr;
        VARIANT* added = outputs ? added_.address() : nullptr;
        VARIANT* failed = outputs ? failed_.address() : nullptr;
        VARIANT_BOOL result = 77;
        HRESULT code = E_FAIL;
        switch (function) {
            case Function::kFromDbf:
                code = functions().DbfFromDbf(destination, source, condition.get(), none, maxRecords, none,
                                              rows, added, failed, &result);
                break;
            case Function::kToDbf:
                code = functions().DbfToDbf(source, destination, condition.get(), none, maxRecords, rows,
                                            added, failed, &result);
                break;
            case Function::kCorresponding:
                code = functions().DbfFromDbfCorresponding(destination, source, condition.get(), none,
                                                           maxRecords, none, rows, added, failed, &result);
                break;
        }
        EXPECT_EQ(code, S_OK);
        return result == VARIANT_TRUE;
    }
    void ExpectOutputs(LONG rows, LONG added) {
        EXPECT_EQ(rows_.type(), VT_I4);
        EXPECT_EQ(rows_.ToLong(), rows);
        EXPECT_EQ(added_.type(), VT_I4);
        EXPECT_EQ(added_.ToLong(), added);
    }
    Calls Puts() {
        Calls puts;
        for (const std::string& call : TakeCalls()) {
            if (call.find(" = ") != std::string::npos && call.find("ZuDataField.Value") == 0)
                puts.push_back(call);
        }
        return puts;
    }

    Variant rows_{L"old"};
    Variant added_{L"old"};
    Variant failed_{L"old"};
};

TEST_F(TableCopying, FromDbfAppendsRecordByRecordWithFieldsFetchedOnce) {
    EXPECT_TRUE(Copy());
    EXPECT_EQ(
        TakeCalls(),
        (Opened("X|db", "s") +
         Calls{"DataTable.OpenIndex(\"\")", "DataTable.Select(\"A>1\", I4 0, 0, missing)"} +
         Opened("X|db", "d") +
         Calls{"DataTable.OpenIndex(\"\")", "DataTable.Select(Null, I4 1, 0, missing)", "ZuDataView.Fields()",
               "ZuDataFields.Count()", "ZuDataView.Fields()", "ZuDataFields.Count()",
               "ZuDataView.MoveFirst(0)",
               // first row
               "ZuDataView.Eof(0)", "ZuDataView.AddNew(missing)", "ZuDataFields.Item(I4 0)",
               "ZuDataFields.Item(I4 0)", "ZuDataFields.Item(I4 1)", "ZuDataFields.Item(I4 1)",
               "ZuDataField.Value()", "ZuDataField.Value(\"A\" = \"value of A\")", "ZuDataField.Value()",
               "ZuDataField.Value(\"B\" = \"value of B\")", "ZuDataView.Update()", "ZuDataView.MoveNext(-1)",
               // second row
               "ZuDataView.Eof(0)", "ZuDataView.AddNew(missing)", "ZuDataField.Value()",
               "ZuDataField.Value(\"A\" = \"value of A\")", "ZuDataField.Value()",
               "ZuDataField.Value(\"B\" = \"value of B\")", "ZuDataView.Update()", "ZuDataView.MoveNext(-1)",
               "ZuDataView.Eof(0)"}));
    ExpectOutputs(2, 2);
    EXPECT_EQ(failed_.type(), VT_EMPTY);
}

TEST_F(TableCopying, ToDbfMakesTheDestinationFromTheSourceAndItsIndex) {
    Scene().records = 0;
    Scene().keyFields = 2;
    EXPECT_TRUE(Copy(Function::kToDbf));
    EXPECT_EQ(TakeCalls(),
              (Opened("X|db", "s") +
               Calls{"DataTable.OpenIndex(\"\")", "DataTable.Select(\"A>1\", I4 0, 0, missing)",
                     "ZuEngineData.DatabaseService()", "ZuDatabaseService.DropTable(\"X|db\", \"d\")",
                     "DataTable.CurrentIndex(0)", "ZuEngineData.DatabaseService()",
                     "ZuDatabaseService.NewFieldList()", "DataIndex.KeyFields()", "DataKeyFields.Count()",
                     "DataKeyFields.Item(I4 0)", "DataKeyField.Name()", "DataKeyField.Descending()",
                     "DataFieldList.Add(\"K0\", False)", "DataKeyFields.Item(I4 1)", "DataKeyField.Name()",
                     "DataKeyField.Descending()", "DataFieldList.Add(\"K1\", True)",
                     "ZuEngineData.DatabaseService()",
                     "ZuDatabaseService.CreateTable(\"X|db\", \"d\", <view 1>, <field list 1>)"} +
               Opened("X|db", "d") +
               Calls{"DataTable.OpenIndex(\"\")", "DataTable.Select(Null, I4 1, 0, missing)",
                     "ZuDataView.Fields()", "ZuDataFields.Count()", "ZuDataView.Fields()",
                     "ZuDataFields.Count()", "ZuDataView.MoveFirst(0)", "ZuDataView.Eof(0)"}));
    ExpectOutputs(0, 0);
}

TEST_F(TableCopying, ToDbfOfASourceWithoutAnIndexMakesNone) {
    Scene().opensIndex = false;
    EXPECT_TRUE(Copy(Function::kToDbf));
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, Contains("ZuDatabaseService.CreateTable(\"X|db\", \"d\", <view 1>, Nothing)"));
    EXPECT_THAT(calls, Not(Contains("DataTable.CurrentIndex(0)")));
    EXPECT_THAT(calls, Not(Contains("ZuDatabaseService.NewFieldList()")));
    ExpectOutputs(2, 2);
}

TEST_F(TableCopying, ToDbfEndsWhenTheDestinationIsNotMade) {
    Scene().answers = false;  // DropTable's answer counts for nothing, CreateTable's does
    EXPECT_FALSE(Copy(Function::kToDbf));
    EXPECT_THAT(TakeCalls().back(), StartsWith("ZuDatabaseService.CreateTable"));
    ExpectOutputs(0, 0);
    EXPECT_EQ(failed_.type(), VT_EMPTY);
}

TEST_F(TableCopying, CorrespondingMatchesFieldsByName) {
    Scene().records = 1;
    Scene().tableFields[L"s"] = FieldsNamed({L"ONLY SOURCE", L"B", L"A"});
    Scene().tableFields[L"d"] = FieldsNamed({L"A", L"B", L"ONLY DESTINATION"});
    EXPECT_TRUE(Copy(Function::kCorresponding));
    EXPECT_THAT(Puts(), ElementsAre("ZuDataField.Value(\"B\" = \"value of B\")",
                                    "ZuDataField.Value(\"A\" = \"value of A\")"));
    ExpectOutputs(1, 1);
}

TEST_F(TableCopying, CorrespondingLooksForANamesakeWithEachSourceFieldsName) {
    Scene().records = 1;
    EXPECT_TRUE(Copy(Function::kCorresponding));
    EXPECT_THAT(TakeCalls(), ::testing::IsSupersetOf({"ZuDataField.Name()", "ZuDataFields.Item(\"A\")",
                                                      "ZuDataFields.Item(\"B\")"}));
}

TEST_F(TableCopying, CorrespondingRowWithoutAnyNamesakeHasFailedAndIsNotCommitted) {
    Scene().tableFields[L"s"] = FieldsNamed({L"C", L"D"});
    EXPECT_TRUE(Copy(Function::kCorresponding));
    EXPECT_THAT(TakeCalls(), Not(Contains("ZuDataView.Update()")));
    ExpectOutputs(2, 0);
    EXPECT_THAT(TextsOf(failed_), ElementsAre("1", "2"));
}

TEST_F(TableCopying, CorrespondingPassesOverAValueThatIsRefused) {
    Scene().takesValue = [](const std::wstring& field, const VARIANT&) {
        return field == L"A" ? DISP_E_OVERFLOW : S_OK;
    };
    EXPECT_TRUE(Copy(Function::kCorresponding));
    ExpectOutputs(2, 2);
    EXPECT_THAT(TakeCalls(), Not(Contains(StartsWith("ZuEngineMessages.Trace"))));
}

TEST_F(TableCopying, CorrespondingRowWhoseEveryValueIsRefusedHasFailed) {
    Scene().takesValue = [](const std::wstring&, const VARIANT&) { return DISP_E_OVERFLOW; };
    EXPECT_TRUE(Copy(Function::kCorresponding));
    ExpectOutputs(2, 0);
    EXPECT_THAT(TextsOf(failed_), ElementsAre("1", "2"));
}

TEST_F(TableCopying, SmallerFieldCountDecidesHowManyFieldsAreCopied) {
    Scene().records = 1;
    Scene().tableFields[L"s"] = FieldsNamed({L"A", L"B", L"C"});
    Scene().tableFields[L"d"] = FieldsNamed({L"V", L"W", L"X", L"Y", L"Z"});
    EXPECT_TRUE(Copy());
    EXPECT_THAT(Puts(), ElementsAre("ZuDataField.Value(\"V\" = \"value of A\")",
                                    "ZuDataField.Value(\"W\" = \"value of B\")",
                                    "ZuDataField.Value(\"X\" = \"value of C\")"));
    std::swap(Scene().tableFields[L"s"], Scene().tableFields[L"d"]);
    EXPECT_TRUE(Copy());
    EXPECT_THAT(Puts(), ElementsAre("ZuDataField.Value(\"A\" = \"value of V\")",
                                    "ZuDataField.Value(\"B\" = \"value of W\")",
                                    "ZuDataField.Value(\"C\" = \"value of X\")"));
}

TEST_F(TableCopying, MaxRecordsOfTwoCopiesTwoOfTenRows) {
    Scene().records = 10;
    EXPECT_TRUE(Copy(Function::kFromDbf, true, 2));
    ExpectOutputs(2, 2);
    EXPECT_THAT(TakeCalls(), Contains("DataTable.Select(\"A>1\", I4 2, 0, missing)"));
}

TEST_F(TableCopying, FieldNamesGoToTheirSelections) {
    const Variant sourceFields = Array({L"A"});
    const Variant destinationFields(L"B");
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(functions().DbfFromDbf(Variant(L"X|db>d"), Variant(L"X|db>s"), nullptr, sourceFields, 0,
                                     destinationFields, nullptr, nullptr, nullptr, &result),
              S_OK);
    EXPECT_THAT(TakeCalls(), ::testing::IsSupersetOf({"DataTable.Select(\"\", I4 0, 0, [0..0: \"A\"])",
                                                      "DataTable.Select(Null, I4 1, 0, \"B\")"}));
    EXPECT_EQ(functions().DbfToDbf(Variant(L"X|db>s"), Variant(L"X|db>d"), nullptr, sourceFields, 0, nullptr,
                                   nullptr, nullptr, &result),
              S_OK);
    EXPECT_THAT(TakeCalls(), ::testing::IsSupersetOf({"DataTable.Select(\"\", I4 0, 0, [0..0: \"A\"])",
                                                      "DataTable.Select(Null, I4 1, 0, missing)"}));
}

TEST_F(TableCopying, FailedRowsAreListedByTheirNumbers) {
    Scene().records = 5;
    Scene().addsNew = [](int row) { return row != 2; };
    Scene().updates = [](int row) { return row != 4; };  // the fifth row's, as the second made none
    EXPECT_TRUE(Copy());
    ExpectOutputs(5, 3);
    EXPECT_THAT(TextsOf(failed_), ElementsAre("2", "5"));
    EXPECT_EQ(failed_.type(), VT_ARRAY | VT_VARIANT);
}

TEST_F(TableCopying, OmittedOutputsChangeNothingOfTheResult) {
    Scene().updates = [](int) { return false; };
    EXPECT_TRUE(Copy(Function::kFromDbf, false));
    const Variant missing = Variant::Missing();
    VARIANT rows = missing.get();
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(functions().DbfFromDbf(Variant(L"X|db>d"), Variant(L"X|db>s"), nullptr, missing, 0, missing,
                                     &rows, &rows, &rows, &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_TRUE(com::IsMissing(rows)) << "what was not supplied is not written";
}

TEST_F(TableCopying, OutputsReachVariablesThroughReferences) {
    Variant variable;
    VARIANT rows = ReferenceTo(variable);
    LONG number = 0;
    VARIANT added{};
    added.vt = VT_BYREF | VT_I4;
    added.plVal = &number;
    SHORT small = 7;
    VARIANT failed{};
    failed.vt = VT_BYREF | VT_I2;
    failed.piVal = &small;
    const Variant missing = Variant::Missing();
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(functions().DbfFromDbf(Variant(L"X|db>d"), Variant(L"X|db>s"), nullptr, missing, 0, missing,
                                     &rows, &added, &failed, &result),
              S_OK);
    EXPECT_EQ(variable.ToLong(), 2);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(small, 0) << "Empty as a number";
}

TEST_F(TableCopying, SourceThatCannotBeOpenedLeavesZeroCounts) {
    for (const Function function : {Function::kFromDbf, Function::kToDbf, Function::kCorresponding}) {
        Scene().unopenable = L"s";
        EXPECT_FALSE(Copy(function));
        ExpectOutputs(0, 0);
        EXPECT_EQ(failed_.type(), VT_EMPTY);
        EXPECT_EQ(TakeCalls(), Opened("X|db", "s"));
    }
}

TEST_F(TableCopying, DestinationThatCannotBeOpenedLeavesZeroCounts) {
    for (const Function function : {Function::kFromDbf, Function::kToDbf, Function::kCorresponding}) {
        Scene().unopenable = L"d";
        EXPECT_FALSE(Copy(function));
        ExpectOutputs(0, 0);
        EXPECT_THAT(TakeCalls(), Not(Contains(StartsWith("ZuEngineMessages"))));
    }
}

TEST_F(TableCopying, SourceWithoutAViewLeavesZeroCounts) {
    Scene().selects = false;
    EXPECT_FALSE(Copy());
    ExpectOutputs(0, 0);
    EXPECT_THAT(TakeCalls().back(), StartsWith("DataTable.Select"));
}

TEST_F(TableCopying, ErrorIsLoggedWithTheFunctionsNameAndEndsTheCopyWithTheCountsReached) {
    const std::pair<Function, const char*> names[] = {{Function::kFromDbf, "DbfFromDbf"},
                                                      {Function::kToDbf, "DbfToDbf"},
                                                      {Function::kCorresponding, "DbfFromDbfCorresponding"}};
    for (const auto& [function, name] : names) {
        Scene().records = 5;
        Scene().addsNew = [](int row) {
            if (row == 3) Journal::OfThread().FailOn("ZuDataView.Update", DISP_E_OVERFLOW);
            return row != 1;
        };
        EXPECT_FALSE(Copy(function));
        ExpectOutputs(3, 1);
        EXPECT_THAT(TextsOf(failed_), ElementsAre("1"));
        const Calls calls = TakeCalls();
        EXPECT_EQ(calls.back(),
                  std::string("ZuEngineMessages.Trace(\"6 - the fake engine failed as it was told in ") +
                      name + "\")");
    }
}

TEST_F(TableCopying, ErrorsOfARowEndTheCopyByPosition) {
    Scene().records = 3;
    Scene().takesValue = [](const std::wstring&, const VARIANT&) { return DISP_E_TYPEMISMATCH; };
    EXPECT_FALSE(Copy());
    ExpectOutputs(1, 0);
    EXPECT_EQ(TakeCalls().back(), "ZuEngineMessages.Trace(\"13 - Type mismatch in DbfFromDbf\")");
}

TEST_F(TableCopying, ErrorNumbersAreThoseThatScriptsKnow) {
    const std::pair<HRESULT, const char*> numbers[] = {
        {DISP_E_TYPEMISMATCH, "13"}, {DISP_E_OVERFLOW, "6"},
        {DISP_E_BADINDEX, "9"},      {static_cast<HRESULT>(0x800A01C9), "457"},
        {com::kObjectNotSet, "91"},  {E_OUTOFMEMORY, "7"},
        {E_FAIL, "-2147467259"},     {static_cast<HRESULT>(0x80041017), "-2147217385"}};
    for (const auto& [code, number] : numbers) {
        Journal::OfThread().FailOn("ZuDataFields.Count", code);
        EXPECT_FALSE(Copy());
        EXPECT_THAT(TakeCalls().back(), HasSubstr(std::string("Trace(\"") + number + " - "));
    }
}

TEST_F(TableCopying, FailingLogIsBorneInSilence) {
    Journal::OfThread().FailOn("ZuDataView.Update");
    Journal::OfThread().FailOn("ZuEngineMessages.Trace");
    EXPECT_FALSE(Copy());
    ExpectOutputs(1, 0);
}

TEST_F(TableCopying, NullResultPointersAreRefusedAndNothingIsCalled) {
    const Variant table(L"X|d>t");
    const Variant none = Variant::Missing();
    EXPECT_EQ(
        functions().DbfFromDbf(table, table, nullptr, none, 0, none, nullptr, nullptr, nullptr, nullptr),
        E_POINTER);
    EXPECT_EQ(functions().DbfToDbf(table, table, nullptr, none, 0, nullptr, nullptr, nullptr, nullptr),
              E_POINTER);
    EXPECT_EQ(functions().DbfFromDbfCorresponding(table, table, nullptr, none, 0, none, nullptr, nullptr,
                                                  nullptr, nullptr),
              E_POINTER);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

}  // namespace zu::contract
