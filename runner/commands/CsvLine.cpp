#include "runner/commands/CsvLine.h"

namespace zu::runner::commands {

CsvLine& CsvLine::Add(std::wstring_view value) {
    if (begun_) text_ += L',';
    begun_ = true;
    if (value.find_first_of(L",\"\r\n") == std::wstring_view::npos) {
        text_ += value;
        return *this;
    }
    text_ += L'"';
    for (const wchar_t c : value) {
        if (c == L'"') text_ += L'"';
        text_ += c;
    }
    text_ += L'"';
    return *this;
}

void CsvLine::Clear() {
    text_.clear();
    begun_ = false;
}

}  // namespace zu::runner::commands
