// Moving and editing with keys and mouse.
#include "tests/windows/WindowTest.h"

namespace zu::windows {
namespace {

class GridEditing : public WindowTest {
protected:
    /// The button goes down and up in the heading, and no move is told in between.
    void DragWithoutMoves(LONG from, LONG to) const {
        SendMessageW(form_->gridWindow(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 8));
        SendMessageW(form_->gridWindow(), WM_LBUTTONUP, 0, MAKELPARAM(to, 8));
    }
};

TEST_F(GridEditing, KeysMoveTheCurrentCell) {
    Edit(ManyPeople(100));
    form_->Press(VK_DOWN);
    form_->Press(VK_RIGHT);
    EXPECT_TRUE(form_->WaitForCell(3, 2));
    form_->Press(VK_END);
    EXPECT_TRUE(form_->WaitForCell(3, 4));
    form_->Press(VK_HOME);
    EXPECT_TRUE(form_->WaitForCell(3, 1));
    EXPECT_TRUE(form_->Until([&] { return form_->IsAtCell(101, 4); }, [&] { form_->Press({VK_END, true}); }));
    EXPECT_TRUE(form_->Until([&] { return form_->IsAtCell(2, 1); }, [&] { form_->Press({VK_HOME, true}); }));
    form_->Press(VK_NEXT);
    EXPECT_TRUE(script_->WaitFor([&] { return form_->State(fgGrid::kCurrentRow) > 8; }));
    form_->Press(VK_PRIOR);
    EXPECT_TRUE(form_->WaitForCell(2, 1));
}

TEST_F(GridEditing, EnterMovesByTheDirectionAndEditsThere) {
    Edit(FivePeople(), ", \"People\", , \"dOwN\"");
    form_->Press(VK_F2);
    ASSERT_TRUE(form_->WaitForEditor(true));
    EXPECT_EQ(FormDriver::TextOf(form_->Editor()), L"Anna");
    form_->Type(L"Zoe");
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    ASSERT_TRUE(form_->WaitForEditor(true));
    EXPECT_EQ(FormDriver::TextOf(form_->Editor()), L"Bertil");
    form_->Press(VK_ESCAPE);
    EXPECT_TRUE(form_->WaitForEditor(false));
    EXPECT_NE(ExitAndRead().find("Zoe|31.5"), std::string::npos);
}

TEST_F(GridEditing, WithoutADirectionEnterStays) {
    Edit(FivePeople(), ", \"People\", , 5");
    form_->Press(VK_F2);
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Type(L"Zoe");
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForEditor(false));
    EXPECT_TRUE(form_->WaitForCell(2, 1));
    EXPECT_EQ(form_->CellText(), L"Zoe");
    EXPECT_TRUE(form_->IsEnabled(L"&Update"));
}

TEST_F(GridEditing, EscapeLeavesTheEditThenTheRecordThenTheWindow) {
    Edit(FivePeople());
    form_->Type(L"Zoe");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 1));
    form_->Press(VK_F2);
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_ESCAPE);
    ASSERT_TRUE(form_->WaitForEditor(false));
    EXPECT_EQ(form_->State(fgGrid::kIsDirty), 1);
    form_->Press(VK_ESCAPE);
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 0));
    EXPECT_TRUE(form_->WaitForCellText(L"Anna"));
    form_->Press(VK_ESCAPE);
    EXPECT_TRUE(form_->WaitForClose());
}

TEST_F(GridEditing, TabStoresAndEditsTheNextCell) {
    Edit(FivePeople());
    form_->Press(VK_F2);
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Type(L"Zoe");
    form_->Press(VK_TAB);
    ASSERT_TRUE(form_->WaitForCell(2, 2));
    ASSERT_TRUE(form_->WaitForEditor(true));
    EXPECT_EQ(FormDriver::TextOf(form_->Editor()), L"31.5");
    ASSERT_TRUE(form_->Until([&] { return form_->IsAtCell(2, 1); },
                             [&] {
                                 form_->Press({VK_TAB, false, true});
                             }));
}

TEST_F(GridEditing, AValueThatDoesNotFitIsExplainedAndStaysInItsBox) {
    Edit(FivePeople());
    form_->Press(VK_RIGHT);
    ASSERT_TRUE(form_->WaitForCell(2, 2));
    form_->Type(L"apples");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_RETURN);
    EXPECT_TRUE(form_->WaitForState(fgGrid::kNoteShown, 1));
    ASSERT_TRUE(form_->Editor());
    EXPECT_EQ(FormDriver::TextOf(form_->Editor()), L"apples");
    EXPECT_EQ(form_->State(fgGrid::kIsDirty), 0);
    form_->Press(VK_ESCAPE);
    EXPECT_TRUE(form_->WaitForEditor(false));
    EXPECT_EQ(form_->CellText(), L"31.5");
}

TEST_F(GridEditing, SpaceTogglesATruthValue) {
    Edit(FivePeople());
    form_->Press(VK_END);
    ASSERT_TRUE(form_->WaitForCell(2, 4));
    EXPECT_EQ(form_->CellText(), L"True");
    form_->Press(VK_SPACE);
    EXPECT_TRUE(form_->WaitForCellText(L"False"));
    EXPECT_EQ(form_->State(fgGrid::kIsDirty), 1);
}

TEST_F(GridEditing, LeavingTheRowSavesTheRecord) {
    Edit(FivePeople());
    form_->Type(L"Zoe");
    ASSERT_TRUE(form_->WaitForEditor(true));
    form_->Press(VK_DOWN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    form_->Press(VK_ESCAPE);
    ASSERT_TRUE(form_->WaitForEditor(false));
    ASSERT_TRUE(form_->WaitForState(fgGrid::kIsDirty, 0));
    EXPECT_NE(ExitAndRead().find("Zoe|31.5"), std::string::npos);
}

TEST_F(GridEditing, AClickMovesAndADoubleClickEdits) {
    Edit(FivePeople());
    form_->Click(form_->MiddleOf(4, 2));
    EXPECT_TRUE(form_->WaitForCell(4, 2));
    EXPECT_EQ(form_->CellText(), L"7.0");
    form_->DoubleClick(form_->MiddleOf(3, 1));
    ASSERT_TRUE(form_->WaitForEditor(true));
    EXPECT_EQ(FormDriver::TextOf(form_->Editor()), L"Bertil");
    form_->Click(form_->MiddleOf(5, 1));
    EXPECT_TRUE(form_->WaitForCell(5, 1));
    EXPECT_FALSE(form_->Editor());
}

TEST_F(GridEditing, TheWheelScrollsAndLeavesTheCurrentCell) {
    Edit(ManyPeople(100));
    form_->Wheel(-1, form_->MiddleOf(4, 1));
    EXPECT_TRUE(form_->WaitForState(fgGrid::kTopRow, 5));
    EXPECT_TRUE(form_->WaitForCell(2, 1));
    form_->Press(VK_DOWN);
    EXPECT_TRUE(form_->WaitForState(fgGrid::kTopRow, 3));
}

TEST_F(GridEditing, AColumnIsResizedByDraggingItsEdgeAndFittedByADoubleClick) {
    Edit(FivePeople());
    const LONG width = static_cast<LONG>(form_->State(fgGrid::kColumnWidth, 1));
    form_->Drag({width - 1, 8}, {width + 59, 8});
    ASSERT_TRUE(script_->WaitFor([&] { return form_->State(fgGrid::kColumnWidth, 1) == width + 60; }));
    form_->DoubleClick({width + 59, 8});
    EXPECT_TRUE(script_->WaitFor([&] { return form_->State(fgGrid::kColumnWidth, 1) < width; }));
}

TEST_F(GridEditing, AColumnIsAsWideAsWhereTheButtonWasReleased) {
    Edit(FivePeople());
    const LONG width = static_cast<LONG>(form_->State(fgGrid::kColumnWidth, 1));
    DragWithoutMoves(width - 1, width + 24);
    EXPECT_EQ(form_->State(fgGrid::kColumnWidth, 1), width + 25);
}

TEST_F(GridEditing, TheMouseAtRestOnACellThatIsCutOffShowsItsWholeText) {
    Edit(FivePeople());
    const LONG width = static_cast<LONG>(form_->State(fgGrid::kColumnWidth, 1));
    DragWithoutMoves(width - 1, 29);
    const auto restOn = [&](LRESULT row, int column, LRESULT tip) {
        return form_->Until([&] { return form_->State(fgGrid::kTipShown) == tip; },
                            [&] { form_->RestAt(form_->MiddleOf(row, column)); });
    };
    EXPECT_TRUE(restOn(3, 1, 1));
    // Ages fit into their column.
    EXPECT_TRUE(restOn(3, 2, 0));
    SendMessageW(form_->gridWindow(), WM_MOUSEHOVER, 0, 0);
    EXPECT_EQ(form_->State(fgGrid::kTipShown), 0);
    EXPECT_TRUE(restOn(4, 1, 1));
    form_->Press(VK_DOWN);
    EXPECT_TRUE(form_->WaitForState(fgGrid::kTipShown, 0));
}

TEST_F(GridEditing, CopiesACellAndARowWithItsHeadings) {
    Edit(FivePeople());
    const auto clipboard = [] {
        std::wstring text;
        if (!OpenClipboard(nullptr)) return text;
        if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
            text = static_cast<const wchar_t*>(GlobalLock(memory));
            GlobalUnlock(memory);
        }
        CloseClipboard();
        return text;
    };
    EXPECT_TRUE(form_->Until([&] { return clipboard() == L"Anna"; }, [&] { form_->Press({'C', true}); }));
    EXPECT_TRUE(
        form_->Until([&] { return clipboard().rfind(L"NAME\tAGE\tBORN\tMEMBER\r\nAnna\t31.5\t", 0) == 0; },
                     [&] {
                         form_->Press({'C', true, true});
                     }));
}

TEST_F(GridEditing, PastesIntoTheCell) {
    Edit(FivePeople());
    form_->Press({'C', true});
    form_->Press(VK_DOWN);
    ASSERT_TRUE(form_->WaitForCell(3, 1));
    form_->Press({'V', true});
    EXPECT_TRUE(form_->WaitForCellText(L"Anna"));
    EXPECT_EQ(form_->State(fgGrid::kIsDirty), 1);
}

}  // namespace
}  // namespace zu::windows
