#include "host/service/RunSelection.h"

#include <string>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "host/engine/MessageCatalogue.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

[[noreturn]] void ThrowConditionFault(const Error& fault) {
    const auto code = static_cast<std::uint32_t>(MessageCode::ConditionFault);
    const std::wstring position = std::to_wstring(fault.position().value_or(0) + 1);
    const std::wstring reason(com::AsWide(text::ToUtf16(fault.what())));
    throw com::ComError(static_cast<HRESULT>(code), MessageText(code, {position, reason}));
}

}  // namespace

std::vector<std::uint32_t> RunSelection(technologies::Table& table,
                                        const technologies::Selection& selection) {
    try {
        return table.Select(selection);
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::Syntax) ThrowConditionFault(error);
        throw;
    }
}

}  // namespace zu::host
