#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "tests/windows/RunningScript.h"

namespace zu::windows {

/// Keys with the modifiers that are held down meanwhile.
struct Chord {
    WORD key;
    bool control = false;
    bool shift = false;
    bool alt = false;
};

/// Drives the grid's window of a running script as a user does, with real keys and a real mouse, and reads
/// what the screen says.
class FormDriver {
public:
    explicit FormDriver(const RunningScript& script) : script_(script) {}

    /// Waits until the window is there and its grid has the focus.
    bool Open();
    bool isOpen() const;
    HWND form() const noexcept { return form_; }
    HWND gridWindow() const noexcept { return grid_; }

    /// Acts, and acts again as long as nothing comes of it. On a busy machine the desktop's own events come
    /// between the strokes of a chord, or move the pointer between pressing a button and letting it go, and
    /// the action is lost. For actions that may be repeated.
    bool Until(const std::function<bool()>& shows, const std::function<void()>& action) const;

    void Press(Chord chord) const;
    void Press(WORD key) const { Press(Chord{key}); }
    void Type(const std::wstring& text) const;
    /// Places in the grid's inner coordinates.
    void Click(POINT at) const;
    void DoubleClick(POINT at) const;
    void Drag(POINT from, POINT to) const;
    void Wheel(int notches, POINT at) const;
    /// Moves the mouse there and lets it rest.
    void RestAt(POINT at) const;

    /// One number of the grid's state; see fgGrid::State.
    LRESULT State(WPARAM what, LPARAM which = 0) const;
    bool IsAtCell(LRESULT row, LRESULT column) const;
    bool WaitForCell(LRESULT row, LRESULT column) const;
    bool WaitForState(WPARAM what, LRESULT value) const;
    POINT MiddleOf(LRESULT row, int column) const;

    std::wstring CellText() const { return TextOf(grid_); }
    bool WaitForCellText(const std::wstring& text) const;
    /// The text box of the cell editor; null while none is open.
    HWND Editor() const;
    bool WaitForEditor(bool open) const;

    /// A button by its caption, "&" included.
    HWND Button(const std::wstring& caption) const;
    bool IsShown(const std::wstring& caption) const;
    bool IsEnabled(const std::wstring& caption) const;
    void PushButton(const std::wstring& caption) const;
    /// The visible label with this text.
    bool ShowsLabel(const std::wstring& text) const;
    bool WaitForLabel(const std::wstring& text) const;

    /// A message box of the form, when it is there and in front; null when not.
    HWND Box() const;
    /// The same, waited for.
    HWND WaitForBox() const;
    /// Pushes Exit until the form has gone.
    bool Exit() const;
    /// Acts until a message box shows.
    HWND BoxAfter(const std::function<void()>& action) const;
    static std::wstring BoxText(HWND box);
    void AnswerBox(HWND box, int button) const;
    bool WaitForClose() const;

    HWND SearchDialog() const;
    bool WaitForDialog(bool visible) const;

    static std::wstring TextOf(HWND window);

private:
    HWND FindChild(const wchar_t* className, const std::wstring& text, bool visible) const;

    const RunningScript& script_;
    HWND form_ = nullptr;
    HWND grid_ = nullptr;
};

}  // namespace zu::windows
