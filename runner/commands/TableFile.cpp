#include "runner/commands/TableFile.h"

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"
#include "portable/text/Utf.h"

namespace zu::runner::commands {

void RequireTextFile(const std::wstring& path) {
    const std::string name = text::ToUtf8(com::AsUtf16(path));
    for (const char* extension : {".dbf", ".fpt", ".dbt", ".cdx", ".mdx"}) {
        if (files::SameName(files::Extension(name), extension))
            throw Error(ErrorKind::InvalidArgument,
                        name + " is the name of a table's file; a text file was expected there");
    }
}

}  // namespace zu::runner::commands
