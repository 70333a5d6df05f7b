// The form: where it stands, what it shows, its buttons and how it ends.
#include "tests/windows/WindowTest.h"

namespace zu::windows {
namespace {

class GridForm : public WindowTest {};

TEST_F(GridForm, ShowsTitleRecordsAndPosition) {
    Edit(FivePeople());
    EXPECT_EQ(FormDriver::TextOf(form_->form()), L"People");
    EXPECT_EQ(form_->State(fgGrid::kRowCount), 7);
    EXPECT_EQ(form_->State(fgGrid::kColumnCount), 5);
    EXPECT_EQ(form_->State(fgGrid::kColumnWidth, 0), 0);
    EXPECT_TRUE(form_->WaitForCell(2, 1));
    EXPECT_EQ(form_->CellText(), L"Anna");
    EXPECT_TRUE(form_->WaitForLabel(L"Record 1 of 5"));
    for (const wchar_t* caption : {L"Sea&rch", L"&Update", L"E&xit", L"&Add", L"&Edit", L"&Delete"})
        EXPECT_TRUE(form_->IsShown(caption)) << caption;
    for (const wchar_t* caption : {L"&Undelete", L"&Select", L"&Cancel"})
        EXPECT_FALSE(form_->IsShown(caption)) << caption;
    EXPECT_FALSE(form_->IsEnabled(L"&Update"));
    EXPECT_EQ(ExitAndRead().substr(0, 9), "edit True");
}

TEST_F(GridForm, StandsWhereItIsToldInPixels) {
    Edit(FivePeople(), ", \"People\", , , 410, 650, 33, 44");
    RECT place{};
    GetWindowRect(form_->form(), &place);
    EXPECT_EQ(place.left, 44);
    EXPECT_EQ(place.top, 33);
    EXPECT_EQ(place.right - place.left, 650);
    EXPECT_EQ(place.bottom - place.top, 410);
}

TEST_F(GridForm, IsCentredWithoutAPlace) {
    Edit(FivePeople());
    RECT place{};
    GetWindowRect(form_->form(), &place);
    EXPECT_EQ(place.right - place.left, 600);
    EXPECT_EQ(place.bottom - place.top, 400);
    EXPECT_EQ(place.left, (GetSystemMetrics(SM_CXSCREEN) - 600) / 2);
    EXPECT_EQ(place.top, (GetSystemMetrics(SM_CYSCREEN) - 400) / 2);
}

TEST_F(GridForm, AnEmptyTableHasOnlyHeaderRows) {
    Edit({});
    EXPECT_EQ(form_->State(fgGrid::kRowCount), 2);
    EXPECT_FALSE(form_->IsEnabled(L"&Edit"));
    EXPECT_FALSE(form_->IsEnabled(L"&Delete"));
    EXPECT_TRUE(form_->IsEnabled(L"&Add"));
    form_->Press(VK_DOWN);
    form_->Press(VK_F2);
    EXPECT_EQ(ExitAndRead(), "edit True\n");
}

TEST_F(GridForm, ATableThatCannotBeOpenedIsFalseWithoutAWindow) {
    Run("Echo \"edit \" & DbfEdit(Args(0) & \">nowhere\", \"x\")\n");
    const std::string output = Output();
    EXPECT_NE(output.find("edit False"), std::string::npos) << output;
    EXPECT_FALSE(form_->isOpen());
}

TEST_F(GridForm, ATableThatCannotBeWrittenSaysSoAndOnlyShows) {
    WritePeople(folder_, FivePeople());
    MakeReadOnly(folder_);
    Run("Echo DbfEdit(Args(0) & \">people\", \"People\")\n");
    ASSERT_TRUE(form_->Open());
    EXPECT_EQ(FormDriver::TextOf(form_->form()), L"People (Not Updateable)");
    for (const wchar_t* caption : {L"&Update", L"&Add", L"&Edit", L"&Delete", L"&Undelete"})
        EXPECT_FALSE(form_->IsShown(caption)) << caption;
    form_->Press(VK_F2);
    form_->Type(L"x");
    EXPECT_EQ(ExitAndRead(), "True\n");
}

TEST_F(GridForm, ReadsOnlyTheRowsThatCanBeSeen) {
    Edit(ManyPeople(20000));
    EXPECT_LE(form_->State(fgGrid::kLoadedRows),
              form_->State(fgGrid::kVisibleEnd) - form_->State(fgGrid::kTopRow) + 3);
    ASSERT_TRUE(form_->Until([&] { return form_->IsAtCell(20001, 4); },
                             [&] {
                                 form_->Press({VK_END, true});
                             }));
    form_->Press(VK_HOME);
    ASSERT_TRUE(form_->WaitForCellText(L"n20000"));
    EXPECT_LT(form_->State(fgGrid::kLoadedRows), 60);
}

TEST_F(GridForm, TheCloseBoxClosesAtOnceAndSavesNothing) {
    Edit(FivePeople());
    form_->Type(L"Zoe");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 1));
    PostMessageW(form_->form(), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(form_->WaitForClose());
    const std::string output = Output();
    EXPECT_EQ(output.substr(0, 9), "edit True");
    EXPECT_EQ(output.find("Zoe"), std::string::npos);
}

TEST_F(GridForm, ExitAsksAboutChangesAndCancelStays) {
    Edit(FivePeople());
    form_->Type(L"Zoe");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 1));
    HWND box = form_->BoxAfter([&] { form_->PushButton(L"E&xit"); });
    ASSERT_TRUE(box);
    EXPECT_EQ(FormDriver::TextOf(box), L"Velmora.Fluxary");
    EXPECT_EQ(FormDriver::BoxText(box), L"The changes to this record have not been saved. Save them now?");
    form_->AnswerBox(box, IDCANCEL);
    EXPECT_TRUE(form_->isOpen());
    EXPECT_EQ(form_->State(fgGrid::kIsDirty), 1);
    box = form_->BoxAfter([&] { form_->PushButton(L"E&xit"); });
    ASSERT_TRUE(box);
    form_->AnswerBox(box, IDNO);
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output().find("Zoe"), std::string::npos);
}

TEST_F(GridForm, ExitSavesWhenTheUserSaysYes) {
    Edit(FivePeople());
    form_->Type(L"Zoe");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 1));
    const HWND box = form_->BoxAfter([&] { form_->Press({'X', false, false, true}); });
    ASSERT_TRUE(box);
    form_->AnswerBox(box, IDYES);
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_NE(Output().find("Zoe|31.5|False"), std::string::npos);
}

TEST_F(GridForm, AddBeginsARecordThatUpdateSaves) {
    Edit(FivePeople());
    form_->PushButton(L"&Add");
    ASSERT_TRUE(form_->WaitForCell(7, 1));
    EXPECT_TRUE(form_->IsEnabled(L"&Update"));
    form_->Type(L"Fred");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForCellText(L"Fred"));
    ASSERT_TRUE(form_->Until([&] { return form_->State(fgGrid::kIsDirty) == 0; },
                             [&] {
                                 form_->Press({'U', false, false, true});
                             }));
    EXPECT_TRUE(form_->WaitForLabel(L"Record 6 of 6"));
    EXPECT_NE(ExitAndRead().find("Fred|"), std::string::npos);
}

TEST_F(GridForm, DeleteAndUndeleteMarkTheRecord) {
    Edit(FivePeople(), ", \"People\", , , , , , , , True");
    form_->PushButton(L"&Delete");
    EXPECT_TRUE(form_->WaitForLabel(L"Deleted"));
    EXPECT_TRUE(form_->IsShown(L"&Undelete"));
    EXPECT_FALSE(form_->IsShown(L"&Delete"));
    EXPECT_EQ(form_->State(fgGrid::kRowCount), 7);
    ASSERT_TRUE(form_->Until([&] { return form_->IsShown(L"&Delete"); }, [&] { form_->Press({'T', true}); }));
    EXPECT_FALSE(form_->ShowsLabel(L"Deleted"));
    form_->Press(VK_DOWN);
    EXPECT_TRUE(form_->Until([&] { return form_->ShowsLabel(L"Deleted"); },
                             [&] {
                                 form_->Press({'T', true});
                             }));
    const std::string output = ExitAndRead();
    EXPECT_NE(output.find("Anna"), std::string::npos);
    EXPECT_EQ(output.find("Bertil"), std::string::npos);
}

TEST_F(GridForm, ARecordChangedElsewhereIsNotOverwritten) {
    Edit(FivePeople());
    form_->Type(L"Mine");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 1));
    {
        const std::wstring script = folder_;
        RunningScript other(
            script, "DbfUpdate Args(0) & \">people\", \"NAME='Anna'\", Array(\"NAME\", \"Theirs\")\n");
        other.Output();
    }
    const HWND box = form_->BoxAfter([&] { form_->Press({'U', false, false, true}); });
    ASSERT_TRUE(box);
    EXPECT_EQ(FormDriver::BoxText(box), L"Unable to update Record");
    form_->AnswerBox(box, IDOK);
    EXPECT_EQ(form_->State(fgGrid::kIsDirty), 1);
    EXPECT_EQ(form_->CellText(), L"Mine");
}

TEST_F(GridForm, IsModalToTheHostsWindow) {
    const HWND owner = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 200,
                                       100, nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(owner);
    WritePeople(folder_, FivePeople());
    Run("Engine.SetOwnerWindow " + std::to_string(reinterpret_cast<LONG_PTR>(owner)) +
        "\nEcho DbfEdit(Args(0) & \">people\", \"People\")\n");
    ASSERT_TRUE(form_->Open());
    EXPECT_EQ(GetWindow(form_->form(), GW_OWNER), owner);
    EXPECT_FALSE(IsWindowEnabled(owner));
    EXPECT_EQ(ExitAndRead(), "True\n");
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

TEST_F(GridForm, OpensFromAnotherScriptHostToo) {
    WritePeople(folder_, FivePeople());
    Run("Set functions = CreateObject(\"ZuDBFFunctions.Functions\")\n"
        "WScript.Echo functions.DbfEdit(WScript.Arguments(0) & \">people\", \"People\")\n",
        RunningScript::Host::kCscript);
    ASSERT_TRUE(form_->Open());
    EXPECT_EQ(form_->CellText(), L"Anna");
    EXPECT_EQ(ExitAndRead(), "-1\n");
}

}  // namespace
}  // namespace zu::windows
