#include "host/expression/FieldLookup.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "host/expression/Fault.h"
#include "portable/error/Error.h"
#include "portable/text/CaseMap.h"
#include "portable/text/Utf.h"

namespace zu::expression {

namespace {

constexpr std::size_t kStoredNameLength = 10;

bool SameName(std::u16string_view a, std::u16string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return x == y || text::ToUpper(x) == text::ToUpper(y); });
}

std::optional<std::size_t> Find(const RecordLayout& layout, std::u16string_view name) {
    for (std::size_t i = 0; i < layout.fields.size(); ++i) {
        if (SameName(text::ToUtf16(layout.fields[i].name), name)) return i;
    }
    return std::nullopt;
}

/// Aliases of tables whose names are no words have "_" in place of what cannot stand in a word.
bool IsTableName(const RecordLayout& layout, std::u16string_view alias) {
    if (layout.tableName.empty()) return true;
    std::u16string table = text::ToUtf16(layout.tableName);
    if (SameName(table, alias)) return true;
    for (char16_t& c : table) {
        const bool isWord = c >= 0x80 || c == u'_' || (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') ||
                            (c >= u'a' && c <= u'z');
        if (!isWord) c = u'_';
    }
    return SameName(table, alias);
}

[[noreturn]] void FailUnknown(const RecordLayout& layout, const Node& node) {
    std::vector<std::string_view> names;
    for (const FieldLayout& field : layout.fields)
        names.push_back(field.name);
    std::string expected = "the name of a field";
    if (!layout.tableName.empty()) expected += " of " + layout.tableName;
    const std::string nearest = NearestName(text::ToUtf8(node.name), names);
    if (!nearest.empty()) expected += " (perhaps " + nearest + ")";
    FailExpected(node.position, expected, Quoted(node.name));
}

/// Programs read without further checks, so a layout that contradicts itself must not come this far.
void CheckPlace(const RecordLayout& layout, const FieldLayout& field) {
    const auto reaches = [&](std::int32_t bit) {
        return bit < 0 ||
               std::uint64_t{layout.nullFlagsOffset} + static_cast<unsigned>(bit) / 8 < layout.recordLength;
    };
    const std::uint32_t least = field.storage == Storage::Integer32     ? 4
                                : field.storage == Storage::Double      ? 8
                                : field.storage == Storage::Currency    ? 8
                                : field.storage == Storage::DateTime    ? 8
                                : field.storage == Storage::LogicalText ? 1
                                                                        : 0;
    const bool fits =
        std::uint64_t{field.offset} + field.width <= layout.recordLength && field.width >= least;
    if (!fits || !reaches(field.nullBit) || !reaches(field.lengthBit)) {
        throw Error(ErrorKind::Internal, "field " + field.name + " lies outside its record");
    }
}

}  // namespace

std::size_t FindField(const RecordLayout& layout, const Node& node) {
    if (!node.qualifier.empty() && !IsTableName(layout, node.qualifier)) {
        FailExpected(node.begin, Quoted(layout.tableName) + " in front of the field", Quoted(node.qualifier));
    }
    std::optional<std::size_t> found = Find(layout, node.name);
    if (!found && node.name.size() > kStoredNameLength) {
        found = Find(layout, std::u16string_view(node.name).substr(0, kStoredNameLength));
    }
    if (!found) FailUnknown(layout, node);
    const FieldLayout& field = layout.fields[*found];
    CheckPlace(layout, field);
    if (field.storage == Storage::Opaque) {
        FailExpected(node.position, "a field with a text, number, date or logical",
                     field.name + ", which holds binary data");
    }
    return *found;
}

}  // namespace zu::expression
