#include "host/service/RunSelection.h"

#include <string>

#include "com/Bstr.h"
#include "host/engine/ConditionFault.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
std::vector<std::uint32_t> RunSelection(technologies::Table& table,
                                        const technologies::Selection& selection) {
    try {
        return table.Select(selection);
    } catch (const Error& error) {
        const std::wstring name(com::AsWide(text::ToUtf16(table.name())));
        if (error.kind() == ErrorKind::Syntax)
            throw ConditionFault(error, com::AsWide(selection.condition), L" for table " + name);
        if (error.kind() == ErrorKind::TypeMismatch)
            throw Error(error.kind(), "Table " + table.name() + ": " + error.what(), error.position());
        throw;
    }
}

}  // namespace zu::host
