#include "host/engine/ConditionFault.h"

#include "com/Bstr.h"
#include "com/QuotedText.h"
#include "host/engine/MessageCatalogue.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

constexpr std::size_t kMostShown = 200;

/// The number of the character that the fault's own text ends with; the message has it as its position.
std::wstring WithoutPosition(std::wstring text) {
    const std::size_t mark = text.rfind(L" (character ");
    if (mark != std::wstring::npos && text.ends_with(L")")) text.resize(mark);
    return text;
}

}  // namespace

std::wstring FaultReason(const Error& fault, std::wstring_view expression) {
    std::wstring reason = WithoutPosition(std::wstring(com::AsWide(text::ToUtf16(fault.what()))));
    return reason + L", in " + com::Quoted(expression, kMostShown);
}

com::ComError ConditionFault(const Error& fault, std::wstring_view expression, std::wstring_view where) {
    const auto code = static_cast<std::uint32_t>(MessageCode::ConditionFault);
    const std::wstring position = std::to_wstring(fault.position().value_or(0) + 1);
    return com::ComError(static_cast<HRESULT>(code),
                         MessageText(code, {position, FaultReason(fault, expression) + std::wstring(where)}));
}

}  // namespace zu::host
