#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zu::runner::commands {

/// An option of a command.
struct OptionDescription {
    const wchar_t* name;   ///< "--fields"
    const wchar_t* value;  ///< what stands behind it ("A,B"); null: the option stands alone
    const wchar_t* help;
};

/// The words behind a command: options wherever they stand, and operands.
class CommandWords {
public:
    /// Behind the word "--" everything is an operand. Throws zu::Error (InvalidArgument) for unknown options
    /// and options without their value.
    static CommandWords Parse(std::span<const OptionDescription> known,
                              const std::vector<std::wstring>& words);

    bool Has(std::wstring_view option) const { return values_.contains(option); }
    /// The value given last.
    std::optional<std::wstring> Value(std::wstring_view option) const;
    /// The values in the order in which they were given.
    std::vector<std::wstring> Values(std::wstring_view option) const;
    /// A value that is a whole number from 1 up to 2,147,483,647; throws zu::Error (InvalidArgument) for
    /// others.
    std::optional<std::int32_t> Number(std::wstring_view option) const;

    const std::vector<std::wstring>& operands() const noexcept { return operands_; }

private:
    std::map<std::wstring, std::vector<std::wstring>, std::less<>> values_;
    std::vector<std::wstring> operands_;
};

}  // namespace zu::runner::commands
