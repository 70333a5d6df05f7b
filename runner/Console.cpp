#include "runner/Console.h"

#include <string>

#include "com/SameText.h"

namespace zu::runner {
namespace {

std::wstring LineEnd() {
    wchar_t value[8] = {};
    const DWORD length = GetEnvironmentVariableW(L"ZURUN_EOL", value, static_cast<DWORD>(std::size(value)));
    const bool lineFeedOnly = com::SameText({value, length}, L"lf");
    return lineFeedOnly ? L"\n" : L"\r\n";
}

}  // namespace

bool Console::Tell(std::wstring_view text) noexcept {
    for (TextOutput* const stream : {&err, &out}) {
        if (!stream->isOpen()) continue;
        try {
            stream->WriteLines(text);
            return true;
        } catch (...) {
            // The other one may still work.
            continue;
        }
    }
    return false;
}

Console::Console() : out(STD_OUTPUT_HANDLE, LineEnd()), err(STD_ERROR_HANDLE, LineEnd()) {}

}  // namespace zu::runner
