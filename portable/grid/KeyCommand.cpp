#include "portable/grid/KeyCommand.h"

namespace zu::grid {

namespace {

struct MotionKey {
    Key key;
    bool control;
    Motion motion;
};

constexpr MotionKey kMotions[] = {
    {Key::kLeft, false, Motion::kLeft},     {Key::kRight, false, Motion::kRight},
    {Key::kUp, false, Motion::kUp},         {Key::kDown, false, Motion::kDown},
    {Key::kPageUp, false, Motion::kPageUp}, {Key::kPageDown, false, Motion::kPageDown},
    {Key::kHome, false, Motion::kRowStart}, {Key::kEnd, false, Motion::kRowEnd},
    {Key::kLeft, true, Motion::kRowStart},  {Key::kRight, true, Motion::kRowEnd},
    {Key::kUp, true, Motion::kFirstRow},    {Key::kDown, true, Motion::kLastRow},
    {Key::kHome, true, Motion::kFirstCell}, {Key::kEnd, true, Motion::kLastCell},
};

enum class Shift { kUp, kDown, kEither };

struct CommandKey {
    Key key;
    bool control;
    Shift shift;
    Command command;
};

constexpr CommandKey kCommands[] = {
    {Key::kF2, false, Shift::kUp, Command::kEdit},
    {Key::kEnter, false, Shift::kEither, Command::kEnter},
    {Key::kSpace, false, Shift::kUp, Command::kToggle},
    {Key::kDelete, false, Shift::kUp, Command::kClear},
    {Key::kInsert, false, Shift::kUp, Command::kAdd},
    {Key::kT, true, Shift::kUp, Command::kToggleDeleted},
    {Key::kF, true, Shift::kUp, Command::kSearch},
    {Key::kF3, false, Shift::kEither, Command::kFindNext},
    {Key::kC, true, Shift::kUp, Command::kCopyCell},
    {Key::kInsert, true, Shift::kUp, Command::kCopyCell},
    {Key::kC, true, Shift::kDown, Command::kCopyRowWithHeadings},
    {Key::kV, true, Shift::kUp, Command::kPaste},
    {Key::kInsert, false, Shift::kDown, Command::kPaste},
    {Key::kEscape, false, Shift::kUp, Command::kEscape},
};

bool Fits(Shift wanted, bool down) noexcept {
    return wanted == Shift::kEither || (wanted == Shift::kDown) == down;
}

}  // namespace

KeyAction ActionFor(const KeyStroke& stroke) noexcept {
    for (const MotionKey& known : kMotions)
        if (static_cast<unsigned>(known.key) == stroke.key && known.control == stroke.control)
            return {Command::kMove, known.motion};
    for (const CommandKey& known : kCommands)
        if (static_cast<unsigned>(known.key) == stroke.key && known.control == stroke.control &&
            Fits(known.shift, stroke.shift))
            return {known.command, Motion::kLeft};
    return {};
}

EditorCommand EditorActionFor(const KeyStroke& stroke, bool severalLines) noexcept {
    switch (static_cast<Key>(stroke.key)) {
        case Key::kEnter:
            if (stroke.control) return severalLines ? EditorCommand::kNewLine : EditorCommand::kAccept;
            return EditorCommand::kAccept;
        case Key::kEscape:
            return EditorCommand::kCancel;
        case Key::kTab:
            return stroke.shift ? EditorCommand::kPreviousCell : EditorCommand::kNextCell;
        case Key::kUp:
            return severalLines || stroke.control ? EditorCommand::kNone : EditorCommand::kRowUp;
        case Key::kDown:
            return severalLines || stroke.control ? EditorCommand::kNone : EditorCommand::kRowDown;
        case Key::kF2:
            return EditorCommand::kSelectNothing;
        case Key::kF3:
            return EditorCommand::kFindNext;
        default:
            return EditorCommand::kNone;
    }
}

}  // namespace zu::grid
