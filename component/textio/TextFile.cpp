#include "component/textio/TextFile.h"

#include <windows.h>

#include <string>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::component {

const text::CodePage& SystemCodePage() {
    const text::CodePage* page = text::CodePage::Find(GetACP());
    return page ? *page : text::CodePage::Default();
}

namespace {

/// The name for the file system. An empty one is refused here: there it would be a file that does not exist.
std::string NameOf(std::wstring_view path) {
    if (path.find_first_not_of(L' ') == std::wstring_view::npos)
        throw Error(ErrorKind::InvalidArgument, "The name of the text file is missing.");
    return text::ToUtf8(com::AsUtf16(path));
}

}  // namespace

std::unique_ptr<files::File> OpenTextFile(std::wstring_view path) {
    return files::SystemFiles().Open(NameOf(path), {});
}

std::unique_ptr<files::File> CreateTextFile(std::wstring_view path) {
    const std::string name = NameOf(path);
    try {
        return files::SystemFiles().Open(name,
                                         {files::Access::ReadWrite, files::Creation::CreateAlways, false});
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::NotFound) throw;
        throw Error(error.kind(), "The file " + name + " cannot be made: its folder does not exist.");
    }
}

}  // namespace zu::component
