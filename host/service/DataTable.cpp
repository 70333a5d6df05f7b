#include "host/service/DataTable.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "host/engine/EngineState.h"
#include "host/engine/Reporting.h"
#include "host/engine/SettingsStore.h"
#include "host/service/DataIndex.h"
#include "host/service/DataView.h"
#include "host/service/FieldSelection.h"
#include "host/service/RunSelection.h"
#include "host/service/TableRecords.h"
#include "host/service/TextArray.h"
#include "host/service/VariableRecords.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

std::wstring Wide(const std::string& utf8) {
    return std::wstring(com::AsWide(text::ToUtf16(utf8)));
}

std::uint32_t LimitOf(LONG maxRecords) noexcept {
    return maxRecords > 0 ? static_cast<std::uint32_t>(maxRecords) : 0;
}

LONG LimitArgument(const VARIANT& maxRecords) {
    const VARIANT& content = com::Dereference(maxRecords);
    if (content.vt == VT_EMPTY || content.vt == VT_NULL || com::IsMissing(content)) return 0;
    return com::Convert(content, VT_I4).get().lVal;
}

/// The text of a condition; nothing for Null, which selects no record.
std::optional<std::u16string> ConditionOf(const VARIANT& condition) {
    const VARIANT& content = com::Dereference(condition);
    if (content.vt == VT_NULL) return std::nullopt;
    if (content.vt == VT_EMPTY || com::IsMissing(content)) return std::u16string();
    if (const auto text = com::TextOf(content)) return std::u16string(com::AsUtf16(*text));
    throw com::ComError(com::kTypeMismatch, L"A condition is a text");
}

}  // namespace

DataTable::DataTable(std::shared_ptr<OpenTable> table)
    : open_(std::move(table)),
      table_(open_, &open_->table()),
      showDeleted_(SettingsStore::Instance().Share()->showDeleted) {}

IDispatch* DataTable::ViewOf(const VARIANT& fieldNames, std::vector<std::uint32_t> records, LONG flag) const {
    std::shared_ptr<const ViewShape> shape = open_->shape();
    if (const auto chosen = ChooseFields(fieldNames, shape->fields, table_->name()))
        shape = shape->With(*chosen);
    const auto deleted =
        flag != 0 || showDeleted_ ? TableRecords::Deleted::Stay : TableRecords::Deleted::Leave;
    return MakeView(
               com::MakeSharedRecycled<TableRecords>(table_, std::move(shape), std::move(records), deleted))
        .detach();
}

::DataIndex* DataTable::IndexObject(std::size_t index) const {
    return com::MakeObject<DataIndex>(com::MakeSharedRecycled<IndexKey>(open_, index)).detach();
}

std::size_t DataTable::LocateIndex(const VARIANT& index) const {
    if (const auto name = com::TextOf(index)) {
        const std::string wanted = text::ToUtf8(com::AsUtf16(*name));
        const auto found = table_->FindIndex(wanted);
        if (!found)
            throw Error(ErrorKind::NotFound, "Table " + table_->name() + " has no index \"" + wanted + "\"");
        return *found;
    }
    const auto number = WholeNumber(index);
    if (!number) throw com::ComError(com::kTypeMismatch, L"An index is asked for by its name or its number");
    if (*number < 0 || static_cast<std::size_t>(*number) >= table_->indexes().size())
        throw Error(ErrorKind::NotFound, "Table " + table_->name() + " has no index " +
                                             std::to_string(*number) + ", there are " +
                                             std::to_string(table_->indexes().size()) + " counted from 0");
    return static_cast<std::size_t>(*number);
}

HRESULT DataTable::get_Name(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(Wide(table_->name())); });
}

HRESULT DataTable::Layout(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&] {
        return MakeView(
                   std::make_shared<VariableRecords>(open_->shape()->tableName, open_->shape()->fields, 0))
            .detach();
    });
}

HRESULT DataTable::OpenIndex(BSTR* Name, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            const std::wstring_view name = Name ? com::View(*Name) : std::wstring_view();
            if (name.find_first_not_of(L' ') == std::wstring_view::npos) {
                openIndex_ = table_->DefaultIndex();
                return com::ToVariantBool(openIndex_.has_value());
            }
            Messages& messages = EngineState::Current().messages;
            const std::string wanted = text::ToUtf8(com::AsUtf16(name));
            const auto found = table_->FindIndex(wanted);
            if (!found) {
                messages.Report(E_INVALIDARG,
                                Wide("Table " + table_->name() + " has no index \"" + wanted + "\""));
                return VARIANT_FALSE;
            }
            const technologies::IndexDescription& index = table_->indexes().at(*found);
            if (!index.usable) {
                messages.Report(E_INVALIDARG, Wide("Index " + index.name + " of table " + table_->name() +
                                                   " cannot be used: " + index.reason));
                return VARIANT_FALSE;
            }
            openIndex_ = found;
            return VARIANT_TRUE;
        },
        Audience::User);
}

HRESULT DataTable::CurrentIndex(LONG, ::DataIndex** Result) noexcept {
    return GuardedResult(Result,
                         [&]() -> ::DataIndex* { return openIndex_ ? IndexObject(*openIndex_) : nullptr; });
}

HRESULT DataTable::Seek(::DataIndex* Index, LONG, LONG MaxRecords, LONG Flag, VARIANT FieldNames,
                        IDispatch** Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            const std::shared_ptr<IndexKey> key = DataIndex::KeyOf(Index);
            if (!key || key->table() != table_.get())
                throw com::ComError(com::kTypeMismatch, L"Table " + Wide(table_->name()) +
                                                            L": Seek needs an index of this table");
            const auto criteria = key->Criteria();
            if (!criteria) return ViewOf(FieldNames, {}, Flag);
            if (!criteria->empty())
                return ViewOf(FieldNames,
                              table_->Seek(key->index(), *criteria, LimitOf(MaxRecords), Flag != 0), Flag);
            technologies::Selection all;
            all.index = key->index();
            all.maxRecords = LimitOf(MaxRecords);
            all.includeDeleted = Flag != 0;
            return ViewOf(FieldNames, table_->Select(all), Flag);
        },
        Audience::User);
}

HRESULT DataTable::get_RecordCount(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(table_->RecordCount()); });
}

HRESULT DataTable::IndexNames(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] {
        std::vector<std::string> names;
        for (const technologies::IndexDescription& index : table_->indexes())
            names.push_back(index.name);
        return TextArray(names).detach();
    });
}

HRESULT DataTable::Select(VARIANT Condition, VARIANT MaxRecords, LONG Flag, VARIANT FieldNames,
                          IDispatch** Result) noexcept {
    return GuardedResult(
        Result,
        [&] {
            const auto condition = ConditionOf(Condition);
            if (!condition) return ViewOf(FieldNames, {}, Flag);
            technologies::Selection selection;
            selection.condition = *condition;
            selection.index = openIndex_;
            selection.maxRecords = LimitOf(LimitArgument(MaxRecords));
            selection.includeDeleted = Flag != 0;
            return ViewOf(FieldNames, RunSelection(*table_, selection), Flag);
        },
        Audience::User);
}

HRESULT DataTable::Index(VARIANT Index, ::DataIndex** Result) noexcept {
    return GuardedResult(Result, [&] { return IndexObject(LocateIndex(Index)); });
}

HRESULT DataTable::get_Updateable(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(table_->isUpdateable()); });
}

HRESULT DataTable::Warnings(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return TextArray(table_->warnings()).detach(); });
}

HRESULT DataTable::Facts(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] {
        std::vector<std::string> texts;
        for (technologies::TableFact& fact : table_->Facts()) {
            texts.push_back(std::move(fact.name));
            texts.push_back(std::move(fact.value));
        }
        return TextArray(texts).detach();
    });
}

}  // namespace zu::host
