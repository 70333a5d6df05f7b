#include "component/table/clsDatabaseDefn.h"

#include <string>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/FailureReason.h"
#include "component/table/ArrayElements.h"
#include "component/table/ShownArgument.h"

namespace zu::component {

using com::Bstr;
using com::Variant;

namespace {

constexpr wchar_t kTechnologyMark = L'|';
constexpr wchar_t kTableMark = L'>';

/// As text within a concatenation, where Null adds nothing.
std::wstring JoinedText(const Variant& value) {
    return value.type() == VT_NULL ? std::wstring() : value.ToText().str();
}

void TellUnknownForm(const VARIANT& definition) {
    TellReason(com::kTypeMismatch,
               L"A table is named by a text such as \"folder>table\", or by an array with "
               L"the folder or file as its first element; it was named by " +
                   Shown(definition));
}

}  // namespace

bool clsDatabaseDefn::Define(const VARIANT& definition) noexcept {
    bool recognised = false;
    try {
        definition_ = Variant(definition);
        recognised = Parse();
        if (recognised)
            AddDefaultTechnology();
        else
            TellUnknownForm(definition_);
    } catch (...) {
        if (!recognised) TellCurrentException();
        return recognised;
    }
    return recognised;
}

bool clsDatabaseDefn::Parse() {
    if (SAFEARRAY* const parts = ArrayOf(definition_); IsArray(definition_)) return ParseArray(parts);
    const auto text = com::TextOf(definition_);
    if (text) ParseText(*text);
    return text.has_value();
}

/// Only the bound and the first one or two elements of an array count. The table names "1" and "2" tell the
/// service the shape of the definition; they are never taken from the array.
bool clsDatabaseDefn::ParseArray(SAFEARRAY* parts) {
    const ArrayElements elements(parts);
    const LONG last = elements.upperBound();
    if (last < 0) return false;
    if (last <= 1) {
        dataBaseName_ = elements.At(0).ToText();
        tableName_ = Bstr(last == 0 ? L"" : L"1");
        return true;
    }
    std::wstring name = JoinedText(elements.At(0));
    name += kTechnologyMark;
    name += JoinedText(elements.At(1));
    dataBaseName_ = Bstr(name);
    tableName_ = Bstr(L"2");
    return true;
}

void clsDatabaseDefn::ParseText(std::wstring_view text) {
    const std::size_t mark = text.find(kTableMark);
    const bool hasTable = mark != std::wstring_view::npos;
    dataBaseName_ = Bstr(text.substr(0, mark));
    tableName_ = Bstr(hasTable ? text.substr(mark + 1) : std::wstring_view());
}

void clsDatabaseDefn::AddDefaultTechnology() {
    if (dataBaseName_.view().find(kTechnologyMark) != std::wstring_view::npos) return;
    const Bstr technology = Engine().data().DefaultTechnology();
    dataBaseName_ = Bstr::Joined({technology.view(), {&kTechnologyMark, 1}, dataBaseName_.view()});
}

}  // namespace zu::component
