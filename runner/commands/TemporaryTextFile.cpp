#include "runner/commands/TemporaryTextFile.h"

#include <windows.h>

#include "com/ComError.h"
#include "runner/ErrorTexts.h"

namespace zu::runner::commands {

TemporaryTextFile::TemporaryTextFile() {
    wchar_t folder[MAX_PATH + 1] = {};
    wchar_t path[MAX_PATH + 1] = {};
    if (GetTempPathW(MAX_PATH, folder) == 0 || GetTempFileNameW(folder, L"zur", 0, path) == 0) {
        const HRESULT code = HRESULT_FROM_WIN32(GetLastError());
        throw com::ComError(code, L"no temporary file can be made in " + std::wstring(folder) + L": " +
                                      SystemErrorText(code));
    }
    path_ = path;
}

TemporaryTextFile::~TemporaryTextFile() {
    DeleteFileW(path_.c_str());
}

}  // namespace zu::runner::commands
