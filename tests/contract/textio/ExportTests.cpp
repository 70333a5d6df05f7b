// DbfToDel, DbfToFix, DbfToFile.
#include "tests/contract/textio/TextTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

Variant Date(double date) {
    VARIANT value{};
    value.vt = VT_DATE;
    value.date = date;
    return Variant::Adopt(value);
}

Variant Typed(const Variant& value, VARTYPE type) {
    return com::Convert(value, type);
}

/// A table with a field of every type.
std::vector<fake::FieldContent> EveryType() {
    return {{L"I2", VT_I2, Variant(SHORT{-7}), 6, 0},
            {L"I4", VT_I4, Variant(LONG{42}), 11, 0},
            {L"R4", VT_R4, Typed(Variant(0.5), VT_R4), 20, 0},
            {L"R8", VT_R8, Variant(-2.25), 20, 0},
            {L"CY", VT_CY, Typed(Variant(19.99), VT_CY), 21, 4},
            {L"DT", VT_DATE, Date(45322.75), 8, 0},
            {L"TX", VT_BSTR, Variant(L"a\"b  "), 8, 0},
            {L"BO", VT_BOOL, Variant(true), 1, 0},
            {L"DE", VT_DECIMAL, Typed(Variant(L"-123.45"), VT_DECIMAL), 9, 2},
            {L"UI", VT_UI1, Typed(Variant(LONG{200}), VT_UI1), 3, 0},
            {L"LT", 100, Variant(L"long"), 10, 0},
            {L"VA", VT_VARIANT, Variant(L"as it is"), 2, 0}};
}

}  // namespace

class Export : public TextTest {
protected:
    void SetUp() override {
        TextTest::SetUp();
        Scene().records = 2;
        Scene().fields = {{L"A", VT_I4, Variant(LONG{1}), 11, 0}, {L"B", VT_BSTR, Variant(L"x"), 3, 0}};
    }
};

TEST_F(Export, WritesOneLineForEachRecord) {
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(Content(), "1,\"x\"\r\n1,\"x\"\r\n");
}

TEST_F(Export, MakesTheseCallsAndNoOthers) {
    Scene().records = 1;
    EXPECT_TRUE(ToFile(nullptr, nullptr, 7, Variant(L"A>0"), Variant(L"A,B")));
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.Select(\"A>0\", I4 7, 0, \"A,B\")", "ZuDataView.MoveFirst(0)",
                          "ZuDataView.Fields()", "ZuDataFields.Count()", "ZuDataFields.Item(I4 0)",
                          "ZuDataField.Name()", "ZuDataField.Type()", "ZuDataField.Size()",
                          "ZuDataFields.Item(I4 1)", "ZuDataField.Name()", "ZuDataField.Type()",
                          "ZuDataField.Size()", "ZuDataView.Eof(0)", "ZuDataField.Value()",
                          "ZuDataField.Value()", "ZuDataView.MoveNext(-1)", "ZuDataView.Eof(0)"}));
}

TEST_F(Export, FetchesTheFieldsOnceHoweverManyRecordsThereAre) {
    Scene().records = 50;
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(TakeCallsWith({"ZuDataFields."}).size(), 3U);
}

TEST_F(Export, WritesEveryTypeDelimited) {
    Scene().records = 1;
    Scene().fields = EveryType();
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(Content(), "-7,42,0.5,-2.25,19.99,20240131,\"a\"\"b\",T,-123.45,200,\"long\",as it is\r\n");
}

TEST_F(Export, WritesEveryTypeFixed) {
    Scene().records = 1;
    Scene().fields = EveryType();
    EXPECT_TRUE(ToFile(L"Fixed"));
    EXPECT_EQ(Content(),
              "    -7"
              "         42"
              "           0.5000000"
              "          -2.2500000"
              "              19.9900"
              "20240131"
              "a\"b     "
              "T"
              "  -123.45"
              "200"
              "long" +
                  std::string(251, ' ') + "as it is\r\n");
}

TEST_F(Export, TakesValuesOfOtherTypesThanTheFieldsWhereTheyCanBeConverted) {
    Scene().records = 1;
    Scene().fields = {{L"I4", VT_I4, Variant(L"12"), 11, 0},
                      {L"DE", VT_DECIMAL, Variant(1.5), 9, 2},
                      {L"TX", VT_BSTR, Variant(LONG{7}), 8, 0},
                      {L"BO", VT_BOOL, Variant(LONG{1}), 1, 0},
                      {L"R8", VT_R8, Variant(L"2.5"), 1, 0}};
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(Content(), "12,1.5,\"7\",T,2.5\r\n");
}

TEST_F(Export, WritesAnEmptyFileWhenNoRecordMatches) {
    Scene().records = 0;
    Put("old content");
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(Content(), "");
}

TEST_F(Export, ReplacesAnExistingFile) {
    Put(std::string(5000, 'x'));
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(Content(), "1,\"x\"\r\n1,\"x\"\r\n");
}

TEST_F(Export, WritesOneLineWhenOneRecordIsTheMost) {
    EXPECT_TRUE(ToFile(nullptr, nullptr, 1));
    EXPECT_EQ(Content(), "1,\"x\"\r\n");
}

TEST_F(Export, PutsAllCharactersOfASeparatorBetweenFields) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ASSERT_EQ(ExportFormat(*control.get(), L"Delimited")->put_Separator(Bstr(L"<->").get()), S_OK);
    EXPECT_TRUE(ToFile(nullptr, control.get()));
    EXPECT_EQ(Content(), "1<->\"x\"\r\n1<->\"x\"\r\n");
}

TEST_F(Export, FindsAFormatOfTheCallersControlInAnyCase) {
    const ComPtr<_ZuDbfControl> control = NewControl();
    ComPtr<_ZuExportFormats> formats;
    ASSERT_EQ(control->get_ExportFormats(formats.put()), S_OK);
    VARIANT_BOOL added = VARIANT_FALSE;
    LONG preset = 1;
    ASSERT_EQ(formats->AddFormat(Bstr(L"Tabs").address(), &preset, &added), S_OK);
    ASSERT_EQ(ExportFormat(*control.get(), L"Tabs")->put_Separator(Bstr(L"\t").get()), S_OK);
    EXPECT_TRUE(ToFile(L"tABS", control.get()));
    EXPECT_EQ(Content(), "1\t\"x\"\r\n1\t\"x\"\r\n");
    EXPECT_FALSE(ToFile(L"Tabs"));
}

TEST_F(Export, TouchesNothingWithoutTheFormat) {
    Put("old");
    EXPECT_FALSE(ToFile(L"Unknown"));
    EXPECT_EQ(Content(), "old");
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(Export, TouchesNoFileWhenTheTableCannotBeOpened) {
    Scene().opensTable = false;
    EXPECT_FALSE(ToFile());
    EXPECT_EQ(Content(), "no file");
}

TEST_F(Export, MakesNoFileWhenThereIsNoView) {
    Scene().selects = false;
    EXPECT_FALSE(ToFile());
    EXPECT_EQ(Content(), "no file");
}

TEST_F(Export, HasOneDefaultControlForAllCalls) {
    _ZuDbfControl* given = nullptr;
    VARIANT_BOOL result = VARIANT_FALSE;
    ASSERT_EQ(functions().DbfToDel(Variant(L"X|d>t"), Bstr(path()).get(), Variant::Missing(),
                                   Variant::Missing(), 0, &given, &result),
              S_OK);
    ASSERT_NE(given, nullptr) << "a caller without a control gets the default one back";
    const auto control = ComPtr<_ZuDbfControl>::Adopt(given);
    ASSERT_EQ(ExportFormat(*control.get(), L"Delimited")->put_Separator(Bstr(L";").get()), S_OK);
    EXPECT_TRUE(ToFile());
    EXPECT_EQ(Content(), "1;\"x\"\r\n1;\"x\"\r\n");
}

TEST_F(Export, ToDelAndToFixAreToFileUnderTheirFormats) {
    VARIANT_BOOL result = VARIANT_FALSE;
    ASSERT_EQ(functions().DbfToFix(Variant(L"X|d>t"), Bstr(path()).get(), Bstr(L"A=1").get(),
                                   Variant::Missing(), 1, nullptr, &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_EQ(Content(), "          1x  \r\n");
    EXPECT_THAT(TakeCalls(), Contains("DataTable.Select(\"A=1\", I4 1, 0, missing)"));
    ASSERT_EQ(functions().DbfToDel(Variant(L"X|d>t"), Bstr(path()).get(), Variant(L"A=1"), Variant::Missing(),
                                   1, nullptr, &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_EQ(Content(), "1,\"x\"\r\n");
    EXPECT_THAT(TakeCalls(), Contains("DataTable.Select(\"A=1\", I4 1, 0, missing)"));
}

TEST_F(Export, KeepsWhatWasWrittenBeforeAValueThatCannotBeWritten) {
    Scene().fields[1].value = Variant::Null();
    EXPECT_FALSE(ToFile());
    EXPECT_EQ(Content(), "1");
    const Calls traces = TakeCallsWith({"Trace"});
    ASSERT_EQ(traces.size(), 1U);
    EXPECT_THAT(traces[0], HasSubstr("Record 1"));
    EXPECT_THAT(traces[0], HasSubstr("Field B"));
    EXPECT_THAT(traces[0], HasSubstr("in DbfToFile"));
}

TEST_F(Export, KeepsTheLinesBeforeAFailureOfTheView) {
    // Both fields of the first record and the first one of the second are read.
    Journal::OfThread().Clear();
    EXPECT_TRUE(ToFile());
    int value = 0;
    int call = 0;
    for (const std::string& text : Journal::OfThread().calls()) {
        ++call;
        if (text == "ZuDataField.Value()" && ++value == 4) break;
    }
    Journal::OfThread().Clear();
    Journal::OfThread().FailAt(call);
    EXPECT_FALSE(ToFile());
    EXPECT_EQ(Content(), "1,\"x\"\r\n1");
}

TEST_F(Export, WritesNullOfEveryTypeAsItsPartSays) {
    for (const fake::FieldContent& field : EveryType()) {
        Scene().records = 1;
        Scene().fields = {field};
        Scene().fields[0].value = Variant::Null();
        const bool writes = field.type == VT_BOOL || field.type == VT_DATE;
        EXPECT_EQ(ToFile(), writes) << field.type;
        if (writes) {
            EXPECT_EQ(Content(), field.type == VT_BOOL ? "F\r\n" : "\r\n");
        }
    }
}

TEST_F(Export, TellsTheLogWhichFileCannotBeWritten) {
    Put("mine");
    const HANDLE held =
        CreateFileW(path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(ToFile());
    CloseHandle(held);
    EXPECT_EQ(Content(), "mine");
    const Calls traces = TakeCallsWith({"Trace"});
    ASSERT_EQ(traces.size(), 1U);
    EXPECT_THAT(traces[0], HasSubstr("zu-text-"));
}

TEST_F(Export, RefusesAFolderThatIsNotThere) {
    VARIANT_BOOL result = 77;
    EXPECT_EQ(functions().DbfToDel(Variant(L"X|d>t"), Bstr(path() + L"\\none\\out.txt").get(),
                                   Variant::Missing(), Variant::Missing(), 0, nullptr, &result),
              S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(TakeCallsWith({"Trace"}).size(), 1U);
}

TEST_F(Export, WritesTheSystemsCodePageAndTellsTheLogOfMissingCharacters) {
    Scene().records = 1;
    Scene().fields = {{L"T", VT_BSTR, Variant(L"\u00FC\u4E2D"), 5, 0}};
    EXPECT_TRUE(ToFile());
    if (GetACP() == 1252) {
        EXPECT_EQ(Content(), "\"\xFC?\"\r\n");
    }
    EXPECT_EQ(TakeCallsWith({"Trace"}).size(), 1U);
}

TEST_F(Export, ClosesTheFile) {
    EXPECT_TRUE(ToFile());
    EXPECT_TRUE(DeleteFileW(path().c_str()));
    Scene().fields[0].value = Variant::Null();
    EXPECT_FALSE(ToFile());
    EXPECT_TRUE(DeleteFileW(path().c_str()));
}

}  // namespace zu::contract
