#include "host/service/FieldSelection.h"

#include <optional>
#include <string_view>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "com/ScriptList.h"
#include "com/Variant.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

std::wstring_view Trimmed(std::wstring_view text) noexcept {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

class Chooser {
public:
    Chooser(const ViewFields& fields, const std::string& tableName)
        : fields_(fields), tableName_(tableName) {}

    std::size_t ByName(std::wstring_view name) const {
        name = Trimmed(name);
        if (name.size() >= 2 && name.front() == L'[' && name.back() == L']')
            name = name.substr(1, name.size() - 2);
        const std::size_t found = FindField(fields_, name);
        if (found == kNoField) Missing("\"" + text::ToUtf8(com::AsUtf16(name)) + "\"");
        return found;
    }

    std::size_t ByNumber(LONG number) const {
        if (number < 0 || static_cast<std::size_t>(number) >= fields_.size())
            Missing(std::to_string(number) + ", there are " + std::to_string(fields_.size()) +
                    " counted from 0");
        return static_cast<std::size_t>(number);
    }

    std::vector<std::size_t> ByList(std::wstring_view names) const {
        std::vector<std::size_t> chosen;
        for (;;) {
            const auto comma = names.find(L',');
            chosen.push_back(ByName(names.substr(0, comma)));
            if (comma == std::wstring_view::npos) return chosen;
            names.remove_prefix(comma + 1);
        }
    }

    std::vector<std::size_t> ByElements(const std::vector<com::Variant>& elements) const {
        std::vector<std::size_t> chosen;
        for (const com::Variant& element : elements) {
            if (const auto name = com::TextOf(element)) {
                chosen.push_back(ByName(*name));
            } else if (const auto number = WholeNumber(element)) {
                chosen.push_back(ByNumber(*number));
            } else {
                throw Error(ErrorKind::TypeMismatch, "The list of fields for table " + tableName_ +
                                                         " holds something else than names and numbers");
            }
        }
        return chosen;
    }

private:
    [[noreturn]] void Missing(const std::string& field) const {
        throw Error(ErrorKind::NotFound, "Table " + tableName_ + " has no field " + field);
    }

    const ViewFields& fields_;
    const std::string& tableName_;
};

}  // namespace

std::optional<LONG> WholeNumber(const VARIANT& value) {
    const VARIANT& content = com::Dereference(value);
    if (content.vt == VT_I4) return content.lVal;
    switch (content.vt & ~VT_BYREF) {
        case VT_I1:
        case VT_I2:
        case VT_I4:
        case VT_I8:
        case VT_INT:
        case VT_UI1:
        case VT_UI2:
        case VT_UI4:
        case VT_UI8:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL: {
            const double number = com::Convert(content, VT_R8).get().dblVal;
            const auto whole =
                static_cast<LONG>(number >= -2147483648.0 && number <= 2147483647.0 ? number : 0);
            if (static_cast<double>(whole) != number) return std::nullopt;
            return whole;
        }
        default:
            return std::nullopt;
    }
}

std::optional<std::vector<std::size_t>> ChooseFields(const VARIANT& choice, const ViewFields& fields,
                                                     const std::string& tableName) {
    const Chooser chooser(fields, tableName);
    const VARIANT& content = com::Dereference(choice);
    if (content.vt == VT_EMPTY || content.vt == VT_NULL || com::IsMissing(content)) return std::nullopt;
    if (const auto names = com::TextOf(content)) {
        if (Trimmed(*names).empty()) return std::nullopt;
        return chooser.ByList(*names);
    }
    if (const auto number = WholeNumber(content))
        return *number == 0 ? std::vector<std::size_t>() : std::vector{chooser.ByNumber(*number)};
    if (com::IsArray(content) && com::UpperBound(com::ArrayOf(content)) < 0) return std::nullopt;
    std::vector<com::Variant> elements;
    if (com::ReadList(content, elements)) {
        if (elements.empty()) return std::nullopt;
        return chooser.ByElements(elements);
    }
    throw Error(ErrorKind::TypeMismatch,
                "The fields of table " + tableName +
                    " are chosen by names with commas between them, or by an array of "
                    "names and numbers");
}

}  // namespace zu::host
