#include "portable/grid/KeyCommand.h"

#include <gtest/gtest.h>

namespace zu::grid {
namespace {

KeyStroke Plain(Key key) {
    return {static_cast<unsigned>(key), false, false};
}
KeyStroke Control(Key key) {
    return {static_cast<unsigned>(key), true, false};
}
KeyStroke Shifted(Key key) {
    return {static_cast<unsigned>(key), false, true};
}

TEST(KeyCommand, ArrowsMoveByOneCell) {
    const KeyAction action = ActionFor(Plain(Key::kDown));
    EXPECT_EQ(action.command, Command::kMove);
    EXPECT_EQ(action.motion, Motion::kDown);
    EXPECT_EQ(ActionFor(Plain(Key::kLeft)).motion, Motion::kLeft);
}

TEST(KeyCommand, HomeAndEndStayInTheRowUnlessControlIsDown) {
    EXPECT_EQ(ActionFor(Plain(Key::kHome)).motion, Motion::kRowStart);
    EXPECT_EQ(ActionFor(Plain(Key::kEnd)).motion, Motion::kRowEnd);
    EXPECT_EQ(ActionFor(Control(Key::kHome)).motion, Motion::kFirstCell);
    EXPECT_EQ(ActionFor(Control(Key::kEnd)).motion, Motion::kLastCell);
}

TEST(KeyCommand, EditingSearchingAndCopyingHaveTheirUsualKeys) {
    EXPECT_EQ(ActionFor(Plain(Key::kF2)).command, Command::kEdit);
    EXPECT_EQ(ActionFor(Control(Key::kF)).command, Command::kSearch);
    EXPECT_EQ(ActionFor(Plain(Key::kF3)).command, Command::kFindNext);
    EXPECT_EQ(ActionFor(Control(Key::kC)).command, Command::kCopyCell);
    EXPECT_EQ(ActionFor({static_cast<unsigned>(Key::kC), true, true}).command, Command::kCopyRowWithHeadings);
    EXPECT_EQ(ActionFor(Control(Key::kV)).command, Command::kPaste);
    EXPECT_EQ(ActionFor(Plain(Key::kEscape)).command, Command::kEscape);
    EXPECT_EQ(ActionFor(Control(Key::kT)).command, Command::kToggleDeleted);
    EXPECT_EQ(ActionFor(Plain(Key::kInsert)).command, Command::kAdd);
    EXPECT_EQ(ActionFor(Shifted(Key::kInsert)).command, Command::kPaste);
}

TEST(KeyCommand, LettersAloneAreNoCommands) {
    EXPECT_EQ(ActionFor(Plain(Key::kF)).command, Command::kNone);
    EXPECT_EQ(ActionFor(Plain(Key::kC)).command, Command::kNone);
    EXPECT_EQ(ActionFor(Plain(Key::kTab)).command, Command::kNone);
}

TEST(KeyCommand, EnterEscapeAndTabEndAnEdit) {
    EXPECT_EQ(EditorActionFor(Plain(Key::kEnter), false), EditorCommand::kAccept);
    EXPECT_EQ(EditorActionFor(Plain(Key::kEscape), false), EditorCommand::kCancel);
    EXPECT_EQ(EditorActionFor(Plain(Key::kTab), false), EditorCommand::kNextCell);
    EXPECT_EQ(EditorActionFor(Shifted(Key::kTab), false), EditorCommand::kPreviousCell);
}

TEST(KeyCommand, UpAndDownLeaveALineButNotATextOfSeveralLines) {
    EXPECT_EQ(EditorActionFor(Plain(Key::kDown), false), EditorCommand::kRowDown);
    EXPECT_EQ(EditorActionFor(Plain(Key::kUp), false), EditorCommand::kRowUp);
    EXPECT_EQ(EditorActionFor(Plain(Key::kDown), true), EditorCommand::kNone);
}

TEST(KeyCommand, LeftAndRightBelongToTheEditedText) {
    EXPECT_EQ(EditorActionFor(Plain(Key::kLeft), false), EditorCommand::kNone);
    EXPECT_EQ(EditorActionFor(Control(Key::kRight), false), EditorCommand::kNone);
    EXPECT_EQ(EditorActionFor(Plain(Key::kHome), false), EditorCommand::kNone);
}

TEST(KeyCommand, ControlEnterIsANewLineInATextOfSeveralLines) {
    EXPECT_EQ(EditorActionFor(Control(Key::kEnter), true), EditorCommand::kNewLine);
    EXPECT_EQ(EditorActionFor(Control(Key::kEnter), false), EditorCommand::kAccept);
    EXPECT_EQ(EditorActionFor(Plain(Key::kEnter), true), EditorCommand::kAccept);
}

}  // namespace
}  // namespace zu::grid
