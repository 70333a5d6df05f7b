#include "component/textio/TextFile.h"

#include <windows.h>

#include "com/Bstr.h"
#include "portable/text/Utf.h"

namespace zu::component {

const text::CodePage& SystemCodePage() {
    const text::CodePage* page = text::CodePage::Find(GetACP());
    return page ? *page : text::CodePage::Default();
}

std::unique_ptr<files::File> OpenTextFile(std::wstring_view path) {
    return files::SystemFiles().Open(text::ToUtf8(com::AsUtf16(path)), {});
}

std::unique_ptr<files::File> CreateTextFile(std::wstring_view path) {
    return files::SystemFiles().Open(text::ToUtf8(com::AsUtf16(path)),
                                     {files::Access::ReadWrite, files::Creation::CreateAlways, false});
}

}  // namespace zu::component
