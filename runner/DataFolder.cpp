#include "runner/DataFolder.h"

#include <windows.h>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::runner {

std::wstring DataFolder(const std::wstring& folder) {
    wchar_t* end = nullptr;
    std::wstring path(32768, L'\0');
    path.resize(GetFullPathNameW(folder.c_str(), static_cast<DWORD>(path.size()), path.data(), &end));
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        throw Error(ErrorKind::NotFound,
                    "the data folder " + text::ToUtf8(com::AsUtf16(folder)) + " does not exist");
    }
    return path;
}

}  // namespace zu::runner
