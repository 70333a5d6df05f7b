#include "tests/typelib/LibraryTest.h"

namespace zu::typelib {

LibraryReader OpenLibrary(const wchar_t* file, unsigned number) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    folder.erase(folder.find_last_of(L'\\') + 1);
    return LibraryReader(folder + file + L'\\' + std::to_wstring(number));
}

void ExpectOperations(const LibraryReader& library, const wchar_t* interfaceName, const Lines& expected) {
    const Lines found = library.Operations(interfaceName);
    for (std::size_t index = 0; index < std::max(found.size(), expected.size()); ++index) {
        EXPECT_EQ(index < found.size() ? found[index] : "(missing)",
                  index < expected.size() ? expected[index] : "(none expected)")
            << testing::PrintToString(std::wstring(interfaceName));
    }
}

}  // namespace zu::typelib
