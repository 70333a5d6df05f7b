#include "host/expression/Function.h"

#include <array>
#include <cctype>
#include <map>
#include <vector>

#include "host/expression/functions/Functions.h"

namespace zu::expression {

namespace {

bool IsUpper(char c) noexcept {
    return c >= 'A' && c <= 'Z';
}

struct Catalogue {
    std::multimap<std::string_view, const Function*> byName;
    std::vector<std::string_view> names;

    Catalogue() {
        for (const auto functions : {TextFunctions(), SearchFunctions(), NumberFunctions(), DateFunctions(),
                                     ConversionFunctions(), LogicFunctions()}) {
            for (const Function& function : functions) {
                byName.emplace(function.name, &function);
                if (!function.alias.empty()) byName.emplace(function.alias, &function);
            }
        }
        for (auto entry = byName.begin(); entry != byName.end(); entry = byName.upper_bound(entry->first)) {
            names.push_back(entry->first);
        }
    }
};

const Catalogue& TheCatalogue() {
    static const Catalogue catalogue;
    return catalogue;
}

}  // namespace

std::size_t Function::leastArguments() const noexcept {
    std::size_t count = 0;
    while (count < arguments.size() && IsUpper(arguments[count]))
        ++count;
    return count;
}

std::size_t Function::mostArguments() const noexcept {
    return arguments.ends_with('*') ? SIZE_MAX : arguments.size();
}

char Function::argumentLetter(std::size_t index) const noexcept {
    const std::size_t letters = arguments.size() - (arguments.ends_with('*') ? 1 : 0);
    const char letter = arguments[index < letters ? index : letters - 1];
    return IsUpper(letter) ? letter : static_cast<char>(letter - 32);
}

const Function* FindFunction(std::string_view name, std::size_t arguments) noexcept {
    const auto [first, last] = TheCatalogue().byName.equal_range(name);
    const Function* any = nullptr;
    for (auto entry = first; entry != last; ++entry) {
        const Function* function = entry->second;
        if (arguments >= function->leastArguments() && arguments <= function->mostArguments())
            return function;
        if (any == nullptr) any = function;
    }
    return any;
}

std::span<const std::string_view> FunctionNames() {
    return TheCatalogue().names;
}

}  // namespace zu::expression
