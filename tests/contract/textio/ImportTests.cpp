// DbfFromDel, DbfFromFix, DbfFromFile.
#include "tests/contract/fake/FakeParser.h"
#include "tests/contract/textio/TextTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Import : public TextTest {
protected:
    void SetUp() override {
        TextTest::SetUp();
        Scene().records = 0;
        Scene().fields = {{L"A", VT_I4, Variant(), 11, 0}, {L"B", VT_BSTR, Variant(), 3, 0}};
    }

    /// The values that fields were given.
    Calls Puts() {
        Calls puts;
        for (const std::string& call : TakeCallsWith({" = "})) {
            if (call.rfind("ZuDataField.Value(", 0) == 0) puts.push_back(call.substr(18, call.size() - 19));
        }
        return puts;
    }
};

TEST_F(Import, AddsARecordForEachLine) {
    Put("1,\"x\"\r\n2,y\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 2, I4 2, Empty");
    EXPECT_THAT(Puts(), ElementsAre("\"A\" = I4 1", "\"B\" = \"x\"", "\"A\" = I4 2", "\"B\" = \"y\""));
}

TEST_F(Import, MakesTheseCallsAndNoOthers) {
    Put("7,x\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.OpenIndex(\"\")", "DataTable.Select(Null, I4 1, 0, missing)",
                          "ZuDataView.Fields()", "ZuDataFields.Count()", "ZuDataFields.Item(I4 0)",
                          "ZuDataField.Type()", "ZuDataField.Size()", "ZuDataFields.Item(I4 1)",
                          "ZuDataField.Type()", "ZuDataField.Size()", "ZuDataView.AddNew(missing)",
                          "ZuDataField.Value(\"A\" = I4 7)", "ZuDataField.Value(\"B\" = \"x\")",
                          "ZuDataView.Update()"}));
}

TEST_F(Import, FetchesTheFieldsOnceHoweverManyLinesThereAre) {
    std::string lines;
    for (int i = 0; i < 50; ++i)
        lines += "1,x\r\n";
    Put(lines);
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(TakeCallsWith({"ZuDataFields."}).size(), 3U);
}

TEST_F(Import, PassesOverEmptyLinesWithoutCountingThem) {
    Put("1,x\r\n\r\n2,x\r\n3,x\r\n\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 3, I4 3, Empty");
}

TEST_F(Import, CountsLinesOfBlanks) {
    Put("   \r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 1, I4 1, Empty");
    EXPECT_THAT(Puts(), ElementsAre("\"A\" = I4 0"));
}

TEST_F(Import, LeavesFieldsBehindAShortLineAlone) {
    Put("5\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 1, I4 1, Empty");
    EXPECT_THAT(Puts(), ElementsAre("\"A\" = I4 5"));
}

TEST_F(Import, ConvertsToTheTypeOfEachField) {
    Scene().fields = {{L"I2", VT_I2},      {L"I4", VT_I4},   {L"R4", VT_R4},   {L"R8", VT_R8},
                      {L"CY", VT_CY},      {L"DT", VT_DATE}, {L"TX", VT_BSTR}, {L"BO", VT_BOOL},
                      {L"DE", VT_DECIMAL}, {L"UI", VT_UI1},  {L"LT", 100},     {L"VA", VT_VARIANT}};
    Put("-7,42,0.5,1.5,19.99,20240131,\"a,b\",True,-1.25,200,long,other\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_THAT(Puts(), ElementsAre("\"I2\" = I2 -7", "\"I4\" = I4 42", "\"R4\" = VT4 0.5", "\"R8\" = R8 1.5",
                                    "\"CY\" = R8 19.99", "\"DT\" = VT7 01/31/2024", "\"TX\" = \"a,b\"",
                                    "\"BO\" = True", "\"DE\" = R8 -1.25", "\"UI\" = I2 200",
                                    "\"LT\" = \"long\"", "\"VA\" = \"other\""));
}

TEST_F(Import, TakesBlankNumbersForZeroAndBlankDatesForAnEmptyText) {
    Scene().fields = {{L"I2", VT_I2}, {L"R8", VT_R8}, {L"DT", VT_DATE}, {L"TX", VT_BSTR}};
    Put("  ,,  ,x\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_THAT(Puts(), ElementsAre("\"I2\" = I2 0", "\"R8\" = R8 0", "\"DT\" = \"\"", "\"TX\" = \"x\""));
}

TEST_F(Import, TakesNumbersAsAutomationReadsThem) {
    Scene().fields = {{L"I4", VT_I4}, {L"R8", VT_R8}};
    Put("\"1,234\",\"(5)\"\r\n2.5,1e3\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_THAT(Puts(),
                ElementsAre("\"I4\" = I4 1234", "\"R8\" = R8 -5", "\"I4\" = I4 2", "\"R8\" = R8 1000"));
}

TEST_F(Import, LeavesAFieldEmptyForATokenThatIsNoNumber) {
    Put("abc,x\r\n99999999999,y\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 2, I4 2, Empty");
    Calls calls = TakeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "ZuDataField.Value(\"A\" = Empty)"), 2);
    EXPECT_THAT(calls, Not(Contains(HasSubstr("Trace"))));
}

TEST_F(Import, ReportsABadDateAndGoesOnWithAnEmptyField) {
    Scene().fields = {{L"DT", VT_DATE}, {L"B", VT_BSTR}};
    Put("20240199,x\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 1, I4 1, Empty");
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls,
                Contains("ZuEngineMessages.Trace(\"13 - Type mismatch in ScanDate 20240199 [yyyymmdd]\")"));
    EXPECT_THAT(calls, Contains("ZuDataField.Value(\"DT\" = Empty)"));
}

TEST_F(Import, LetsTheEngineDecideWhatIsTrue) {
    Scene().fields = {{L"BO", VT_BOOL}};
    Put("True\r\n0\r\nperhaps\r\n");
    EXPECT_TRUE(FromFile());
    const Calls calls = TakeCallsWith({"ToBoolean", " = "});
    EXPECT_THAT(calls,
                ElementsAre("ZuEngineData.ToBoolean(\"True\")", "ZuDataField.Value(\"BO\" = True)",
                            "ZuEngineData.ToBoolean(\"0\")", "ZuDataField.Value(\"BO\" = False)",
                            "ZuEngineData.ToBoolean(\"perhaps\")", "ZuDataField.Value(\"BO\" = Empty)"));
}

TEST_F(Import, SavesOnlyRecordsThatMeetTheCondition) {
    int evaluated = 0;
    Scene().evaluates = [&](fake::FakeParser&) { return Variant(++evaluated == 2); };
    Put("1,x\r\n2,x\r\n3,x\r\n");
    EXPECT_TRUE(FromFile(nullptr, nullptr, L"  A=2 "));
    EXPECT_EQ(Outputs(), "I4 3, I4 1, Empty");
    EXPECT_THAT(TakeCalls(), Contains("ZuParser.Formula(= \"A=2\")"));
}

TEST_F(Import, ARejectedRecordIsNeitherAddedNorFailed) {
    Scene().evaluates = [](fake::FakeParser&) { return Variant(false); };
    Put("1,x\r\n2,x\r\n");
    EXPECT_TRUE(FromFile(nullptr, nullptr, L"A=9"));
    EXPECT_EQ(Outputs(), "I4 2, I4 0, Empty");
    EXPECT_THAT(TakeCallsWith({"Update", "Trace"}), IsEmpty());
}

TEST_F(Import, ABlankConditionKeepsAll) {
    Put("1,x\r\n");
    EXPECT_TRUE(FromFile(nullptr, nullptr, L"   "));
    EXPECT_EQ(Outputs(), "I4 1, I4 1, Empty");
    EXPECT_THAT(TakeCallsWith({"ZuParser"}), IsEmpty());
}

TEST_F(Import, ListsTheRowsThatTheViewRefusesAndGoesOn) {
    Scene().updates = [](int call) { return call != 2 && call != 5; };
    Put("1,x\r\n\r\n2,x\r\n3,x\r\n4,x\r\n5,x\r\n6,x\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 6, I4 4, [0..1: \"2\", \"5\"]");
    const Calls traces = TakeCallsWith({"Trace"});
    ASSERT_EQ(traces.size(), 2U);
    EXPECT_THAT(traces[0], AllOf(HasSubstr("Row 2 (line 3) of "), HasSubstr("zu-text-")));
}

TEST_F(Import, ListsTheRowForWhichThereIsNoNewRecord) {
    Scene().addsNew = [](int call) { return call != 1; };
    Put("1,x\r\n2,x\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 2, I4 1, [0..0: \"1\"]");
    EXPECT_THAT(Puts(), ElementsAre("\"A\" = I4 2", "\"B\" = \"x\""));
}

TEST_F(Import, TellsTheLogWhichFieldRefusedWhichText) {
    Scene().takesValue = [](const std::wstring& field, const VARIANT&) {
        return field == L"B" ? DISP_E_OVERFLOW : S_OK;
    };
    Put("1,toolong\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 1, I4 0, [0..0: \"1\"]");
    const Calls traces = TakeCallsWith({"Trace"});
    ASSERT_EQ(traces.size(), 1U);
    EXPECT_THAT(traces[0], AllOf(HasSubstr("Row 1 (line 1)"), HasSubstr("field B does not take"),
                                 HasSubstr("toolong"), HasSubstr("6 - Overflow")));
}

TEST_F(Import, TellsTheLogOfUnreadableValuesWhenTheRecordIsRefused) {
    Scene().updates = [](int) { return false; };
    Put("abc,x\r\n");
    EXPECT_TRUE(FromFile());
    const Calls traces = TakeCallsWith({"Trace"});
    ASSERT_EQ(traces.size(), 1U);
    EXPECT_THAT(traces[0], AllOf(HasSubstr("field A holds"), HasSubstr("abc"), HasSubstr("a whole number")));
}

TEST_F(Import, KeepsFailedRowsToItselfWhenNobodyWantsThem) {
    Scene().updates = [](int) { return false; };
    Put("1,x\r\n");
    EXPECT_TRUE(FromFile(nullptr, nullptr, nullptr, false));
    EXPECT_EQ(Outputs(), "I4 1, I4 0, \"untouched\"");
}

TEST_F(Import, TouchesNothingWithoutTheFormat) {
    Put("1,x\r\n");
    EXPECT_FALSE(FromFile(L"Unknown"));
    EXPECT_EQ(Outputs(), "\"untouched\", \"untouched\", \"untouched\"");
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(Import, AnswersCountsOfZeroWhenTheTableCannotBeOpened) {
    Scene().opensTable = false;
    Put("1,x\r\n");
    EXPECT_FALSE(FromFile());
    EXPECT_EQ(Outputs(), "I4 0, I4 0, Empty");
}

TEST_F(Import, TellsTheLogWhichFileCannotBeRead) {
    EXPECT_FALSE(FromFile());
    EXPECT_EQ(Outputs(), "I4 0, I4 0, Empty");
    const Calls traces = TakeCallsWith({"Trace"});
    ASSERT_EQ(traces.size(), 1U);
    EXPECT_THAT(traces[0], AllOf(HasSubstr("zu-text-"), HasSubstr(" in DbfFromFile\"")));
}

TEST_F(Import, TellsTheLogOfAFileThatAnotherProgramHoldsAlone) {
    Put("1,x\r\n");
    const HANDLE held =
        CreateFileW(path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(FromFile());
    EXPECT_THAT(TakeCallsWith({"Trace"}), ElementsAre(HasSubstr("zu-text-")));
    CloseHandle(held);
    EXPECT_TRUE(FromFile());
}

TEST_F(Import, GivesNoRowsForAnEmptyFile) {
    Put("");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 0, I4 0, Empty");
}

TEST_F(Import, FillsTheFieldsThatAreNamedInTheirOrder) {
    Put("1,x\r\n");
    VARIANT_BOOL result = VARIANT_FALSE;
    ASSERT_EQ(functions().DbfFromDel(Variant(L"X|d>t"), Bstr(path()).get(), nullptr, Variant(L"B,A"), nullptr,
                                     nullptr, nullptr, nullptr, &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_THAT(TakeCalls(), Contains("DataTable.Select(Null, I4 1, 0, \"B,A\")"));
}

TEST_F(Import, FromFixReadsElevenCharactersForAnIntegerOfThirtyTwoBits) {
    Scene().fields[0].size = 4;
    Put("         42abc\r\n");
    VARIANT_BOOL result = VARIANT_FALSE;
    ASSERT_EQ(functions().DbfFromFix(Variant(L"X|d>t"), Bstr(path()).get(), nullptr, Variant::Missing(),
                                     nullptr, rows_.address(), added_.address(), failed_.address(), &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_EQ(Outputs(), "I4 1, I4 1, Empty");
    EXPECT_THAT(Puts(), ElementsAre("\"A\" = I4 42", "\"B\" = \"abc\""));
}

TEST_F(Import, ReadsUnderAFormatOfTheCallersControl) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuImportFormat> format = ImportFormat(*control.get(), L"Delimited");
    ASSERT_EQ(format->put_Separator(Bstr(L";;").get()), S_OK);
    Put("1;;2;3\r\n");
    EXPECT_TRUE(FromFile(nullptr, control.get()));
    EXPECT_THAT(Puts(), ElementsAre("\"A\" = I4 1", "\"B\" = \"2;3\""));
}

TEST_F(Import, ReadsMonthNamesUnderAMaskOfItsOwn) {
    Scene().fields = {{L"DT", VT_DATE}};
    const ComPtr<_ZuDbfControl> control = NewControl();
    const ComPtr<_ZuImportFormat> format = ImportFormat(*control.get(), L"Delimited");
    ASSERT_EQ(format->put_DateFormatMask(Bstr(L"dd/mmm/yyyy").get()), S_OK);
    ASSERT_EQ(format->put_DateSeparator(Bstr(L"/").get()), S_OK);
    Put("31/Jan/2024\r\n");
    EXPECT_TRUE(FromFile(nullptr, control.get()));
    EXPECT_THAT(Puts(), ElementsAre("\"DT\" = VT7 01/31/2024"));
}

TEST_F(Import, AFaultyConditionEndsItBeforeAnyLine) {
    Journal::OfThread().FailOn("ZuParser.Formula");
    Put("1,x\r\n");
    EXPECT_FALSE(FromFile(nullptr, nullptr, L"A="));
    EXPECT_EQ(Outputs(), "I4 0, I4 0, Empty");
    EXPECT_THAT(TakeCallsWith({"Trace"}), ElementsAre(HasSubstr(" in DbfFromFile")));
}

TEST_F(Import, AnErrorInALineEndsThatLineAlone) {
    int calls = 0;
    Scene().takesValue = [&](const std::wstring&, const VARIANT&) { return ++calls == 1 ? E_FAIL : S_OK; };
    Put("1,x\r\n2,y\r\n");
    EXPECT_TRUE(FromFile());
    EXPECT_EQ(Outputs(), "I4 2, I4 1, [0..0: \"1\"]");
}

TEST_F(Import, ReadsTheSystemsCodePage) {
    if (GetACP() != 1252) GTEST_SKIP() << "another code page";
    Scene().takesValue = [](const std::wstring& field, const VARIANT& value) {
        EXPECT_TRUE(field != L"B" || com::View(value.bstrVal) == L"\u00FC\u20AC");
        return S_OK;
    };
    Put("1,\xFC\x80\r\n");
    EXPECT_TRUE(FromFile());
}

}  // namespace zu::contract
