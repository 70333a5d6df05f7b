#include "tests/contract/grid/GridTest.h"

namespace zu::contract {

using com::Variant;
using component::Answer;
using component::Button;
using fake::Journal;
using grid::Cell;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

TEST_F(GridTest, OpensWithTheCallsInOrder) {
    data_ = GridData::Names({L"a"});
    session_ = std::make_unique<component::EditSession>(MakeGridView(data_), screen_);
    TakeCalls();
    session_->OpenForEditing(false, Variant::Missing());
    session_->Load([](std::wstring_view) { return 10; });
    EXPECT_EQ(
        TakeCalls(),
        (Calls{"ZuDataView.Updateable()", "ZuDataView.Fields()", "ZuDataFields.Item(\"##DELETED\")",
               "ZuDataFields.Count()", "ZuDataFields.Item(I4 0)", "ZuDataField.Name()", "ZuDataField.Type()",
               "ZuDataField.DisplayWidth()", "ZuDataField.Alignment()", "ZuDataView.RecordCount(0)"}));
    session_->Start();
    EXPECT_EQ(TakeCalls(), (Calls{"ZuDataView.RecordCount(0)", "ZuDataView.Move(0, 0)",
                                  "ZuDataField.Value(#0 of 0)", "ZuDataField.Value(##DELETED)",
                                  "ZuDataField.Value(##DELETED)", "ZuDataView.RecordCount(0)",
                                  "ZuEngineMessages.MessageText(0x8004102D, [0..1: I4 1, I4 1])"}));
}

TEST_F(GridTest, AnEmptyViewHasOnlyHeaderRowsAndTheCursorIsNotMoved) {
    Open(GridData::Names({}));
    EXPECT_EQ(session().rows().count(), 2);
    EXPECT_FALSE(session().MoveTo({2, 1}));
    EXPECT_FALSE(screen_.IsEnabled(Button::kDelete));
    EXPECT_FALSE(screen_.IsEnabled(Button::kEdit));
    EXPECT_FALSE(screen_.IsEnabled(Button::kUndelete));
    EXPECT_EQ(screen_.position, L"");
    EXPECT_FALSE(session().BeginEdit());
}

TEST_F(GridTest, TheLoaderNamesFormatsAndAlignsColumns) {
    auto data = std::make_shared<GridData>();
    data->fields = {{L"T", VT_BSTR, 0, 20, 0}, {L"S", VT_R4, 0, 9, 1},      {L"D", VT_R8, 0, 9, 1},
                    {L"C", VT_CY, 4, 9, 1},    {L"N", VT_DECIMAL, 2, 9, 1}, {L"L", VT_BOOL, 0, 5, 2},
                    {L"M", 100, 0, 50, 0}};
    Open(data);
    const auto& columns = session().columns();
    ASSERT_EQ(columns.count(), 8);
    EXPECT_EQ(columns[0].width, 0);
    EXPECT_EQ(columns[1].caption, u"T");
    EXPECT_EQ(columns[1].format, u"");
    EXPECT_EQ(columns[2].format, u"0.000");
    EXPECT_EQ(columns[3].format, u"0.000");
    EXPECT_EQ(columns[4].format, u"Currency");
    EXPECT_EQ(columns[5].format, u"0.00");
    EXPECT_EQ(columns[6].format, u"");
    EXPECT_EQ(columns[5].alignment, grid::Alignment::kRight);
    EXPECT_EQ(columns[6].alignment, grid::Alignment::kCentre);
    EXPECT_EQ(columns[1].width, 20 * 7);
    EXPECT_LT(columns[7].width, 50 * 7);
}

TEST_F(GridTest, AViewThatIsNotUpdateableShowsOnlyExit) {
    auto data = GridData::Names({L"a"});
    data->updateable = false;
    Open(data);
    for (const Button button : {Button::kAdd, Button::kUpdate, Button::kDelete, Button::kEdit})
        EXPECT_FALSE(screen_.IsShown(button));
    EXPECT_TRUE(screen_.IsShown(Button::kExit));
    EXPECT_FALSE(session().BeginEdit());
    session().SetDeleted(true);
    session().Add();
    EXPECT_EQ(Times("ZuDataView.AddNew"), 0u);
    EXPECT_FALSE(data->deleted[0]);
}

TEST_F(GridTest, PickingIsReadOnlyAndShowsSelectAndCancel) {
    data_ = GridData::Names({L"a", L"b"});
    session_ = std::make_unique<component::EditSession>(MakeGridView(data_), screen_);
    session_->OpenForPicking();
    session_->Load([](std::wstring_view) { return 10; });
    session_->Start();
    EXPECT_TRUE(screen_.IsShown(Button::kSelect));
    EXPECT_TRUE(screen_.IsShown(Button::kCancel));
    EXPECT_FALSE(screen_.IsShown(Button::kDelete));
    EXPECT_FALSE(session_->BeginEdit());
    session_->MoveTo({3, 1});
    TakeCalls();
    EXPECT_TRUE(session_->ChosenView());
    EXPECT_EQ(TakeCalls(), Calls{"ZuDataView.Move(1, 0)"});
}

TEST_F(GridTest, DirectionTakesNumbersAndWords) {
    struct Case {
        Variant direction;
        Cell next;
    };
    const Case cases[] = {
        {Variant(L"down"), {4, 1}},   {Variant(L"DoWn"), {4, 1}},   {Variant(LONG{1}), {3, 2}},
        {Variant(SHORT{4}), {2, 1}},  {Variant(2.0), {3, 1}},       {Variant(LONG{0}), {3, 1}},
        {Variant(LONG{5}), {3, 1}},   {Variant(L"around"), {3, 1}}, {Variant(), {3, 1}},
        {Variant::Missing(), {3, 1}}, {Variant(true), {3, 1}}};
    for (const Case& direction : cases) {
        Open(GridData::Numbered(5), true, direction.direction);
        session().MoveTo({3, 1});
        EXPECT_EQ(session().CellAfterEnter(), direction.next) << direction.direction.type();
    }
}

TEST_F(GridTest, ScrollingLoadsOnlyTheRowsThatComeIntoView) {
    Open(GridData::Numbered(1000));
    EXPECT_EQ(session().rows().loadedCount(), 10u);
    screen_.top = 500;
    session().LoadVisible();
    EXPECT_EQ(Times("ZuDataView.Move("), 10u);
    EXPECT_EQ(Text(500, 2), L"r498");
    TakeCalls();
    screen_.top = 495;
    session().LoadVisible();
    EXPECT_EQ(Times("ZuDataView.Move("), 5u);
}

TEST_F(GridTest, ARowLoadedOnceIsNotReadAgain) {
    Open(GridData::Numbered(5));
    session().LoadVisible();
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(GridTest, AViewThatFailsInMidScrollLeavesTheRestEmptyAndCanBeReadLater) {
    Open(GridData::Numbered(1000));
    screen_.top = 100;
    Journal::OfThread().FailAt(12);
    session().LoadVisible();
    EXPECT_NE(Text(100, 2), L"");
    EXPECT_EQ(Text(109, 2), L"");
    session().LoadVisible();
    EXPECT_EQ(Text(109, 2), L"r107");
}

TEST_F(GridTest, NullShowsAsEmptyAndValuesInTheirFormats) {
    auto data = std::make_shared<GridData>();
    data->fields = {{L"T"}, {L"D", VT_R8}, {L"B", VT_BOOL}};
    data->records.push_back({Variant::Null(), Variant(2.5), Variant(true)});
    data->deleted.resize(1);
    Open(data);
    EXPECT_EQ(Text(2, 1), L"");
    EXPECT_EQ(Text(2, 2), L"2.500");
    EXPECT_EQ(Text(2, 3), L"True");
}

TEST_F(GridTest, AnAcceptedTextIsStoredReadBackAndMakesTheRecordDirty) {
    Open(GridData::Names({L"a", L"b"}));
    EXPECT_FALSE(screen_.IsEnabled(Button::kUpdate));
    ASSERT_EQ(session().BeginEdit(), L"a");
    TakeCalls();
    EXPECT_TRUE(session().Accept(L"new"));
    EXPECT_EQ(TakeCalls(), (Calls{"ZuDataField.Value(#0 of 0 = \"new\")", "ZuDataField.Value(#0 of 0)"}));
    EXPECT_EQ(Text(2), L"new");
    EXPECT_TRUE(session().isDirty());
    EXPECT_TRUE(screen_.IsEnabled(Button::kUpdate));
    EXPECT_EQ(com::View(data_->records[0][0]->bstrVal), L"a");
}

TEST_F(GridTest, ARefusedValueIsExplainedAndNothingChanges) {
    auto data = GridData::Names({L"a"});
    data->takesValue = [](const VARIANT&) { return E_INVALIDARG; };
    Open(data);
    ASSERT_TRUE(session().BeginEdit());
    EXPECT_FALSE(session().Accept(L"too long"));
    EXPECT_EQ(screen_.notes.size(), 1u);
    EXPECT_FALSE(session().isDirty());
    EXPECT_EQ(Text(2), L"a");
}

TEST_F(GridTest, ATextThatIsNoNumberIsExplainedByWhatIsExpected) {
    auto data = GridData::Numbered(1);
    data->fields[0].type = 14;
    Open(data);
    EXPECT_FALSE(Type({2, 1}, L"twelve"));
    EXPECT_EQ(screen_.notes, std::vector<std::wstring>{L"A number is expected here."});
}

TEST_F(GridTest, ANumberOutOfRangeIsExplainedAndNotStored) {
    Open(GridData::Numbered(1));
    EXPECT_FALSE(Type({2, 1}, L"99999999999"));
    EXPECT_EQ(screen_.notes, std::vector<std::wstring>{L"This number is too great for the field."});
    EXPECT_FALSE(session().isDirty());
}

TEST_F(GridTest, ATextReadOnlyInPartIsStoredAndExplained) {
    Open(GridData::Numbered(1));
    EXPECT_TRUE(Type({2, 1}, L"12 apples"));
    EXPECT_EQ(Text(2), L"12");
    EXPECT_EQ(screen_.notes.size(), 1u);
}

TEST_F(GridTest, UpdateSavesAndClearsTheMark) {
    Open(GridData::Names({L"a"}));
    Type({2, 1}, L"b");
    EXPECT_TRUE(session().Save());
    EXPECT_FALSE(session().isDirty());
    EXPECT_FALSE(screen_.IsEnabled(Button::kUpdate));
    EXPECT_EQ(com::View(data_->records[0][0]->bstrVal), L"b");
    TakeCalls();
    EXPECT_TRUE(session().Save());
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(GridTest, ARefusedSaveTellsSoAndTheRecordStaysDirty) {
    auto data = GridData::Names({L"a"});
    data->updates = [] { return false; };
    Open(data);
    Type({2, 1}, L"b");
    EXPECT_FALSE(session().Save());
    EXPECT_EQ(screen_.messages, std::vector<std::wstring>{L"Unable to update Record"});
    EXPECT_TRUE(session().isDirty());
    EXPECT_EQ(Text(2), L"b");
    EXPECT_TRUE(screen_.IsEnabled(Button::kUpdate));
}

TEST_F(GridTest, ASaveThatRaisesIsARefusedSaveWithItsReason) {
    Open(GridData::Names({L"a"}));
    Type({2, 1}, L"b");
    Journal::OfThread().FailOn("ZuDataView.Update");
    EXPECT_FALSE(session().Save());
    EXPECT_EQ(screen_.messages, std::vector<std::wstring>{L"Unable to update Record"});
    EXPECT_THAT(screen_.notes, ElementsAre(L"the fake engine failed as it was told"));
    EXPECT_TRUE(session().isDirty());
}

TEST_F(GridTest, LeavingTheRowSavesTheRecord) {
    Open(GridData::Names({L"a", L"b"}));
    Type({2, 1}, L"x");
    EXPECT_TRUE(session().MoveTo({3, 1}));
    EXPECT_EQ(com::View(data_->records[0][0]->bstrVal), L"x");
    EXPECT_FALSE(session().isDirty());
    EXPECT_THAT(screen_.questions, IsEmpty());
}

TEST_F(GridTest, ARowWhoseRecordCannotBeSavedIsNotLeft) {
    auto data = GridData::Names({L"a", L"b"});
    data->updates = [] { return false; };
    Open(data);
    Type({2, 1}, L"x");
    EXPECT_FALSE(session().MoveTo({3, 1}));
    EXPECT_EQ(session().current(), (Cell{2, 1}));
    EXPECT_TRUE(session().isDirty());
}

TEST_F(GridTest, ScrollingDoesNotLoseTheChangesOfTheCurrentRecord) {
    Open(GridData::Numbered(100));
    Type({2, 2}, L"changed");
    TakeCalls();
    screen_.top = 50;
    session().LoadVisible();
    EXPECT_EQ(Times("ZuDataView.Move("), 0u);
    EXPECT_EQ(Text(50, 2), L"r48");
    EXPECT_TRUE(session().Save());
    EXPECT_EQ(com::View(data_->records[0][1]->bstrVal), L"changed");
}

TEST_F(GridTest, WithoutChangesNothingIsAsked) {
    Open(GridData::Names({L"a"}));
    EXPECT_TRUE(session().ConfirmPending());
    EXPECT_THAT(screen_.questions, IsEmpty());
}

TEST_F(GridTest, CancelGoesBackToTheEditedCell) {
    Open(GridData::Numbered(3));
    Type({3, 2}, L"x");
    session().MoveTo({3, 1});
    EXPECT_FALSE(session().ConfirmPending());
    EXPECT_THAT(screen_.questions, ElementsAre(L"0x8004102F, [-1..-1: Empty]"));
    EXPECT_EQ(session().current(), (Cell{3, 2}));
    EXPECT_TRUE(session().isDirty());
}

TEST_F(GridTest, YesSavesAndReadsTheRowAgain) {
    Open(GridData::Names({L"a"}));
    Type({2, 1}, L"b");
    screen_.answer = Answer::kYes;
    TakeCalls();
    EXPECT_TRUE(session().ConfirmPending());
    EXPECT_EQ(Times("ZuDataView.Update"), 1u);
    EXPECT_EQ(Times("ZuDataView.Move(0"), 1u);
    EXPECT_EQ(Text(2), L"b");
}

TEST_F(GridTest, YesWithARefusedSaveGoesNoFurther) {
    auto data = GridData::Names({L"a"});
    data->updates = [] { return false; };
    Open(data);
    Type({2, 1}, L"b");
    screen_.answer = Answer::kYes;
    EXPECT_FALSE(session().ConfirmPending());
    EXPECT_TRUE(session().isDirty());
}

TEST_F(GridTest, NoDropsTheChangesAndReadsTheRowAgain) {
    Open(GridData::Names({L"a"}));
    Type({2, 1}, L"b");
    screen_.answer = Answer::kNo;
    EXPECT_TRUE(session().ConfirmPending());
    EXPECT_EQ(Text(2), L"a");
    EXPECT_FALSE(session().isDirty());
    EXPECT_EQ(Times("ZuDataView.Update"), 0u);
}

TEST_F(GridTest, AddAppendsARowAtTheTopOfTheWindowAndBeginsARecord) {
    Open(GridData::Numbered(50));
    session().Add();
    EXPECT_EQ(session().rows().count(), 53);
    EXPECT_EQ(session().rows().RowData(52), 50);
    EXPECT_EQ(session().current(), (Cell{52, 1}));
    EXPECT_EQ(screen_.top, 52);
    EXPECT_TRUE(session().isDirty());
    EXPECT_TRUE(session().isAdding());
    EXPECT_EQ(Times("ZuDataView.AddNew(missing)"), 1u);
    EXPECT_EQ(screen_.position, L"0x80041042, [0..1: I4 51, I4 50]");
}

TEST_F(GridTest, ANewRecordIsSavedWithItsValues) {
    Open(GridData::Names({L"a"}));
    session().Add();
    ASSERT_TRUE(session().BeginEdit());
    EXPECT_TRUE(session().Accept(L"b"));
    EXPECT_TRUE(session().Save());
    ASSERT_EQ(data_->records.size(), 2u);
    EXPECT_EQ(com::View(data_->records[1][0]->bstrVal), L"b");
    EXPECT_FALSE(session().isAdding());
    EXPECT_EQ(screen_.position, L"0x8004102D, [0..1: I4 2, I4 2]");
}

TEST_F(GridTest, ANewRecordAsksItsOwnQuestionAndNoRemovesItsRow) {
    Open(GridData::Names({L"a"}));
    session().Add();
    screen_.answer = Answer::kNo;
    EXPECT_TRUE(session().ConfirmPending());
    EXPECT_THAT(screen_.questions, ElementsAre(L"0x8004102E, [-1..-1: Empty]"));
    EXPECT_EQ(session().rows().count(), 3);
    EXPECT_EQ(session().current().row, 2);
    EXPECT_EQ(data_->records.size(), 1u);
    EXPECT_FALSE(session().isAdding());
}

TEST_F(GridTest, AddIsNothingWhenTheQuestionIsCancelled) {
    Open(GridData::Names({L"a"}));
    Type({2, 1}, L"b");
    session().Add();
    EXPECT_EQ(session().rows().count(), 3);
    EXPECT_EQ(Times("ZuDataView.AddNew"), 0u);
}

TEST_F(GridTest, AViewThatRefusesANewRecordLeavesNoRowBehind) {
    Open(GridData::Names({L"a"}));
    Journal::OfThread().FailOn("ZuDataView.AddNew");
    session().Add();
    EXPECT_EQ(session().rows().count(), 3);
    EXPECT_FALSE(session().isDirty());
    Journal::OfThread().Clear();
    Journal::OfThread().AnswerNothingOn("ZuDataView.AddNew");
    session().Add();
    EXPECT_EQ(session().rows().count(), 3);
}

TEST_F(GridTest, ARecordThatStaysOnlyChangesLabelAndButtons) {
    Open(GridData::Names({L"a", L"b"}));
    EXPECT_TRUE(screen_.IsShown(Button::kDelete));
    session().SetDeleted(true);
    EXPECT_TRUE(data_->deleted[0]);
    EXPECT_EQ(session().rows().count(), 4);
    EXPECT_TRUE(screen_.deletedShown);
    EXPECT_FALSE(screen_.IsShown(Button::kDelete));
    EXPECT_TRUE(screen_.IsShown(Button::kUndelete));
    EXPECT_TRUE(session().Loaded(2)->isDeleted());
    session().SetDeleted(false);
    EXPECT_FALSE(screen_.deletedShown);
    EXPECT_TRUE(screen_.IsShown(Button::kDelete));
    EXPECT_FALSE(screen_.IsShown(Button::kUndelete));
}

TEST_F(GridTest, UndeleteIsNotShownUnlessItIsAllowed) {
    Open(GridData::Names({L"a"}), false);
    session().SetDeleted(true);
    EXPECT_FALSE(screen_.IsShown(Button::kUndelete));
    EXPECT_FALSE(screen_.IsShown(Button::kDelete));
}

TEST_F(GridTest, ARecordThatLeavesTheViewTakesItsRowWithIt) {
    auto data = GridData::Numbered(5);
    data->hidesDeleted = true;
    Open(data);
    session().MoveTo({3, 2});
    session().SetDeleted(true);
    EXPECT_EQ(session().rows().count(), 6);
    EXPECT_EQ(Text(2, 2), L"r0");
    EXPECT_EQ(Text(3, 2), L"r2");
    EXPECT_EQ(Text(5, 2), L"r4");
    EXPECT_EQ(session().rows().RowData(5), 3);
    EXPECT_EQ(screen_.position, L"0x8004102D, [0..1: I4 2, I4 4]");
    EXPECT_FALSE(screen_.deletedShown);
}

TEST_F(GridTest, DeletingTheLastRowGoesToTheOneBefore) {
    auto data = GridData::Numbered(2);
    data->hidesDeleted = true;
    Open(data);
    session().MoveTo({3, 2});
    session().SetDeleted(true);
    EXPECT_EQ(session().current(), (Cell{2, 2}));
    session().SetDeleted(true);
    EXPECT_EQ(session().rows().count(), 2);
    EXPECT_EQ(screen_.position, L"");
    EXPECT_FALSE(screen_.IsEnabled(Button::kDelete));
}

TEST_F(GridTest, ADeletionThatIsRefusedIsExplained) {
    auto data = GridData::Names({L"a"});
    data->takesValue = [](const VARIANT&) { return E_ACCESSDENIED; };
    Open(data);
    session().SetDeleted(true);
    EXPECT_EQ(screen_.notes.size(), 1u);
    EXPECT_FALSE(screen_.deletedShown);
}

TEST_F(GridTest, EscapeDropsTheChangesOfTheRecordWithoutAQuestion) {
    Open(GridData::Names({L"a"}));
    Type({2, 1}, L"b");
    session().Discard();
    EXPECT_EQ(Text(2), L"a");
    EXPECT_FALSE(session().isDirty());
    EXPECT_THAT(screen_.questions, IsEmpty());
}

TEST_F(GridTest, EveryCallMayFailOnceAndTheSessionGoesOn) {
    for (int n = 1; n < 60; ++n) {
        auto data = GridData::Numbered(30);
        data->hidesDeleted = true;
        Open(data);
        screen_.answer = Answer::kNo;
        Journal::OfThread().FailAt(n);
        Type({3, 2}, L"x");
        session().Save();
        session().Add();
        session().ConfirmPending();
        session().SetDeleted(true);
        screen_.top = 12;
        session().LoadVisible();
        session().Discard();
        Journal::OfThread().Clear();
        screen_.top = 2;
        EXPECT_TRUE(session().MoveTo({4, 2})) << n;
        EXPECT_TRUE(Type({4, 2}, L"fine")) << n;
        EXPECT_TRUE(session().Save()) << n;
        EXPECT_EQ(Text(4, 2), L"fine") << n;
    }
}

}  // namespace
}  // namespace zu::contract
