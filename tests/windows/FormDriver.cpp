#include "tests/windows/FormDriver.h"

#include <chrono>

#include "component/ui/fgGrid.h"

namespace zu::windows {

using component::fgGrid;

namespace {

constexpr UINT kAnswerLimit = 5000;

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerLimit, &answer);
    return static_cast<LRESULT>(answer);
}

INPUT KeyInput(WORD key, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    const bool extended = (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE;
    input.ki.dwFlags = (up ? KEYEVENTF_KEYUP : 0) | (extended ? KEYEVENTF_EXTENDEDKEY : 0);
    return input;
}

void Send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

/// The mouse at a place of the screen. Place and button travel together: a pointer that is only set could be
/// moved back by events that are still on their way.
INPUT MouseAt(POINT at, DWORD flags, int data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = MulDiv(at.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
    input.mi.dy = MulDiv(at.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | flags;
    input.mi.mouseData = static_cast<DWORD>(data);
    return input;
}

void ClickAt(POINT at) {
    Send({MouseAt(at, 0), MouseAt(at, MOUSEEVENTF_LEFTDOWN), MouseAt(at, MOUSEEVENTF_LEFTUP)});
}

struct Search {
    const wchar_t* className;
    std::wstring text;
    bool visible;
    DWORD process;
    HWND found;
};

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

BOOL CALLBACK Compare(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (search.process && process != search.process) return TRUE;
    if (search.visible && !IsWindowVisible(window)) return TRUE;
    if (ClassOf(window) != search.className) return TRUE;
    if (!search.text.empty() && FormDriver::TextOf(window) != search.text) return TRUE;
    search.found = window;
    return FALSE;
}

HWND TopWindow(const wchar_t* className, DWORD process) {
    Search search{className, {}, true, process, nullptr};
    EnumWindows(&Compare, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace

std::wstring FormDriver::TextOf(HWND window) {
    const LRESULT length = Ask(window, WM_GETTEXTLENGTH);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

bool FormDriver::Open() {
    return script_.WaitFor([this] {
        form_ = TopWindow(L"frmDBFEdit", script_.process());
        grid_ = form_ ? FindWindowExW(form_, nullptr, L"fgGrid", nullptr) : nullptr;
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        return grid_ && GetGUIThreadInfo(GetWindowThreadProcessId(form_, nullptr), &info) &&
               info.hwndFocus == grid_ && GetForegroundWindow() == form_;
    });
}

bool FormDriver::isOpen() const {
    return IsWindow(form_) && IsWindowVisible(form_);
}

bool FormDriver::Until(const std::function<bool()>& shows, const std::function<void()>& action) const {
    constexpr int kAttempts = 5;
    constexpr std::chrono::seconds kPatience{4};
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        action();
        if (WaitUntil(shows, kPatience)) return true;
    }
    return false;
}

void FormDriver::Press(Chord chord) const {
    std::vector<WORD> held;
    if (chord.control) held.push_back(VK_CONTROL);
    if (chord.shift) held.push_back(VK_SHIFT);
    if (chord.alt) held.push_back(VK_MENU);
    std::vector<INPUT> inputs;
    for (const WORD key : held)
        inputs.push_back(KeyInput(key, false));
    inputs.push_back(KeyInput(chord.key, false));
    inputs.push_back(KeyInput(chord.key, true));
    for (auto key = held.rbegin(); key != held.rend(); ++key)
        inputs.push_back(KeyInput(*key, true));
    Send(std::move(inputs));
}

void FormDriver::Type(const std::wstring& text) const {
    std::vector<INPUT> inputs;
    for (const wchar_t character : text) {
        for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wScan = static_cast<WORD>(character);
            input.ki.dwFlags = KEYEVENTF_UNICODE | up;
            inputs.push_back(input);
        }
    }
    Send(std::move(inputs));
}

void FormDriver::Click(POINT at) const {
    ClientToScreen(grid_, &at);
    ClickAt(at);
}

void FormDriver::DoubleClick(POINT at) const {
    Click(at);
    Click(at);
}

void FormDriver::Drag(POINT from, POINT to) const {
    ClientToScreen(grid_, &from);
    ClientToScreen(grid_, &to);
    const POINT middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
    Send({MouseAt(from, 0), MouseAt(from, MOUSEEVENTF_LEFTDOWN), MouseAt(middle, 0), MouseAt(to, 0),
          MouseAt(to, MOUSEEVENTF_LEFTUP)});
}

void FormDriver::Wheel(int notches, POINT at) const {
    ClientToScreen(grid_, &at);
    Send({MouseAt(at, 0), MouseAt(at, MOUSEEVENTF_WHEEL, notches * WHEEL_DELTA)});
}

void FormDriver::RestAt(POINT at) const {
    ClientToScreen(grid_, &at);
    Send({MouseAt({at.x - 1, at.y}, 0), MouseAt(at, 0)});
}

LRESULT FormDriver::State(WPARAM what, LPARAM which) const {
    return Ask(grid_, fgGrid::StateMessage(), what, which);
}

bool FormDriver::WaitForState(WPARAM what, LRESULT value) const {
    return script_.WaitFor([&] { return State(what) == value; });
}

bool FormDriver::IsAtCell(LRESULT row, LRESULT column) const {
    return State(fgGrid::kCurrentRow) == row && State(fgGrid::kCurrentColumn) == column;
}

bool FormDriver::WaitForCell(LRESULT row, LRESULT column) const {
    return script_.WaitFor([&] { return IsAtCell(row, column); });
}

bool FormDriver::WaitForCellText(const std::wstring& text) const {
    return script_.WaitFor([&] { return CellText() == text; });
}

POINT FormDriver::MiddleOf(LRESULT row, int column) const {
    const LRESULT height = State(fgGrid::kRowHeight);
    const LRESULT top = State(fgGrid::kHeaderHeight) + (row - State(fgGrid::kTopRow)) * height;
    const LRESULT left = State(fgGrid::kColumnLeft, column);
    return {static_cast<LONG>(left + State(fgGrid::kColumnWidth, column) / 2),
            static_cast<LONG>(top + height / 2)};
}

HWND FormDriver::FindChild(const wchar_t* className, const std::wstring& text, bool visible) const {
    Search search{className, text, visible, 0, nullptr};
    EnumChildWindows(form_, &Compare, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FormDriver::Editor() const {
    return FindWindowExW(grid_, nullptr, L"Edit", nullptr);
}

bool FormDriver::WaitForEditor(bool open) const {
    return script_.WaitFor([&] { return (Editor() != nullptr) == open; });
}

HWND FormDriver::Button(const std::wstring& caption) const {
    return FindChild(L"Button", caption, false);
}

bool FormDriver::IsShown(const std::wstring& caption) const {
    return IsWindowVisible(Button(caption)) != FALSE;
}

bool FormDriver::IsEnabled(const std::wstring& caption) const {
    return IsWindowEnabled(Button(caption)) != FALSE;
}

void FormDriver::PushButton(const std::wstring& caption) const {
    RECT place{};
    GetWindowRect(Button(caption), &place);
    ClickAt({(place.left + place.right) / 2, (place.top + place.bottom) / 2});
}

bool FormDriver::ShowsLabel(const std::wstring& text) const {
    return FindChild(L"Static", text, true) != nullptr;
}

bool FormDriver::WaitForLabel(const std::wstring& text) const {
    return script_.WaitFor([&] { return ShowsLabel(text); });
}

HWND FormDriver::Box() const {
    // The search dialog is of the same class; it alone has no default text.
    Search search{L"#32770", {}, true, script_.process(), nullptr};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            if (Compare(window, parameter) || !GetDlgItem(window, 0xFFFF)) {
                wanted.found = nullptr;
                return TRUE;
            }
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found && GetForegroundWindow() == search.found ? search.found : nullptr;
}

HWND FormDriver::WaitForBox() const {
    script_.WaitFor([this] { return Box() != nullptr; });
    return Box();
}

bool FormDriver::Exit() const {
    return Until([this] { return !isOpen(); }, [this] { PushButton(L"E&xit"); });
}

HWND FormDriver::BoxAfter(const std::function<void()>& action) const {
    Until([this] { return Box() != nullptr; }, action);
    return Box();
}

std::wstring FormDriver::BoxText(HWND box) {
    return box ? TextOf(GetDlgItem(box, 0xFFFF)) : std::wstring();
}

void FormDriver::AnswerBox(HWND box, int button) const {
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    script_.WaitFor([box] { return !IsWindow(box); });
}

bool FormDriver::WaitForClose() const {
    return WaitUntil([this] { return !isOpen(); });
}

HWND FormDriver::SearchDialog() const {
    Search search{L"#32770", L"Search", true, script_.process(), nullptr};
    EnumWindows(&Compare, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool FormDriver::WaitForDialog(bool visible) const {
    return script_.WaitFor([&] {
        const HWND dialog = SearchDialog();
        return visible ? dialog && GetForegroundWindow() == dialog : !dialog;
    });
}

}  // namespace zu::windows
