#include "runner/ErrorReport.h"

#include <algorithm>

#include "runner/ErrorTexts.h"
#include "runner/ScriptSource.h"

namespace zu::runner {
namespace {

std::wstring Position(const ScriptError& error) {
    if (error.line == 0) return L": ";
    std::wstring text = L":" + std::to_wstring(error.line);
    if (error.column != 0) text += L":" + std::to_wstring(error.column);
    return text + L": ";
}

// A message of several lines would hide where the source line begins.
std::wstring OnOneLine(std::wstring text) {
    std::replace_if(
        text.begin(), text.end(), [](wchar_t character) { return character == L'\r' || character == L'\n'; },
        L' ');
    const std::size_t end = text.find_last_not_of(L' ');
    text.resize(end == std::wstring::npos ? 0 : end + 1);
    return text;
}

}  // namespace

std::wstring ErrorReport(const ScriptSource& source, const ScriptError& error) {
    std::wstring text = source.name() + Position(error);
    text += OnOneLine(error.description) + L" (" + ErrorNumber(error.code) + L")";

    const std::wstring_view line = error.line == 0 ? std::wstring_view() : source.Line(error.line);
    if (line.empty()) return text;
    text += L"\n";
    text += line;
    if (error.column == 0 || error.column > line.size() + 1) return text;

    // Tabs are repeated, so that the caret stands under its character however wide they are shown.
    text += L"\n";
    for (const wchar_t character : line.substr(0, error.column - 1))
        text += character == L'\t' ? L'\t' : L' ';
    return text + L"^";
}

}  // namespace zu::runner
