#include "runner/commands/TableFacts.h"

#include <algorithm>

#include "com/Variant.h"
#include "runner/DispatchCall.h"

namespace zu::runner::commands {
namespace {

constexpr long kIncludeDeleted = -1;
constexpr long kDateWidth = 8;

std::wstring Text(IDispatch* object, const std::wstring& member) {
    return CallMember(object, member).ToText().str();
}

bool Truth(IDispatch* object, const std::wstring& member) {
    return CallMember(object, member).ToBoolean();
}

com::ComPtr<IDispatch> Object(const com::Variant& value) {
    com::ComPtr<IDispatch> object = com::ObjectOf<IDispatch>(value);
    com::Required(object.get());
    return object;
}

FieldFacts FactsOfField(IDispatch* field) {
    FieldFacts facts;
    facts.name = Text(field, L"Name");
    facts.type = Text(field, L"TypeName");
    facts.width = CallMember(field, L"Size").ToLong();
    if (facts.type == L"Date" && facts.width > kDateWidth) facts.type = L"Date and time";
    facts.decimals = CallMember(field, L"Decimals").ToLong();
    facts.nullable = Truth(field, L"Nullable");
    facts.readOnly = Truth(field, L"ReadOnly");
    return facts;
}

TagFacts FactsOfTag(IDispatch* tag) {
    TagFacts facts;
    facts.name = Text(tag, L"Name");
    facts.key = Text(tag, L"Expression");
    facts.condition = Text(tag, L"Filter");
    facts.unique = Truth(tag, L"Unique");
    facts.candidate = Truth(tag, L"Candidate");
    facts.descending = Truth(tag, L"Descending");
    facts.usable = Truth(tag, L"Usable");
    facts.reason = Text(tag, L"Reason");
    return facts;
}

std::optional<long> CountDeleted(IDispatch* table) {
    try {
        const com::Variant view = CallMember(table, L"Select",
                                             {com::Variant(L"DELETED()"), com::Variant(LONG{0}),
                                              com::Variant(LONG{kIncludeDeleted}), com::Variant()});
        return CallMember(Object(view).get(), L"RecordCount").ToLong();
    } catch (const com::ComError&) {
        return std::nullopt;  // technologies need not know that function
    }
}

}  // namespace

std::wstring TableFacts::Fact(std::wstring_view wanted) const {
    const auto found = std::find_if(technology.begin(), technology.end(),
                                    [wanted](const auto& fact) { return fact.first == wanted; });
    return found == technology.end() ? std::wstring() : found->second;
}

TableFacts ReadTableFacts(const TableService& service, const TableName& name) {
    const com::ComPtr<IDispatch> table = service.Open(name);
    TableFacts facts;
    facts.name = Text(table.get(), L"Name");
    facts.records = CallMember(table.get(), L"RecordCount").ToLong();
    facts.deleted = CountDeleted(table.get());
    facts.writable = Truth(table.get(), L"Updateable");
    const std::vector<std::wstring> told = TextsOf(CallMember(table.get(), L"Facts"));
    for (std::size_t i = 0; i + 1 < told.size(); i += 2)
        facts.technology.emplace_back(told[i], told[i + 1]);
    // Null selects no record. The fields of a layout belong to no table and are never writable.
    const com::ComPtr<IDispatch> view = Object(CallMember(
        table.get(), L"Select",
        {com::Variant::Null(), com::Variant(LONG{0}), com::Variant(LONG{kIncludeDeleted}), com::Variant()}));
    const com::ComPtr<IDispatch> fields = Object(CallMember(view.get(), L"Fields"));
    const LONG count = CallMember(fields.get(), L"Count").ToLong();
    for (LONG i = 0; i < count; ++i)
        facts.fields.push_back(
            FactsOfField(Object(CallMember(fields.get(), L"Item", {com::Variant(i)})).get()));
    const auto tags = static_cast<LONG>(TextsOf(CallMember(table.get(), L"IndexNames")).size());
    for (LONG i = 0; i < tags; ++i)
        facts.tags.push_back(FactsOfTag(Object(CallMember(table.get(), L"Index", {com::Variant(i)})).get()));
    // Asked for last: what was read until now may have been tolerated too.
    facts.warnings = TextsOf(CallMember(table.get(), L"Warnings"));
    return facts;
}

std::wstring AdviceFor(const TableFacts& facts, const std::wstring& table) {
    if (facts.warnings.empty()) return {};
    const auto unusable = static_cast<std::size_t>(
        std::count_if(facts.tags.begin(), facts.tags.end(), [](const TagFacts& tag) { return !tag.usable; }));
    const std::wstring quoted =
        table.find_first_of(L" >&") == std::wstring::npos ? table : L"\"" + table + L"\"";
    if (unusable == facts.warnings.size()) return L"zurun reindex " + quoted + L" builds the tags anew";
    return L"zurun check " + quoted + L" examines it, zurun repair " + quoted + L" mends it";
}

}  // namespace zu::runner::commands
