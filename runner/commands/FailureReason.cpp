#include "runner/commands/FailureReason.h"

#include "runner/commands/CommandListener.h"

namespace zu::runner::commands {

std::wstring PlainNote(std::wstring_view note) {
    const std::size_t dash = note.find(L" - ");
    if (dash != std::wstring_view::npos && note.find_first_not_of(L"-0123456789") == dash)
        note.remove_prefix(dash + 3);
    const std::size_t end = note.rfind(L" in Dbf");
    if (end != std::wstring_view::npos && note.find(L' ', end + 4) == std::wstring_view::npos)
        note = note.substr(0, end);
    return std::wstring(note);
}

std::wstring ReasonOf(const CommandListener& listener, std::wstring_view fallback) {
    if (!listener.lastReport().empty()) return listener.lastReport();
    for (auto note = listener.notes().rbegin(); note != listener.notes().rend(); ++note) {
        if (note->find(L" in Dbf") != std::wstring::npos) return PlainNote(*note);
    }
    return std::wstring(fallback);
}

}  // namespace zu::runner::commands
