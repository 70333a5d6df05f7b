#include "runner/commands/CommandWords.h"

#include <algorithm>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::runner::commands {
namespace {

[[noreturn]] void Refuse(std::wstring_view text) {
    throw Error(ErrorKind::InvalidArgument, text::ToUtf8(com::AsUtf16(text)));
}

bool IsOption(std::wstring_view word) {
    return word.size() > 1 && word[0] == L'-';
}

}  // namespace

CommandWords CommandWords::Parse(std::span<const OptionDescription> known,
                                 const std::vector<std::wstring>& words) {
    CommandWords result;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::wstring& word = words[i];
        if (word == L"--") {
            result.operands_.insert(result.operands_.end(),
                                    words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
            break;
        }
        if (!IsOption(word)) {
            result.operands_.push_back(word);
            continue;
        }
        const std::size_t equals = word.find(L'=');
        const std::wstring name = word.substr(0, equals);
        const auto option = std::find_if(known.begin(), known.end(),
                                         [&](const OptionDescription& each) { return name == each.name; });
        if (option == known.end()) Refuse(L"unknown option " + name);
        if (!option->value) {
            if (equals != std::wstring::npos) Refuse(name + L" takes no value");
            result.values_[name];
        } else if (equals != std::wstring::npos) {
            result.values_[name].push_back(word.substr(equals + 1));
        } else {
            if (i + 1 == words.size()) Refuse(name + L" needs a value: " + option->value);
            result.values_[name].push_back(words[++i]);
        }
    }
    return result;
}

std::optional<std::wstring> CommandWords::Value(std::wstring_view option) const {
    const auto found = values_.find(option);
    if (found == values_.end() || found->second.empty()) return std::nullopt;
    return found->second.back();
}

std::vector<std::wstring> CommandWords::Values(std::wstring_view option) const {
    const auto found = values_.find(option);
    return found == values_.end() ? std::vector<std::wstring>() : found->second;
}

std::optional<std::int32_t> CommandWords::Number(std::wstring_view option) const {
    const std::optional<std::wstring> text = Value(option);
    if (!text) return std::nullopt;
    constexpr std::size_t kMostDigits = 10;
    std::int64_t number = 0;
    const bool digits = !text->empty() && text->size() <= kMostDigits &&
                        text->find_first_not_of(L"0123456789") == std::wstring::npos;
    if (digits) number = std::stoll(*text);
    if (number < 1 || number > INT32_MAX)
        Refuse(std::wstring(option) + L" needs a whole number from 1 on, not \"" + *text + L"\"");
    return static_cast<std::int32_t>(number);
}

}  // namespace zu::runner::commands
