#pragma once

#include <optional>

#include "portable/grid/Motion.h"

namespace zu::grid {

/// The keys that the grid knows, by the numbers that the system gives them.
enum class Key : unsigned {
    kTab = 0x09,
    kEnter = 0x0D,
    kEscape = 0x1B,
    kSpace = 0x20,
    kPageUp = 0x21,
    kPageDown = 0x22,
    kEnd = 0x23,
    kHome = 0x24,
    kLeft = 0x25,
    kUp = 0x26,
    kRight = 0x27,
    kDown = 0x28,
    kInsert = 0x2D,
    kDelete = 0x2E,
    kC = 0x43,
    kF = 0x46,
    kT = 0x54,
    kV = 0x56,
    kF2 = 0x71,
    kF3 = 0x72,
};

/// A key with the modifiers that were down.
struct KeyStroke {
    unsigned key = 0;
    bool control = false;
    bool shift = false;
};

enum class Command {
    kNone,
    kMove,
    kEdit,    ///< open the editor with the cell's text
    kEnter,   ///< edit, or choose the record in pick mode
    kToggle,  ///< the other truth value
    kClear,   ///< an empty cell
    kAdd,
    kToggleDeleted,
    kSearch,
    kFindNext,
    kCopyCell,
    kCopyRow,
    kCopyRowWithHeadings,
    kPaste,
    kEscape,  ///< drop the record's changes, or leave
};

struct KeyAction {
    Command command = Command::kNone;
    Motion motion = Motion::kLeft;  ///< for kMove
};

/// What a key means in the grid while no editor is open.
KeyAction ActionFor(const KeyStroke& stroke) noexcept;

enum class EditorCommand {
    kNone,    ///< belongs to the text
    kAccept,  ///< store, and go on by the direction of Enter
    kCancel,
    kNextCell,  ///< store, and edit the next cell of the row
    kPreviousCell,
    kRowDown,  ///< store, and edit the same column of the next row
    kRowUp,
    kNewLine,
    kFindNext,
    kSelectNothing,  ///< the caret to the end of the text
};

/// What a key means in the cell editor. In a text of several lines the arrows belong to the text.
EditorCommand EditorActionFor(const KeyStroke& stroke, bool severalLines) noexcept;

}  // namespace zu::grid
