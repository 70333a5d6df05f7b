#include "host/engine/MessageCatalogue.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <utility>

namespace zu::host {
namespace {

constexpr std::array<std::pair<MessageCode, std::wstring_view>, 9> kTexts = {{
    {MessageCode::ConditionFault, L"The condition cannot be understood at position %1: %2"},
    {MessageCode::NoRoutineName, L"%1 needs the name of the routine to call."},
    {MessageCode::PositionLabel, L"Record %1 of %2"},
    {MessageCode::SaveNewRecord, L"The new record has not been saved. Save it now?"},
    {MessageCode::SaveChanges, L"The changes to this record have not been saved. Save them now?"},
    {MessageCode::TextNotFound, L"\"%1\" was not found."},
    {MessageCode::UpdateListFault,
     L"The update list must hold pairs: a field name, its new value, the next field name, and so on."},
    {MessageCode::FunctionMissing, L"%1 is not available."},
    {MessageCode::NewPositionLabel, L"New record %1 (%2 saved)"},
}};

std::wstring_view Template(std::uint32_t code) noexcept {
    const auto* const found = std::find_if(kTexts.begin(), kTexts.end(), [code](const auto& entry) {
        return static_cast<std::uint32_t>(entry.first) == code;
    });
    return found == kTexts.end() ? std::wstring_view() : found->second;
}

std::wstring UnknownText(std::uint32_t code, const std::vector<std::wstring>& arguments) {
    std::array<wchar_t, 24> number{};
    std::swprintf(number.data(), number.size(), L"Error 0x%08X", code);
    std::wstring text = number.data();
    for (std::size_t i = 0; i < arguments.size(); ++i)
        text += (i ? L", " : L": ") + arguments[i];
    return text;
}

}  // namespace

bool IsKnownMessage(std::uint32_t code) noexcept {
    return !Template(code).empty();
}

std::wstring MessageText(std::uint32_t code, const std::vector<std::wstring>& arguments) {
    const std::wstring_view pattern = Template(code);
    if (pattern.empty()) return UnknownText(code, arguments);
    std::wstring text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool insertion = pattern[i] == L'%' && i + 1 < pattern.size();
        if (!insertion) {
            text += pattern[i];
        } else if (const wchar_t next = pattern[++i]; next >= L'1' && next <= L'9') {
            const auto argument = static_cast<std::size_t>(next - L'1');
            if (argument < arguments.size()) text += arguments[argument];
        } else {
            text += next;
        }
    }
    return text;
}

}  // namespace zu::host
