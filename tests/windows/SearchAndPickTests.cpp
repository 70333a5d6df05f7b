// The search dialog, and choosing a record.
#include "component/ui/frmDBfEditSearch.h"
#include "tests/windows/WindowTest.h"

namespace zu::windows {
namespace {

using Dialog = component::frmDBfEditSearch;

class GridSearchDialog : public WindowTest {
protected:
    void OpenSearch() {
        ASSERT_TRUE(form_->Until([&] { return form_->SearchDialog() != nullptr; },
                                 [&] {
                                     form_->Press({'F', true});
                                 }));
        ASSERT_TRUE(form_->WaitForDialog(true));
        dialog_ = form_->SearchDialog();
    }
    HWND Control(int id) const { return GetDlgItem(dialog_, id); }
    void Write(const wchar_t* text) const {
        SendMessageW(Control(Dialog::kSearchText), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    }
    void Check(int id) const { SendMessageW(Control(id), BM_CLICK, 0, 0); }

    HWND dialog_ = nullptr;
};

TEST_F(GridSearchDialog, IsPresetToTheCurrentColumn) {
    Edit(FivePeople());
    form_->Press(VK_RIGHT);
    ASSERT_TRUE(form_->WaitForCell(2, 2));
    OpenSearch();
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kFieldName)), L"AGE");
    EXPECT_EQ(SendMessageW(Control(Dialog::kFieldName), CB_GETCOUNT, 0, 0), 4);
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kFieldNameLabel)), L"Field To Search:");
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kStartAtTop)), L"Start from Top");
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kLoop)), L"Search loops when last record");
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kPattern)), L"Use Pattern Matching");
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kFind)), L"Find &Next");
    EXPECT_EQ(FormDriver::TextOf(Control(Dialog::kCancel)), L"&Cancel");
    form_->Press(VK_ESCAPE);
    EXPECT_TRUE(form_->WaitForDialog(false));
    EXPECT_TRUE(form_->isOpen());
}

TEST_F(GridSearchDialog, FindsTheNextRecordAndKeepsTheFocus) {
    Edit(FivePeople());
    OpenSearch();
    form_->Type(L"ev");
    form_->Press(VK_RETURN);
    EXPECT_TRUE(form_->WaitForCell(6, 1));
    EXPECT_EQ(GetForegroundWindow(), dialog_);
}

TEST_F(GridSearchDialog, SaysWhatWasNotFound) {
    Edit(FivePeople());
    OpenSearch();
    form_->Type(L"Nobody");
    form_->Press(VK_RETURN);
    const HWND box = form_->WaitForBox();
    ASSERT_TRUE(box);
    EXPECT_EQ(FormDriver::BoxText(box), L"\"Nobody\" was not found.");
    form_->AnswerBox(box, IDOK);
    EXPECT_TRUE(form_->WaitForCell(2, 1));
}

TEST_F(GridSearchDialog, StartsFromTheTopOnce) {
    Edit(ManyPeople(30));
    ASSERT_TRUE(form_->Until([&] { return form_->IsAtCell(31, 1); }, [&] { form_->Press({VK_DOWN, true}); }));
    OpenSearch();
    Write(L"n");
    Check(Dialog::kStartAtTop);
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForCell(2, 1));
    EXPECT_EQ(SendMessageW(Control(Dialog::kStartAtTop), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    form_->Press(VK_F3);
    EXPECT_TRUE(form_->WaitForCell(3, 1));
}

TEST_F(GridSearchDialog, SearchesOnFromTheGridWithF3AndLoops) {
    Edit(FivePeople());
    OpenSearch();
    Write(L"[AB]*");
    Check(Dialog::kLoop);
    Check(Dialog::kPattern);
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    form_->Press(VK_ESCAPE);
    ASSERT_TRUE(form_->WaitForDialog(false));
    form_->Press(VK_F3);
    EXPECT_TRUE(form_->WaitForCell(2, 1));
    form_->Press(VK_F3);
    EXPECT_TRUE(form_->WaitForCell(3, 1));
}

class GridPick : public WindowTest {};

TEST_F(GridPick, AnswersTheViewOnTheChosenRecord) {
    Pick(FivePeople());
    EXPECT_TRUE(form_->IsShown(L"&Select"));
    EXPECT_TRUE(form_->IsShown(L"&Cancel"));
    for (const wchar_t* caption : {L"&Update", L"&Add", L"&Edit", L"&Delete", L"E&xit"})
        EXPECT_FALSE(form_->IsShown(caption)) << caption;
    form_->Press(VK_DOWN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    EXPECT_TRUE(form_->Until([&] { return !form_->isOpen(); },
                             [&] {
                                 form_->Press({'S', false, false, true});
                             }));
    EXPECT_EQ(Output(), "picked Bertil\n");
}

TEST_F(GridPick, IsReadOnly) {
    Pick(FivePeople());
    form_->Press(VK_F2);
    form_->Type(L"x");
    form_->Press(VK_DOWN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    EXPECT_FALSE(form_->Editor());
}

TEST_F(GridPick, EnterAndADoubleClickChoose) {
    Pick(FivePeople());
    form_->DoubleClick(form_->MiddleOf(4, 1));
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output(), "picked Cecilia\n");
}

TEST_F(GridPick, CancelledItAnswersNothing) {
    Pick(FivePeople());
    form_->Press({'C', false, false, true});
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output(), "nothing\n");
}

TEST_F(GridPick, AnswersOneFieldWhenItIsAskedFor) {
    WritePeople(folder_, FivePeople());
    Run("Dim field\nSet field = DbfPick(Args(0) & \">people\", \"x\", , , , , , , \"NAME\")\nEcho "
        "field.Value\n"
        "Echo VarType(DbfPick(Args(0) & \">people\", \"x\", , , , , , , \"NAME\"))\n");
    ASSERT_TRUE(form_->Open());
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForClose());
    ASSERT_TRUE(form_->Open());
    form_->Press(VK_ESCAPE);
    ASSERT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output(), "Anna\n0\n");
}

TEST_F(GridPick, TheCloseBoxChoosesNothing) {
    Pick(FivePeople());
    PostMessageW(form_->form(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(form_->WaitForClose());
    EXPECT_EQ(Output(), "nothing\n");
}

}  // namespace
}  // namespace zu::windows
