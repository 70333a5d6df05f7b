#include "runner/commands/ImportNote.h"

#include <algorithm>

namespace zu::runner::commands {
namespace {

constexpr std::wstring_view kLine = L"(line ";
constexpr std::size_t kMostDigits = 18;

/// ": 6 - The value ... in DbfFromFile" tells programs more than people.
void DropErrorNumber(std::wstring& text) {
    const std::size_t dash = text.find(L" - ");
    if (dash == std::wstring::npos || dash == 0) return;
    const std::size_t before = text.find_last_not_of(L"-0123456789", dash - 1);
    if (before == std::wstring::npos || before + 1 == dash || text[before] != L' ') return;
    text.erase(before + 1, dash + 3 - before - 1);
    const std::size_t end = text.rfind(L" in DbfFromFile");
    if (end != std::wstring::npos) text.erase(end, 15);
}

}  // namespace

bool IsImportNote(std::wstring_view note) {
    return note.starts_with(L"Row ") && note.find(kLine) != std::wstring_view::npos;
}

std::wstring ImportNote(std::wstring_view note, std::wstring_view copy, std::wstring_view file,
                        unsigned skipped) {
    std::wstring text(note);
    const std::size_t path = copy.empty() ? std::wstring::npos : text.find(copy);
    if (path != std::wstring::npos) text.replace(path, copy.size(), file);
    DropErrorNumber(text);
    const std::size_t mark = text.find(kLine);
    if (mark == std::wstring::npos || skipped == 0) return text;
    const std::size_t begin = mark + kLine.size();
    const std::size_t end = std::min(text.find_first_not_of(L"0123456789", begin), text.size());
    if (end == begin || end - begin > kMostDigits) return text;
    return text.replace(begin, end - begin,
                        std::to_wstring(std::stoull(text.substr(begin, end - begin)) + skipped));
}

}  // namespace zu::runner::commands
