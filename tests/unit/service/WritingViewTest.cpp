#include "ServiceTest.h"
#include "com/ComError.h"
#include "idl/RecordRuns.h"
#include "portable/error/Error.h"

namespace zu::test {
namespace {

/// Views over a table in memory that takes changes: Anna, Bert, (Carl, deleted), Dora, Emil.
class WritingViewTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        Data().writable = true;
    }
    static MemoryData& Data() { return MemoryTechnology::Table("PEOPLE"); }
    static std::wstring Stored(std::size_t record) {
        return std::wstring(com::AsWide(Data().rows.at(record - 1).at(0).text));
    }
    static com::ComPtr<ZuDataField> Field(ZuDataView& view, std::wstring_view name) {
        com::ComPtr<ZuDataField> field;
        EXPECT_EQ(view.get_Item(Text(name), field.put()), S_OK);
        return field;
    }
    static HRESULT Put(ZuDataView& view, std::wstring_view name, const com::Variant& value) {
        return Field(view, name)->put_Value(value);
    }
    static LONG Position(ZuDataView& view) {
        LONG position = -9;
        EXPECT_EQ(view.get_AbsolutePosition(0, &position), S_OK);
        return position;
    }
    static LONG Count(ZuDataView& view) {
        LONG count = -9;
        EXPECT_EQ(view.get_RecordCount(0, &count), S_OK);
        return count;
    }
    template <class Getter>
    static bool Is(ZuDataView& view, Getter getter) {
        VARIANT_BOOL result = 7;
        EXPECT_EQ((view.*getter)(&result), S_OK);
        return result == VARIANT_TRUE;
    }
    static bool Dirty(ZuDataView& view) { return Is(view, &ZuDataView::get_IsDirty); }
    static bool New(ZuDataView& view) { return Is(view, &ZuDataView::get_IsNew); }
    static bool Updates(ZuDataView& view) { return Is(view, &ZuDataView::Update); }
    static bool AddsNew(ZuDataView& view, VARIANT* values = nullptr) {
        VARIANT_BOOL result = 7;
        EXPECT_EQ(view.AddNew(values, &result), S_OK);
        return result == VARIANT_TRUE;
    }
    static bool Deletes(ZuDataView& view, LONG index) {
        VARIANT_BOOL result = 7;
        EXPECT_EQ(view.Delete(index, &result), S_OK);
        return result == VARIANT_TRUE;
    }
};

TEST_F(WritingViewTest, APutIsKeptUntilUpdateSavesIt) {
    const auto view = Everything();
    EXPECT_TRUE(Is(*view, &ZuDataView::get_Updateable));
    EXPECT_FALSE(Dirty(*view));
    EXPECT_EQ(Put(*view, L"NAME", Text(L"Alma")), S_OK);
    EXPECT_TRUE(Dirty(*view));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Alma");
    EXPECT_EQ(Stored(1), L"Anna");
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Alma");
    EXPECT_FALSE(Dirty(*view));
    EXPECT_EQ(Data().saves, 1);
}

TEST_F(WritingViewTest, TheStoredValueCanBeReadWhileAnotherOneWaits) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    com::Variant value;
    EXPECT_EQ(Field(*view, L"NAME")->get_OriginalValue(value.put()), S_OK);
    EXPECT_EQ(value.ToText().view(), L"Anna");
    AddsNew(*view);
    EXPECT_EQ(Field(*view, L"NAME")->get_OriginalValue(value.put()), S_OK);
    EXPECT_EQ(value.type(), VT_NULL);
}

TEST_F(WritingViewTest, CellValuesShowWhatWaitsToBeSaved) {
    const auto view = Everything();
    view->MoveNext(-1);
    Put(*view, L"NAME", Text(L"Boris"));
    com::Variant value;
    view->get_CellValue(1, 0, value.put());
    EXPECT_EQ(value.ToText().view(), L"Boris");
    view->get_CellValue(0, 0, value.put());
    EXPECT_EQ(value.ToText().view(), L"Anna");
}

TEST_F(WritingViewTest, UpdateWithoutChangesAnswersTrueAndWritesNothing) {
    const auto view = Everything();
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Data().saves, 0);
}

TEST_F(WritingViewTest, CancelUpdateDropsTheChanges) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    EXPECT_EQ(view->CancelUpdate(), S_OK);
    EXPECT_FALSE(Dirty(*view));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Anna");
}

TEST_F(WritingViewTest, RefreshReadsTheRecordAsItIsNow) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    Data().rows[0][0].text = u"Aron";
    EXPECT_EQ(view->Refresh(), S_OK);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Aron");
    EXPECT_FALSE(Dirty(*view));
}

TEST_F(WritingViewTest, ARefusedValueLeavesTheRecordAndEarlierPutsAsTheyWere) {
    const auto view = Everything();
    Put(*view, L"AGE", Number(32));
    EXPECT_TRUE(FAILED(Put(*view, L"NAME", Text(L"far too long a name"))));
    EXPECT_EQ(ErrorText(), L"too long for field NAME");
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
    EXPECT_EQ(Value(*view, Text(L"AGE")).ToLong(), 32);
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Anna");
}

TEST_F(WritingViewTest, AFirstPutThatIsRefusedLeavesAnEditOfAnotherRecordAlone) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    view->MoveNext(-1);
    EXPECT_TRUE(FAILED(Put(*view, L"NAME", Text(L"far too long a name"))));
    view->MovePrevious(-1);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Alma");
}

TEST_F(WritingViewTest, TrailingBlanksOfATextMeanNothing) {
    const auto view = Everything();
    EXPECT_EQ(Put(*view, L"NAME", Text(L"Alma                 ")), S_OK);
    Updates(*view);
    EXPECT_EQ(Stored(1), L"Alma");
}

TEST_F(WritingViewTest, AConflictAnswersFalseKeepsTheChangesAndTellsTheUser) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    Data().onSave = [] { return false; };
    EXPECT_FALSE(Updates(*view));
    EXPECT_NE(LastError().text.find(L"Record 1 of table PEOPLE was not saved"), std::wstring::npos);
    EXPECT_TRUE(Dirty(*view));
    EXPECT_EQ(Stored(1), L"Anna");
    Data().onSave = nullptr;
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Alma");
}

TEST_F(WritingViewTest, AFieldThatSomebodyChangedSinceItWasReadIsNotOverwritten) {
    const auto view = Everything();
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
    Data().rows[0][0].text = u"Aron";
    EXPECT_EQ(Put(*view, L"NAME", Text(L"Anna B.")), S_OK);
    EXPECT_FALSE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Aron");
    view->Refresh();
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Aron");
    Put(*view, L"NAME", Text(L"Aron B."));
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Aron B.");
}

TEST_F(WritingViewTest, AnotherFieldMayHaveChangedSinceItWasRead) {
    const auto view = Everything();
    Value(*view, Text(L"AGE"));
    Value(*view, Text(L"NAME"));
    Data().rows[0][1].decimal.low = 99;
    Put(*view, L"NAME", Text(L"Alma"));
    Put(*view, L"NAME", Text(L"Alma C."));
    EXPECT_TRUE(Updates(*view));
    Put(*view, L"NAME", Text(L"Alma D."));
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Alma D.");
}

TEST_F(WritingViewTest, WhatWasReadEarlierElsewhereDoesNotMatter) {
    const auto view = Everything();
    Value(*view, Text(L"NAME"));
    view->MoveNext(-1);
    Data().rows[0][0].text = u"Aron";
    view->MovePrevious(-1);
    Put(*view, L"NAME", Text(L"Alma"));
    EXPECT_TRUE(Updates(*view));
}

TEST_F(WritingViewTest, ASecondFieldOfTheSameChangeIsComparedToo) {
    const auto view = Everything();
    Value(*view, Text(L"NAME"));
    Value(*view, Text(L"BORN"));
    Value(*view, Text(L"ACTIVE"));
    Value(*view, Text(L"AGE"));
    Data().rows[0][1].decimal.low = 99;
    Put(*view, L"NAME", Text(L"Alma"));
    Put(*view, L"AGE", Number(32));
    EXPECT_FALSE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Anna");
}

TEST_F(WritingViewTest, AKeyThatAnIndexRefusesAnswersFalseWithTheReason) {
    const auto view = Everything();
    for (const ErrorKind kind : {ErrorKind::AlreadyExists, ErrorKind::Locked}) {
        AddsNew(*view);
        Data().onSave = [kind]() -> bool { throw Error(kind, "the reason"); };
        EXPECT_FALSE(Updates(*view));
        EXPECT_EQ(LastError().text, L"the reason");
        EXPECT_TRUE(New(*view));
        EXPECT_EQ(Count(*view), 4);
    }
}

TEST_F(WritingViewTest, FailuresOfTheFilesAreErrors) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    Data().onSave = []() -> bool { throw Error(ErrorKind::DiskFull, "no room"); };
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(view->Update(&done)));
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(ErrorText(), L"no room");
    EXPECT_TRUE(Dirty(*view));
}

TEST_F(WritingViewTest, ChangesWaitWhileTheViewMovesAwayAndBack) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    view->Move(2, 0);
    EXPECT_FALSE(Dirty(*view));
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Data().saves, 0);
    view->Move(0, 0);
    EXPECT_TRUE(Dirty(*view));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Alma");
}

TEST_F(WritingViewTest, MakingTheSameRecordCurrentAgainReadsItAnew) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    view->Move(0, 0);
    EXPECT_FALSE(Dirty(*view));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
    Put(*view, L"NAME", Text(L"Alma"));
    view->MoveFirst(0);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
}

TEST_F(WritingViewTest, APutInAnotherRecordDropsWhatWasNotSaved) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    view->MoveNext(-1);
    Put(*view, L"NAME", Text(L"Boris"));
    view->MovePrevious(-1);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
    EXPECT_FALSE(Dirty(*view));
}

TEST_F(WritingViewTest, ANewRecordStandsBehindTheOthersAndCountsWhenItIsSaved) {
    const auto view = Everything();
    EXPECT_TRUE(AddsNew(*view));
    EXPECT_TRUE(New(*view));
    EXPECT_TRUE(Dirty(*view));
    EXPECT_EQ(Position(*view), 4);
    EXPECT_EQ(Count(*view), 4);
    EXPECT_EQ(Value(*view, Text(L"##RECNO")).ToLong(), 0);
    EXPECT_EQ(Put(*view, L"NAME", Text(L"Frida")), S_OK);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Frida");
    EXPECT_TRUE(Updates(*view));
    EXPECT_FALSE(New(*view));
    EXPECT_EQ(Position(*view), 4);
    EXPECT_EQ(Count(*view), 5);
    EXPECT_EQ(Value(*view, Text(L"##RECNO")).ToLong(), 6);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Frida");
    EXPECT_EQ(Stored(6), L"Frida");
}

TEST_F(WritingViewTest, ARecordCanBeAddedToAnEmptyView) {
    const auto view = Select(*Open(), com::Variant::Null(), Number(1));
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(AddsNew(*view));
        Put(*view, L"AGE", Number(i));
        EXPECT_TRUE(Updates(*view));
        EXPECT_EQ(Count(*view), i);
        EXPECT_EQ(Position(*view), i - 1);
    }
    EXPECT_EQ(Data().rows.size(), 8u);
}

TEST_F(WritingViewTest, ANewRecordIsFoundAgainAtThePlaceItWillHave) {
    const auto view = Everything();
    AddsNew(*view);
    Put(*view, L"NAME", Text(L"Frida"));
    EXPECT_EQ(view->Move(1, 0), S_OK);
    EXPECT_FALSE(New(*view));
    EXPECT_EQ(view->Move(4, 0), S_OK);
    EXPECT_TRUE(New(*view));
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(6), L"Frida");
}

TEST_F(WritingViewTest, ANewRecordThatIsCancelledNeverWas) {
    const auto view = Everything();
    view->Move(2, 0);
    AddsNew(*view);
    view->CancelUpdate();
    EXPECT_EQ(Position(*view), 2);
    EXPECT_FALSE(New(*view));
    EXPECT_EQ(Count(*view), 4);
    EXPECT_EQ(Data().rows.size(), 5u);
    EXPECT_EQ(view->Move(4, 0), E_INVALIDARG);
}

TEST_F(WritingViewTest, AnotherNewRecordTakesThePlaceOfOneThatWasNotSaved) {
    const auto view = Everything();
    view->Move(1, 0);
    AddsNew(*view);
    Put(*view, L"NAME", Text(L"Frida"));
    AddsNew(*view);
    EXPECT_EQ(Value(*view, Text(L"NAME")).type(), VT_NULL);
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Data().rows.size(), 6u);
    AddsNew(*view);
    AddsNew(*view);
    view->CancelUpdate();
    EXPECT_EQ(Position(*view), 4);
}

TEST_F(WritingViewTest, AWalkEndsBehindTheLastRecordAlsoWhileANewOneWaits) {
    const auto view = Everything();
    AddsNew(*view);
    int records = 0;
    VARIANT_BOOL eof = VARIANT_FALSE;
    for (view->MoveFirst(0); view->get_Eof(0, &eof), eof == VARIANT_FALSE && records < 99; view->MoveNext(-1))
        ++records;
    EXPECT_EQ(records, 4);
}

TEST_F(WritingViewTest, ANewRecordTakesTheValuesOfAViewByTheirNames) {
    const auto source = Select(*Open(), Text(L""), com::Variant::Missing(), 0, Text(L"PAY,NAME"));
    const auto target = Select(*Open(), com::Variant::Null());
    com::Variant values(source.get());
    EXPECT_TRUE(AddsNew(*target, values.address()));
    EXPECT_EQ(com::ObjectOf<ZuDataView>(values).get(), source.get());
    EXPECT_EQ(TextValue(*target, L"NAME"), L"Anna");
    EXPECT_EQ(Value(*target, Text(L"PAY")).ToDouble(), 1234.5);
    EXPECT_EQ(Value(*target, Text(L"AGE")).type(), VT_NULL);
    EXPECT_TRUE(Updates(*target));
    EXPECT_EQ(Stored(6), L"Anna");
}

TEST_F(WritingViewTest, ValuesComeInEveryFormThatCallersPass) {
    const auto source = Everything();
    const auto target = Select(*Open(), com::Variant::Null());
    IDispatch* object = source.get();
    VARIANT byReference;
    byReference.vt = VT_DISPATCH | VT_BYREF;
    byReference.ppdispVal = &object;
    EXPECT_TRUE(AddsNew(*target, &byReference));
    EXPECT_EQ(TextValue(*target, L"NAME"), L"Anna");
    VARIANT wrapped;
    wrapped.vt = VT_VARIANT | VT_BYREF;
    wrapped.pvarVal = &byReference;
    EXPECT_TRUE(AddsNew(*target, &wrapped));
    EXPECT_EQ(TextValue(*target, L"NAME"), L"Anna");
    for (com::Variant none : {com::Variant::Missing(), com::Variant(), com::Variant::Null()}) {
        EXPECT_TRUE(AddsNew(*target, none.address()));
        EXPECT_EQ(Value(*target, Text(L"NAME")).type(), VT_NULL);
    }
}

TEST_F(WritingViewTest, ValuesThatAreNoViewAreRefused) {
    const auto view = Everything();
    VARIANT_BOOL done = VARIANT_TRUE;
    com::Variant number = Number(3);
    EXPECT_EQ(view->AddNew(number.address(), &done), com::kTypeMismatch);
    com::Variant nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(view->AddNew(nothing.address(), &done), com::kObjectNotSet);
    const auto service = Service();
    com::Variant other(service.get());
    EXPECT_EQ(view->AddNew(other.address(), &done), com::kTypeMismatch);
    EXPECT_FALSE(New(*view));
    EXPECT_EQ(Position(*view), 0);
}

TEST_F(WritingViewTest, ValuesThatDoNotFitBeginNoRecord) {
    MemoryTechnology::Table("LONG").fields[0].size = 40;
    MemoryTechnology::Table("LONG").rows[0][0].text = u"a name of more than ten";
    const auto source = Everything(L"LONG");
    const auto view = Everything();
    com::Variant values(source.get());
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(view->AddNew(values.address(), &done)));
    EXPECT_EQ(ErrorText(), L"too long for field NAME");
    EXPECT_FALSE(New(*view));
    EXPECT_EQ(Data().rows.size(), 5u);
}

TEST_F(WritingViewTest, FieldsThatTheTableKeepsItselfAreNotCopied) {
    Data().fields[1].readOnly = true;
    const auto view = Everything();
    com::Variant values(view.get());
    EXPECT_TRUE(AddsNew(*view, values.address()));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
    EXPECT_EQ(Value(*view, Text(L"AGE")).type(), VT_NULL);
}

TEST_F(WritingViewTest, ARecordOfTheSameViewCanBeDoubled) {
    const auto view = Everything();
    view->Move(1, 0);
    com::Variant values(view.get());
    EXPECT_TRUE(AddsNew(*view, values.address()));
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(6), L"Bert");
}

TEST_F(WritingViewTest, DeleteMarksTheRecordAndDropsItFromAViewThatHidesDeletedOnes) {
    const auto view = Everything();
    EXPECT_TRUE(Deletes(*view, 1));
    EXPECT_TRUE(Data().deleted[1]);
    EXPECT_EQ(Count(*view), 3);
    view->Move(1, 0);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Dora");
}

TEST_F(WritingViewTest, DeleteLeavesTheRecordInAViewThatShowsDeletedOnes) {
    const auto view = Select(*Open(), Text(L""), com::Variant::Missing(), 1);
    EXPECT_TRUE(Deletes(*view, 1));
    EXPECT_EQ(Count(*view), 5);
    view->Move(1, 0);
    EXPECT_TRUE(Is(*view, &ZuDataView::get_IsDeleted));
    EXPECT_FALSE(Deletes(*view, 1)) << "it was deleted already";
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(view->Undelete(1, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_FALSE(Data().deleted[1]);
    EXPECT_EQ(view->Undelete(1, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(WritingViewTest, DeletedRecordsStayWhereTheSettingShowsThem) {
    host::SettingsStore::Instance().Put(L"Data.ShowDeleted", L"yes", nullptr);
    const auto view = Everything();
    EXPECT_TRUE(Deletes(*view, 0));
    EXPECT_EQ(Count(*view), 4);
    host::SettingsStore::Instance().Put(L"Data.ShowDeleted", L"no", nullptr);
}

TEST_F(WritingViewTest, ThePositionStaysWithItsRecordWhenOthersLeave) {
    const auto view = Everything();
    view->Move(2, 0);
    Deletes(*view, 0);
    EXPECT_EQ(Position(*view), 1);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Dora");
    Deletes(*view, 2);
    EXPECT_EQ(Position(*view), 1);
    Deletes(*view, 1);
    EXPECT_EQ(Position(*view), 1);
    VARIANT_BOOL eof = VARIANT_FALSE;
    view->get_Eof(0, &eof);
    EXPECT_EQ(eof, VARIANT_TRUE);
    EXPECT_EQ(Count(*view), 1);
}

TEST_F(WritingViewTest, TheFollowingRecordIsCurrentWhenTheCurrentOneLeaves) {
    const auto view = Everything();
    view->Move(1, 0);
    EXPECT_EQ(Put(*view, L"##DELETED", com::Variant(true)), S_OK);
    EXPECT_EQ(Count(*view), 3);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Dora");
}

TEST_F(WritingViewTest, DeletingFromTheLastRecordToTheFirstTakesThemAll) {
    const auto view = Everything();
    for (LONG i = Count(*view) - 1; i >= 0; --i)
        EXPECT_TRUE(Deletes(*view, i));
    EXPECT_EQ(Count(*view), 0);
    EXPECT_EQ(Data().deleted, std::vector<bool>(5, true));
}

TEST_F(WritingViewTest, TheDeletionMarkCountsAtOnceAndLeavesOtherChangesWaiting) {
    const auto view = Select(*Open(), Text(L""), com::Variant::Missing(), 1);
    Put(*view, L"NAME", Text(L"Alma"));
    EXPECT_EQ(Put(*view, L"##DELETED", com::Variant(true)), S_OK);
    EXPECT_TRUE(Data().deleted[0]);
    EXPECT_EQ(Stored(1), L"Anna");
    EXPECT_TRUE(Dirty(*view));
    EXPECT_EQ(Value(*view, Text(L"##DELETED")).get().boolVal, VARIANT_TRUE);
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(1), L"Alma");
    EXPECT_TRUE(Data().deleted[0]);
}

TEST_F(WritingViewTest, ChangesGoWithTheRecordThatLeaves) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    Put(*view, L"##DELETED", com::Variant(true));
    EXPECT_FALSE(Dirty(*view));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Bert");
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Stored(2), L"Bert");
}

TEST_F(WritingViewTest, ANewRecordCanBeMarkedBeforeItIsSaved) {
    const auto view = Everything();
    AddsNew(*view);
    Put(*view, L"##DELETED", com::Variant(true));
    EXPECT_EQ(Value(*view, Text(L"##DELETED")).get().boolVal, VARIANT_TRUE);
    EXPECT_EQ(Data().saves, 0);
    EXPECT_TRUE(Updates(*view));
    EXPECT_TRUE(Data().deleted[5]);
    EXPECT_EQ(Count(*view), 4) << "deleted records do not show here";
}

TEST_F(WritingViewTest, AMarkThatSomebodyElseSetMeanwhileIsNotOurs) {
    const auto view = Everything();
    Data().onSave = [] {
        Data().deleted[0] = true;
        return false;
    };
    EXPECT_FALSE(Deletes(*view, 0));
    EXPECT_EQ(Count(*view), 3);
}

TEST_F(WritingViewTest, AMarkThatOthersKeepChangingIsGivenUp) {
    const auto view = Everything();
    Data().onSave = [] { return false; };
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(view->Delete(0, &done)));
    EXPECT_NE(ErrorText().find(L"record 1 of table PEOPLE"), std::wstring::npos);
}

TEST_F(WritingViewTest, ClonesShareTheRecordsButNeitherPositionNorUnsavedChanges) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    com::ComPtr<ZuDataView> clone;
    ASSERT_EQ(view->Clone(clone.put()), S_OK);
    EXPECT_EQ(TextValue(*clone, L"NAME"), L"Anna");
    EXPECT_FALSE(Dirty(*clone));
    Updates(*view);
    EXPECT_EQ(TextValue(*clone, L"NAME"), L"Alma");
    clone->Move(3, 0);
    Deletes(*view, 1);
    EXPECT_EQ(Count(*clone), 3);
    EXPECT_EQ(Position(*clone), 2);
    EXPECT_EQ(TextValue(*clone, L"NAME"), L"Emil");
    AddsNew(*view);
    Updates(*view);
    EXPECT_EQ(Count(*clone), 4);
    EXPECT_EQ(Position(*clone), 2);
}

TEST_F(WritingViewTest, TwoNewRecordsOfTwoClonesBothFindTheirPlace) {
    const auto view = Everything();
    com::ComPtr<ZuDataView> clone;
    view->Clone(clone.put());
    AddsNew(*view);
    Put(*view, L"NAME", Text(L"Frida"));
    AddsNew(*clone);
    Put(*clone, L"NAME", Text(L"Gerd"));
    EXPECT_TRUE(Updates(*clone));
    EXPECT_TRUE(New(*view));
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Frida");
    EXPECT_TRUE(Updates(*view));
    EXPECT_EQ(Count(*view), 6);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Frida");
    EXPECT_EQ(TextValue(*clone, L"NAME"), L"Gerd");
}

TEST_F(WritingViewTest, ACloneOutlivesItsOriginal) {
    auto view = Everything();
    com::ComPtr<ZuDataView> clone;
    view->Clone(clone.put());
    view.reset();
    EXPECT_TRUE(Deletes(*clone, 0));
    EXPECT_EQ(TextValue(*clone, L"NAME"), L"Bert");
}

TEST_F(WritingViewTest, CloseDropsWhatWasNotSaved) {
    const auto view = Everything();
    Put(*view, L"NAME", Text(L"Alma"));
    EXPECT_EQ(view->Close(), S_OK);
    EXPECT_EQ(Stored(1), L"Anna");
    EXPECT_EQ(Data().open, 0);
}

TEST_F(WritingViewTest, WithoutACurrentRecordThereIsNothingToChange) {
    const auto view = Select(*Open(), com::Variant::Null());
    EXPECT_TRUE(FAILED(Put(*view, L"NAME", Text(L"Alma"))));
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(view->Update(&done)));
    EXPECT_EQ(view->CancelUpdate(), S_OK);
    EXPECT_EQ(view->Refresh(), S_OK);
    EXPECT_EQ(view->Delete(0, &done), E_INVALIDARG);
}

TEST_F(WritingViewTest, ScriptsWriteThroughTheDefaultMembers) {
    const auto made = Everything();
    const LateBound view(made.get());
    view.Object(L"Item", {Text(L"NAME")}).Put(L"Value", Text(L"Alma"));
    EXPECT_EQ(view.Get(L"Update").get().boolVal, VARIANT_TRUE);
    EXPECT_EQ(view.Get(L"AddNew").get().boolVal, VARIANT_TRUE);
    view.Object(L"Item", {Text(L"NAME")}).Put(L"Value", Text(L"Frida"));
    EXPECT_EQ(view.Get(L"Update").get().boolVal, VARIANT_TRUE);
    EXPECT_EQ(Stored(1), L"Alma");
    EXPECT_EQ(Stored(6), L"Frida");
}

com::ComPtr<RecordDeletion> Deletion(ZuDataView& view) {
    return com::Share(&view).tryAs<RecordDeletion>();
}

TEST_F(WritingViewTest, DeletingAllRecordsAtOnceAnswersHowManyMarksAreNew) {
    const auto view = Everything();
    Data().deleted[1] = true;  // by somebody else meanwhile
    LONG deleted = -1;
    EXPECT_EQ(Deletion(*view)->DeleteAll(&deleted), S_OK);
    EXPECT_EQ(deleted, 3);
    EXPECT_EQ(Count(*view), 0) << "deleted records do not show here";
    EXPECT_EQ(Data().deleted, std::vector<bool>(5, true));
    EXPECT_EQ(Deletion(*view)->DeleteAll(nullptr), E_POINTER);
}

TEST_F(WritingViewTest, AnErrorEndsTheDeletingOfAllRecordsWhereItIs) {
    const auto view = Everything();
    Data().onSave = []() -> bool {
        if (Data().saves >= 2) throw Error(ErrorKind::IoFailure, "gone");
        return true;
    };
    LONG deleted = -1;
    EXPECT_TRUE(FAILED(Deletion(*view)->DeleteAll(&deleted)));
    Data().onSave = nullptr;
    EXPECT_EQ(Data().deleted, (std::vector<bool>{false, false, true, true, true})) << "from the last one";
    EXPECT_EQ(Count(*view), 2);
    EXPECT_EQ(TextValue(*view, L"NAME"), L"Anna");
}

TEST_F(WritingViewTest, ATableThatCanOnlyBeReadRefusesTheDeletingOfAllRecords) {
    Data().writable = false;
    LONG deleted = -1;
    EXPECT_TRUE(FAILED(Deletion(*Everything())->DeleteAll(&deleted)));
}

}  // namespace
}  // namespace zu::test
