#include "host/service/RecordVariable.h"

#include "ServiceTest.h"
#include "com/ComError.h"

namespace zu::test {
namespace {

class RecordVariableTest : public ServiceTest {
protected:
    static com::ComPtr<ZuRecordVariable> Uninitialised() {
        return com::ComPtr<ZuRecordVariable>::Adopt(com::MakeObject<host::RecordVariable>().detach());
    }
    static com::ComPtr<ZuRecordVariable> People(LONG records = 1) {
        com::ComPtr<IDispatch> layout;
        EXPECT_EQ(Open()->Layout(layout.put()), S_OK);
        com::ComPtr<ZuRecordVariable> variable = Uninitialised();
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(variable->Initialise(layout.get(), records, &done), S_OK);
        EXPECT_EQ(done, VARIANT_TRUE);
        return variable;
    }
    static HRESULT Put(ZuDataView& view, std::wstring_view field, const com::Variant& value) {
        com::ComPtr<ZuDataField> found;
        view.get_Item(Text(field), found.put());
        return found->put_Value(value);
    }
};

TEST_F(RecordVariableTest, HasTheFieldsOfTheLayoutAndOneRecordOfNulls) {
    const auto view = People().as<ZuDataView>();
    LONG count = 0;
    view->get_RecordCount(0, &count);
    EXPECT_EQ(count, 1);
    VARIANT_BOOL updateable = VARIANT_FALSE;
    view->get_Updateable(&updateable);
    EXPECT_EQ(updateable, VARIANT_TRUE);
    for (const wchar_t* name : {L"NAME", L"AGE", L"PAY", L"BORN", L"ACTIVE"})
        EXPECT_EQ(Value(*view, Text(name)).type(), VT_NULL) << name;
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"PAY"), field.put());
    LONG number = 0;
    field->get_Decimals(&number);
    EXPECT_EQ(number, 2);
    field->get_Size(&number);
    EXPECT_EQ(number, 10);
}

TEST_F(RecordVariableTest, KeepsWhatIsPutInTheTypeOfTheField) {
    const auto view = People().as<ZuDataView>();
    EXPECT_EQ(Put(*view, L"NAME", Text(L"Frida  ")), S_OK);
    EXPECT_EQ(Put(*view, L"AGE", Text(L"33")), S_OK);
    EXPECT_EQ(Put(*view, L"PAY", com::Variant(12.345)), S_OK);
    EXPECT_EQ(Put(*view, L"BORN", Text(L"1999-12-31")), S_OK);
    EXPECT_EQ(Put(*view, L"ACTIVE", Text(L"yes")), S_OK);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Frida");
    EXPECT_EQ(Value(*view, Text(L"AGE")).type(), VT_DECIMAL);
    EXPECT_EQ(Value(*view, Text(L"AGE")).ToLong(), 33);
    EXPECT_EQ(Value(*view, Text(L"PAY")).ToText().view(), L"12.35");
    EXPECT_EQ(Value(*view, Text(L"BORN")).type(), VT_DATE);
    EXPECT_EQ(Value(*view, Text(L"ACTIVE")).type(), VT_BOOL);
    VARIANT_BOOL saved = VARIANT_FALSE;
    EXPECT_EQ(view->Update(&saved), S_OK);
    EXPECT_EQ(saved, VARIANT_TRUE);
}

TEST_F(RecordVariableTest, RefusesWhatDoesNotFitAndKeepsTheOldValue) {
    const auto view = People().as<ZuDataView>();
    Put(*view, L"AGE", Number(5));
    EXPECT_TRUE(FAILED(Put(*view, L"AGE", Number(1000))));
    EXPECT_NE(ErrorText().find(L"AGE"), std::wstring::npos);
    EXPECT_TRUE(FAILED(Put(*view, L"AGE", Text(L"old"))));
    EXPECT_TRUE(FAILED(Put(*view, L"NAME", Text(L"a name too long"))));
    EXPECT_EQ(Value(*view, Text(L"AGE")).ToLong(), 5);
}

TEST_F(RecordVariableTest, ResetTakesTheValuesAway) {
    const auto variable = People();
    const auto view = variable.as<ZuDataView>();
    Put(*view, L"AGE", Number(5));
    Put(*view, L"##DELETED", com::Variant(true));
    view->MoveNext(-1);
    EXPECT_EQ(variable->Reset(), S_OK);
    EXPECT_EQ(Value(*view, Text(L"AGE")).type(), VT_NULL);
    EXPECT_EQ(Value(*view, Text(L"##DELETED")).get().boolVal, VARIANT_FALSE);
}

TEST_F(RecordVariableTest, HasNoRecordNumberAndTakesNoFurtherRecords) {
    const auto view = People().as<ZuDataView>();
    EXPECT_EQ(Value(*view, Text(L"##RECNO")).ToLong(), 0);
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(view->AddNew(nullptr, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(RecordVariableTest, IsAnEmptyViewUntilItIsInitialised) {
    const auto variable = Uninitialised();
    VARIANT_BOOL initialised = VARIANT_TRUE;
    variable->get_Initialised(&initialised);
    EXPECT_EQ(initialised, VARIANT_FALSE);
    EXPECT_EQ(variable->Reset(), S_OK);
    LONG records = -1;
    variable->get_Records(&records);
    EXPECT_EQ(records, 0);
}

TEST_F(RecordVariableTest, RefusesALayoutThatIsNoView) {
    const auto variable = Uninitialised();
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(variable->Initialise(nullptr, 1, &done), com::kObjectNotSet);
    EXPECT_EQ(variable->Initialise(Open().get(), 1, &done), com::kTypeMismatch);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(RecordVariableTest, RefusesANumberOfRecordsThatMakesNoSense) {
    com::ComPtr<IDispatch> layout;
    Open()->Layout(layout.put());
    for (const LONG records : {0L, -1L, 10001L}) {
        VARIANT_BOOL done = VARIANT_TRUE;
        EXPECT_EQ(Uninitialised()->Initialise(layout.get(), records, &done), S_OK);
        EXPECT_EQ(done, VARIANT_FALSE) << records;
    }
}

TEST_F(RecordVariableTest, TakesItsLayoutFromAnotherRecordVariableToo) {
    const auto first = People(3);
    const auto second = Uninitialised();
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(second->Initialise(first.as<ZuDataView>().get(), 1, &done), S_OK);
    LONG records = 0;
    first->get_Records(&records);
    EXPECT_EQ(records, 3);
    second->get_Records(&records);
    EXPECT_EQ(records, 1);
}

TEST_F(RecordVariableTest, AssignsValuesOfEquallyNamedFields) {
    const auto variable = People();
    const auto source = Select(*Open(), Text(L""), com::Variant::Missing(), 0, Text(L"pay,name"));
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(variable->Assign(source.get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    com::Variant value;
    variable->get_FieldValue(Text(L"NAME"), value.put());
    EXPECT_EQ(value.ToText().view(), L"Anna");
    variable->get_FieldValue(Text(L"AGE"), value.put());
    EXPECT_EQ(value.type(), VT_NULL);
}

TEST_F(RecordVariableTest, IsOneObjectUnderAllItsInterfaces) {
    const auto variable = People();
    EXPECT_EQ(variable.as<IUnknown>().get(), variable.as<ZuDataView>().as<IUnknown>().get());
    EXPECT_EQ(variable.as<ZuDataView>().as<ZuRecordVariable>().get(), variable.get());
}

TEST_F(RecordVariableTest, ScriptsReadAndWriteItByName) {
    const LateBound variable(People().get());
    variable.Put(L"Item", Text(L"x"), {Text(L"NAME")});
    EXPECT_EQ(variable.result(), S_OK) << com::Bstr(variable.error()).get();
    EXPECT_EQ(LateBound(variable.Default({Text(L"NAME")})).Default().ToText().view(), L"x");
    LateBound(variable.Default({Text(L"AGE")})).Put(L"Value", Number(7));
    EXPECT_EQ(LateBound(variable.Default({Text(L"AGE")})).Default().type(), VT_R8);
    variable.Get(L"Reset");
    EXPECT_EQ(LateBound(variable.Default({Text(L"NAME")})).Default().type(), VT_NULL);
}

}  // namespace
}  // namespace zu::test
