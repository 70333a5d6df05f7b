#include "ServiceTest.h"
#include "com/ComError.h"

namespace zu::test {
namespace {

class DataViewTest : public ServiceTest {
protected:
    static LONG Position(ZuDataView& view) {
        LONG position = -9;
        EXPECT_EQ(view.get_AbsolutePosition(0, &position), S_OK);
        return position;
    }
    static bool Eof(ZuDataView& view) {
        VARIANT_BOOL eof = 1;
        EXPECT_EQ(view.get_Eof(0, &eof), S_OK);
        return eof == VARIANT_TRUE;
    }
    static bool Bof(ZuDataView& view) {
        VARIANT_BOOL bof = 1;
        EXPECT_EQ(view.get_Bof(0, &bof), S_OK);
        return bof == VARIANT_TRUE;
    }
    static LONG Count(ZuDataView& view) {
        LONG count = -9;
        EXPECT_EQ(view.get_RecordCount(0, &count), S_OK);
        return count;
    }
};

TEST_F(DataViewTest, IsWalkedFromTheFirstRecordToTheEnd) {
    const auto view = Everything();
    EXPECT_EQ(Count(*view), 4);
    std::wstring names;
    for (view->MoveFirst(0); !Eof(*view); view->MoveNext(-1))
        names += TextValue(*view, L"NAME").substr(0, 1);
    EXPECT_EQ(names, L"ABDE");
    EXPECT_EQ(Position(*view), 4);
}

TEST_F(DataViewTest, StaysAtTheEndWhenItIsMovedOn) {
    const auto view = Everything();
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(view->MoveNext(-1), S_OK);
    EXPECT_TRUE(Eof(*view));
    EXPECT_EQ(Position(*view), 4);
}

TEST_F(DataViewTest, MovesSeveralRecordsAtOnce) {
    const auto view = Everything();
    view->MoveNext(2);
    EXPECT_EQ(Position(*view), 2);
    view->MoveNext(0);
    EXPECT_EQ(Position(*view), 2);
    view->MovePrevious(1);
    EXPECT_EQ(Position(*view), 1);
    view->MoveNext(1000000);
    EXPECT_EQ(Position(*view), 4);
    EXPECT_EQ(view->MoveNext(-2), E_INVALIDARG);
    EXPECT_EQ(view->MovePrevious(-5), E_INVALIDARG);
}

TEST_F(DataViewTest, GoesBackToBeforeTheFirstRecord) {
    const auto view = Everything();
    view->MoveLast(0);
    EXPECT_EQ(Position(*view), 3);
    EXPECT_FALSE(Bof(*view));
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(view->MovePrevious(-1), S_OK);
    EXPECT_TRUE(Bof(*view));
    EXPECT_EQ(Position(*view), -1);
    view->MoveNext(-1);
    EXPECT_EQ(Position(*view), 0);
}

TEST_F(DataViewTest, AnEmptyViewStandsAtZeroAndAtBothEnds) {
    const auto view = Select(*Open(), com::Variant::Null());
    EXPECT_EQ(Count(*view), 0);
    EXPECT_EQ(Position(*view), 0);
    EXPECT_TRUE(Eof(*view));
    EXPECT_TRUE(Bof(*view));
    view->MoveLast(0);
    view->MovePrevious(-1);
    EXPECT_EQ(Position(*view), 0);
}

TEST_F(DataViewTest, MoveGoesToARecordAndRefusesOthers) {
    const auto view = Everything();
    EXPECT_EQ(view->Move(2, 0), S_OK);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Dora");
    EXPECT_EQ(view->Move(4, 0), E_INVALIDARG);
    EXPECT_EQ(ErrorText(), L"Table PEOPLE: there is no record 4 in this view of 4, counted from 0");
    EXPECT_EQ(view->Move(-1, 0), E_INVALIDARG);
    EXPECT_EQ(Position(*view), 2);
}

TEST_F(DataViewTest, CellValuesAreReadWithoutMoving) {
    const auto view = Everything();
    com::Variant value;
    EXPECT_EQ(view->get_CellValue(3, 0, value.put()), S_OK);
    EXPECT_EQ(value.ToText().view(), L"Emil");
    EXPECT_EQ(Position(*view), 0);
    EXPECT_EQ(view->get_CellValue(4, 0, value.put()), E_INVALIDARG);
    EXPECT_TRUE(FAILED(view->get_CellValue(0, 5, value.put())));
    EXPECT_EQ(ErrorText(), L"Table PEOPLE has no field 5, there are 5 counted from 0");
    EXPECT_TRUE(FAILED(view->get_CellValue(0, -1, value.put())));
}

TEST_F(DataViewTest, FieldsAreFoundByNameInAnyCaseAndByNumber) {
    const auto view = Everything();
    EXPECT_EQ(Value(*view, Text(L" name ")).ToText().view(), L"Anna");
    EXPECT_EQ(Value(*view, Number(1)).ToDouble(), 31.0);
    EXPECT_EQ(Value(*view, com::Variant(4.0)).type(), VT_BOOL);
    com::ComPtr<ZuDataField> field;
    EXPECT_TRUE(FAILED(view->get_Item(Text(L"COLOUR"), field.put())));
    EXPECT_EQ(ErrorText(), L"Table PEOPLE has no field \"COLOUR\"");
    EXPECT_EQ(LastError().text, L"Table PEOPLE has no field \"COLOUR\"");
    EXPECT_EQ(view->get_Item(com::Variant(true), field.put()), com::kTypeMismatch);
    EXPECT_TRUE(FAILED(view->get_Item(com::Variant(1.5), field.put())));
}

TEST_F(DataViewTest, FieldsDescribeThemselves) {
    const auto view = Everything();
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"PAY"), field.put());
    com::Bstr text;
    LONG number = -1;
    EXPECT_EQ(field->get_Name(text.put()), S_OK);
    EXPECT_EQ(text.view(), L"PAY");
    field->get_Index(&number);
    EXPECT_EQ(number, 2);
    field->get_Type(&number);
    EXPECT_EQ(number, 14);
    field->get_Size(&number);
    EXPECT_EQ(number, 10);
    field->get_Decimals(&number);
    EXPECT_EQ(number, 2);
    field->get_DisplayWidth(&number);
    EXPECT_EQ(number, 10);
    field->get_Alignment(&number);
    EXPECT_EQ(number, 1);
    field->get_TypeName(text.put());
    EXPECT_EQ(text.view(), L"Decimal");
    field->get_Text(text.put());
    EXPECT_EQ(text.view(), L"1234.5");
    VARIANT_BOOL flag = VARIANT_FALSE;
    field->get_ReadOnly(&flag);
    EXPECT_EQ(flag, VARIANT_TRUE);
    field->get_IsNull(&flag);
    EXPECT_EQ(flag, VARIANT_FALSE);
    view->get_Item(Text(L"ACTIVE"), field.put());
    field->get_Alignment(&number);
    EXPECT_EQ(number, 2);
}

TEST_F(DataViewTest, AFieldFollowsTheCurrentRecordOfItsView) {
    const auto view = Everything();
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"NAME"), field.put());
    com::ComPtr<ZuDataField> again;
    view->get_Item(Number(0), again.put());
    EXPECT_EQ(field.get(), again.get());
    com::Variant value;
    field->get_Value(value.put());
    EXPECT_EQ(value.ToText().view(), L"Anna");
    view->MoveLast(0);
    field->get_Value(value.put());
    EXPECT_EQ(value.ToText().view(), L"Emil");
}

TEST_F(DataViewTest, ABlankDateIsNull) {
    MemoryTechnology::Table("PEOPLE").deleted[2] = false;
    const auto view = Everything();
    view->Move(2, 0);
    EXPECT_EQ(Value(*view, Text(L"BORN")).type(), VT_NULL);
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"BORN"), field.put());
    VARIANT_BOOL isNull = VARIANT_FALSE;
    field->get_IsNull(&isNull);
    EXPECT_EQ(isNull, VARIANT_TRUE);
    com::Bstr text;
    field->get_Text(text.put());
    EXPECT_EQ(text.view(), L"");
}

TEST_F(DataViewTest, ThereIsNoValueWithoutACurrentRecord) {
    const auto view = Everything();
    view->MoveNext(100);
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"NAME"), field.put());
    com::Variant value;
    EXPECT_TRUE(FAILED(field->get_Value(value.put())));
    EXPECT_EQ(ErrorText(), L"Table PEOPLE: there is no current record, the view stands past the last one");
    EXPECT_EQ(value.type(), VT_EMPTY);
}

TEST_F(DataViewTest, PseudoFieldsAreFoundByNameAndNotCounted) {
    const auto view = Everything();
    view->Move(2, 0);
    EXPECT_EQ(Value(*view, Text(L"##RECNO")).ToLong(), 4);
    EXPECT_EQ(Value(*view, Text(L"##recno")).type(), VT_I4);
    EXPECT_EQ(Value(*view, Text(L"##DELETED")).type(), VT_BOOL);
    com::ComPtr<ZuDataFields> fields;
    view->get_Fields(fields.put());
    LONG count = 0;
    fields->get_Count(&count);
    EXPECT_EQ(count, 5);
    com::ComPtr<ZuDataField> field;
    EXPECT_TRUE(FAILED(fields->get_Item(Number(5), field.put())));
    VARIANT_BOOL exists = VARIANT_FALSE;
    const com::Bstr name(L"##DELETED");
    fields->Exists(name.get(), &exists);
    EXPECT_EQ(exists, VARIANT_TRUE);
    const com::Bstr other(L"##COLOUR");
    fields->Exists(other.get(), &exists);
    EXPECT_EQ(exists, VARIANT_FALSE);
}

TEST_F(DataViewTest, PseudoFieldsWorkInAViewWithoutFields) {
    const auto view = Select(*Open(), Text(L""), com::Variant::Missing(), 0, Number(0));
    com::ComPtr<ZuDataFields> fields;
    view->get_Fields(fields.put());
    LONG count = -1;
    fields->get_Count(&count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(Value(*view, Text(L"##RECNO")).ToLong(), 1);
}

TEST_F(DataViewTest, DeletedRecordsAreMarkedWhereTheyShow) {
    const auto view = Select(*Open(), Text(L""), com::Variant::Missing(), 1);
    EXPECT_EQ(Count(*view), 5);
    view->Move(2, 0);
    EXPECT_EQ(Value(*view, Text(L"##DELETED")).get().boolVal, VARIANT_TRUE);
    VARIANT_BOOL deleted = VARIANT_FALSE;
    view->get_IsDeleted(&deleted);
    EXPECT_EQ(deleted, VARIANT_TRUE);
    LONG number = 0;
    view->get_RecordNumber(&number);
    EXPECT_EQ(number, 3);
}

TEST_F(DataViewTest, ATableViewRefusesChangesWithATextThatNamesThem) {
    const auto view = Everything();
    VARIANT_BOOL updateable = VARIANT_TRUE;
    view->get_Updateable(&updateable);
    EXPECT_EQ(updateable, VARIANT_FALSE);
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"AGE"), field.put());
    EXPECT_EQ(field->put_Value(Number(1)), E_NOTIMPL);
    EXPECT_EQ(ErrorText(), L"Table PEOPLE can only be read: cannot change field AGE of record 1");
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(view->Update(&done), E_NOTIMPL);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(view->AddNew(nullptr, &done), E_NOTIMPL);
    EXPECT_EQ(view->Delete(0, &done), E_NOTIMPL);
    EXPECT_EQ(ErrorText(), L"Table PEOPLE can only be read: cannot delete record 1");
    EXPECT_EQ(view->Undelete(1, &done), E_NOTIMPL);
    EXPECT_EQ(view->Delete(9, &done), E_INVALIDARG);
    view->get_Item(Text(L"##RECNO"), field.put());
    EXPECT_EQ(field->put_Value(Number(1)), E_INVALIDARG);
    view->get_Item(Text(L"##DELETED"), field.put());
    EXPECT_EQ(field->put_Value(com::Variant(true)), E_NOTIMPL);
}

TEST_F(DataViewTest, AValueOfTheWrongTypeIsNamedByItsField) {
    const auto view = Everything();
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"AGE"), field.put());
    EXPECT_TRUE(FAILED(field->put_Value(Text(L"old"))));
    EXPECT_TRUE(ErrorText().starts_with(L"Field AGE of table PEOPLE takes a number, not "))
        << com::Bstr(ErrorText()).get();
}

TEST_F(DataViewTest, WorksOnAfterTableAndFieldsAreGone) {
    com::ComPtr<ZuDataField> field;
    {
        const auto view = Everything();
        view->get_Item(Text(L"NAME"), field.put());
        view->MoveNext(-1);
    }
    EXPECT_EQ(MemoryTechnology::Table("PEOPLE").open, 1);
    com::Variant value;
    EXPECT_EQ(field->get_Value(value.put()), S_OK);
    EXPECT_EQ(value.ToText().view(), L"Bert");
    field.reset();
    EXPECT_EQ(MemoryTechnology::Table("PEOPLE").open, 0);
}

TEST_F(DataViewTest, CloseLetsTheTableGoAndLeavesAnEmptyView) {
    const auto view = Everything();
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"NAME"), field.put());
    EXPECT_EQ(view->Close(), S_OK);
    EXPECT_EQ(MemoryTechnology::Table("PEOPLE").open, 0);
    EXPECT_EQ(Count(*view), 0);
    EXPECT_TRUE(Eof(*view));
    com::Bstr name;
    EXPECT_EQ(field->get_Name(name.put()), S_OK);
    EXPECT_EQ(name.view(), L"NAME");
    com::Variant value;
    EXPECT_TRUE(FAILED(field->get_Value(value.put())));
}

TEST_F(DataViewTest, ACloneHasAPositionOfItsOwn) {
    const auto view = Everything();
    view->MoveNext(-1);
    com::ComPtr<ZuDataView> clone;
    ASSERT_EQ(view->Clone(clone.put()), S_OK);
    EXPECT_EQ(Position(*clone), 1);
    clone->MoveLast(0);
    EXPECT_EQ(Position(*view), 1);
    view->Close();
    EXPECT_EQ(TextValue(*clone, L"NAME"), L"Emil");
}

TEST_F(DataViewTest, AFailureWhileReadingNamesTableRecordAndField) {
    const auto view = Everything(L"DAMAGED");
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"NAME"), field.put());
    com::Variant value;
    EXPECT_EQ(field->get_Value(value.put()), STG_E_DOCFILECORRUPT);
    EXPECT_EQ(ErrorText(), L"Table DAMAGED, record 1, field NAME: no");
    EXPECT_EQ(LastError().code, STG_E_DOCFILECORRUPT);
}

TEST_F(DataViewTest, NullPointersAreRefused) {
    const auto view = Everything();
    EXPECT_EQ(view->get_Fields(nullptr), E_POINTER);
    EXPECT_EQ(view->get_Eof(0, nullptr), E_POINTER);
    EXPECT_EQ(view->Update(nullptr), E_POINTER);
    EXPECT_EQ(view->get_CellValue(0, 0, nullptr), E_POINTER);
}

TEST_F(DataViewTest, ScriptsReadFieldsThroughTheViewItself) {
    const LateBound view(Everything().get());
    EXPECT_EQ(view.Default({Text(L"NAME")}).type(), VT_DISPATCH);
    EXPECT_EQ(LateBound(view.Default({Text(L"NAME")})).Default().ToText().view(), L"Anna");
    EXPECT_EQ(view.Get(L"RecordCount").ToLong(), 4);
    EXPECT_FALSE(view.Get(L"Eof").ToBoolean());
    view.Get(L"MoveNext");
    EXPECT_EQ(view.result(), S_OK);
    EXPECT_EQ(view.Get(L"AbsolutePosition").ToLong(), 1);
    view.Get(L"movefirst");
    EXPECT_EQ(view.Get(L"AbsolutePosition").ToLong(), 0);
    EXPECT_EQ(view.Object(L"Fields").Get(L"Count").ToLong(), 5);
    EXPECT_EQ(view.Object(L"Fields").Object(L"Item", {Text(L"PAY")}).Get(L"Name").ToText().view(), L"PAY");
    EXPECT_EQ(view.Get(L"TableName").ToText().view(), L"PEOPLE");
}

TEST_F(DataViewTest, ScriptsGetErrorsWithTheirText) {
    const LateBound view(Everything().get());
    view.Default({Text(L"COLOUR")});
    EXPECT_TRUE(FAILED(view.result()));
    EXPECT_EQ(view.error(), L"Table PEOPLE has no field \"COLOUR\"");
    view.Get(L"Colour");
    EXPECT_EQ(view.result(), DISP_E_UNKNOWNNAME);
}

TEST_F(DataViewTest, ScriptsGetDecimalsAsDoublesAndOthersGetThemExactly) {
    const auto view = Everything();
    com::ComPtr<ZuDataField> field;
    view->get_Item(Text(L"PAY"), field.put());
    com::Variant exact;
    field->get_Value(exact.put());
    EXPECT_EQ(exact.type(), VT_DECIMAL);
    const LateBound late(field.get());
    EXPECT_EQ(late.Get(L"Value").type(), VT_R8);
    EXPECT_EQ(late.Default().get().dblVal, 1234.5);
    const com::Variant cell = LateBound(view.get()).Get(L"CellValue", {Number(0), Number(2)});
    EXPECT_EQ(cell.type(), VT_R8);
    com::Variant exactCell;
    view->get_CellValue(0, 2, exactCell.put());
    EXPECT_EQ(exactCell.type(), VT_DECIMAL);
}

TEST_F(DataViewTest, FieldsAreEnumerated) {
    const LateBound view(Everything().get());
    const LateBound fields = view.Object(L"Fields");
    DISPPARAMS none{};
    com::Variant answer;
    ASSERT_EQ(fields.get()->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                                   answer.put(), nullptr, nullptr),
              S_OK);
    const com::ComPtr<IEnumVARIANT> each = com::ObjectOf<IEnumVARIANT>(answer);
    ASSERT_TRUE(each);
    std::wstring names;
    for (com::Variant element; each->Next(1, element.put(), nullptr) == S_OK;)
        names += LateBound(element).Get(L"Name").ToText().str() + L" ";
    EXPECT_EQ(names, L"NAME AGE PAY BORN ACTIVE ");
}

}  // namespace
}  // namespace zu::test
