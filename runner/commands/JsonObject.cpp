#include "runner/commands/JsonObject.h"

#include "runner/commands/CellText.h"

namespace zu::runner::commands {

JsonObject& JsonObject::Raw(std::wstring_view name, std::wstring_view json) {
    if (!members_.empty()) members_ += L", ";
    members_ += JsonString(name) + L": ";
    members_ += json;
    return *this;
}

JsonObject& JsonObject::Text(std::wstring_view name, std::wstring_view value) {
    return Raw(name, JsonString(value));
}

JsonObject& JsonObject::Number(std::wstring_view name, long long value) {
    return Raw(name, std::to_wstring(value));
}

JsonObject& JsonObject::Truth(std::wstring_view name, bool value) {
    return Raw(name, value ? L"true" : L"false");
}

JsonObject& JsonObject::Texts(std::wstring_view name, const std::vector<std::wstring>& values) {
    std::vector<std::wstring> strings;
    strings.reserve(values.size());
    for (const std::wstring& value : values)
        strings.push_back(JsonString(value));
    return Raw(name, JsonArray(strings));
}

std::wstring JsonArray(const std::vector<std::wstring>& elements) {
    std::wstring json = L"[";
    for (const std::wstring& element : elements) {
        if (json.size() > 1) json += L", ";
        json += element;
    }
    return json + L"]";
}

}  // namespace zu::runner::commands
