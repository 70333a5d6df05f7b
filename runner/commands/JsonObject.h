#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zu::runner::commands {

/// An object of JSON on one line, members in the order in which they are added.
class JsonObject {
public:
    JsonObject& Text(std::wstring_view name, std::wstring_view value);
    JsonObject& Number(std::wstring_view name, long long value);
    JsonObject& Truth(std::wstring_view name, bool value);
    /// `json` is JSON already.
    JsonObject& Raw(std::wstring_view name, std::wstring_view json);
    JsonObject& Texts(std::wstring_view name, const std::vector<std::wstring>& values);

    std::wstring text() const { return L"{" + members_ + L"}"; }

private:
    std::wstring members_;
};

/// `[a, b, c]` of pieces that are JSON already.
std::wstring JsonArray(const std::vector<std::wstring>& elements);

}  // namespace zu::runner::commands
