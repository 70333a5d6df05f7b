#include "host/technologies/dbf/maintenance/TagDefinitions.h"

#include <algorithm>
#include <utility>

#include "host/expression/Program.h"
#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/TagDirectory.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"
#include "portable/text/Utf.h"

namespace zu::dbf::maintenance {
namespace {

constexpr int kIntegerWidth = 11;  // -2147483648
constexpr int kNumberWidth = 20;

// The index of the field with this name in the layout.
std::ptrdiff_t FindField(const TableLayout& layout, std::string_view name) {
    const auto& fields = layout.record.fields;
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto& field) { return files::SameName(field.name, name); });
    return found == fields.end() ? -1 : found - fields.begin();
}

// A key part of fixed width that sorts like the value.
std::string AsText(const std::string& expression, const expression::Program& program,
                   const TableLayout& layout) {
    switch (program.type()) {
        case expression::Type::Text:
            return expression;
        case expression::Type::Date:
            return "DTOS(" + expression + ")";
        case expression::Type::DateTime:
            return "TTOC(" + expression + ",1)";
        case expression::Type::Boolean:
            return "IIF(" + expression + ",\"T\",\"F\")";
        default:
            break;
    }
    int width = kNumberWidth;
    int decimals = 4;
    if (const auto field = program.singleField()) {
        const auto& stored = layout.record.fields[*field];
        if (stored.storage == expression::Storage::NumberText) {
            width = static_cast<int>(stored.width);
            decimals = stored.decimals;
        } else if (stored.storage == expression::Storage::Integer32) {
            width = kIntegerWidth;
            decimals = 0;
        }
    } else if (program.usesRecordNumber()) {
        width = 10;
        decimals = 0;
    }
    return "STR(" + expression + "," + std::to_string(width) +
           (decimals ? "," + std::to_string(decimals) : "") + ")";
}

}  // namespace

std::vector<cdx::TagDefinition> DefinitionsOf(files::FileSystem& files, const DbfTable::Content& content,
                                              std::vector<std::string>* leftOut) {
    std::vector<cdx::TagDefinition> tags;
    if (!content.paths.index) return tags;
    cdx::CdxFile file(files.Open(*content.paths.index, {}));
    for (const cdx::DirectoryEntry& entry : cdx::ReadTagDirectory(file)) {
        const cdx::TagHeader header = file.Header(entry.header);
        if (!header.isByteOrder()) {
            const std::string text = "The index \"" + entry.name + "\" of the table " +
                                     content.layout.record.tableName + " is in the order of the collation " +
                                     header.collation + " and cannot be built anew here.";
            if (leftOut == nullptr) throw Error(ErrorKind::Unsupported, text);
            leftOut->push_back(text);
            continue;
        }
        tags.push_back({entry.name, header.key, header.filter, (header.options & cdx::kUnique) != 0,
                        (header.options & cdx::kCandidate) != 0, header.descending});
    }
    return tags;
}

std::string DefaultTagName(std::string_view tableName) {
    constexpr std::size_t kLongest = 10;
    std::string name;
    for (char c : tableName) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        const bool digit = c >= '0' && c <= '9';
        if (!digit && !(c >= 'A' && c <= 'Z') && c != '_') c = '_';
        if (digit && name.empty()) name += '_';
        if (name.size() < kLongest) name += c;
    }
    return name.empty() ? "_" : name;
}

cdx::TagDefinition DefaultTag(const TableLayout& layout, const std::vector<IndexField>& fields) {
    if (fields.empty())
        throw Error(ErrorKind::InvalidArgument,
                    "An index of the table " + layout.record.tableName + " needs at least one field.");
    const bool allDescending =
        std::all_of(fields.begin(), fields.end(), [](const IndexField& field) { return field.descending; });
    cdx::TagDefinition tag;
    tag.name = DefaultTagName(layout.record.tableName);
    tag.descending = allDescending;
    std::string key;
    for (const IndexField& field : fields) {
        std::string text = field.text;
        if (files::SameName(text, "RecNo") && FindField(layout, text) < 0) text = "RECNO()";
        const auto program = expression::Program::Compile(text::ToUtf16(text), layout.record);
        const std::string part = fields.size() == 1 ? text : AsText(text, program, layout);
        if (!key.empty()) key += "+";
        const bool inverted = field.descending && !allDescending;
        if (inverted) key += "DESCEND(";
        key += part;
        if (inverted) key += ")";
    }
    std::size_t bad = 0;
    const auto bytes = layout.record.codePage->Encode(text::ToUtf16(key), &bad);
    if (!bytes)
        throw Error(ErrorKind::InvalidArgument,
                    "The index key " + key + " has characters that are not in the table's code page.");
    tag.key = *bytes;
    return tag;
}

}  // namespace zu::dbf::maintenance
