#include <algorithm>
#include <string>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/ArrayElements.h"
#include "component/table/ShownArgument.h"
#include "component/table/clsDatabaseDefn.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Required;
using com::Variant;

namespace {

/// The name by which scripts know a record's number in keys, and the service's name for it.
constexpr std::wstring_view kScriptName = L"dbfrecno";
constexpr std::wstring_view kServiceName = L"RecNo";

wchar_t Lower(wchar_t character) noexcept {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + (L'a' - L'A'))
                                                  : character;
}

/// A key field as the service understands it. Only the first occurrence in a text is replaced.
Variant KeyField(Variant element) {
    const auto text = com::TextOf(element);
    if (!text) return element;
    std::wstring field(*text);
    const auto found = std::search(field.begin(), field.end(), kScriptName.begin(), kScriptName.end(),
                                   [](wchar_t left, wchar_t right) { return Lower(left) == right; });
    if (found != field.end())
        field.replace(found, found + static_cast<std::ptrdiff_t>(kScriptName.size()), kServiceName);
    return Variant(std::wstring_view(field));
}

ComPtr<DataFieldList> KeyFieldList(const ArrayElements& fields) {
    ComPtr<DataFieldList> list;
    Check(Engine().data().DatabaseService()->NewFieldList(list.put()));
    Required(list.get());
    const LONG last = fields.upperBound();
    for (LONG index = fields.lowerBound(); index <= last; ++index)
        Check(list->Add(KeyField(fields.At(index)), VARIANT_FALSE));
    return list;
}

ComPtr<DataFieldList> RequestedFields(const VARIANT& tableDefn, SAFEARRAY** indexFields) {
    try {
        return KeyFieldList(ArrayElements(indexFields ? *indexFields : nullptr));
    } catch (const com::ComError& error) {
        throw com::ComError(error.code(), L"Cannot make the index of " + ShownTable(tableDefn) +
                                              L" from this list of fields: " + DescriptionOf(error));
    }
}

}  // namespace

STDMETHODIMP Functions::DbfIndex(VARIANT TableDefn, SAFEARRAY** IndexFields, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        clsDatabaseDefn table;
        if (!table.Define(TableDefn)) return false;
        const ComPtr<DataFieldList> fields = RequestedFields(TableDefn, IndexFields);
        VARIANT_BOOL built = VARIANT_FALSE;
        Check(Engine().data().DatabaseService()->CreateIndex(table.DataBaseName().get(),
                                                             table.TableName().get(), fields.get(), &built));
        return built != VARIANT_FALSE;
    });
}

}  // namespace zu::component
