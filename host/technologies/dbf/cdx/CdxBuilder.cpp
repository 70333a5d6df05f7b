#include "host/technologies/dbf/cdx/CdxBuilder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "host/expression/Program.h"
#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/KeyForm.h"
#include "host/technologies/dbf/cdx/MemoUse.h"
#include "host/technologies/dbf/cdx/PageStream.h"
#include "host/technologies/dbf/cdx/SortedKeys.h"
#include "host/technologies/dbf/cdx/TagHeader.h"
#include "host/technologies/dbf/cdx/TreeWriter.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

constexpr std::uint32_t kDirectoryOffset = kHeaderSize;
constexpr std::uint32_t kFirstTagOffset = kDirectoryOffset + kPageSize;
const KeyShape kDirectoryShape{kTagNameLength, std::byte{0x20}};

/// A tag with its header's place, ready to be entered into the directory.
struct BuiltTag {
    std::string name;
    std::uint32_t offset = 0;
    std::array<std::byte, kHeaderSize> header{};
};

std::string StoredName(const std::string& name) {
    std::string stored = name;
    for (char& c : stored)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    const bool plain = std::all_of(stored.begin(), stored.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
    if (stored.empty() || stored.size() > kTagNameLength || !plain ||
        (stored[0] >= '0' && stored[0] <= '9')) {
        throw Error(ErrorKind::InvalidArgument,
                    "\"" + name +
                        "\" is no name for an index tag: expected a letter or underscore and up to nine more "
                        "letters, digits or underscores");
    }
    return stored;
}

/// Writes the tree of one tag.
class TagBuild {
public:
    TagBuild(const TagDefinition& definition, const IndexContext& context, technologies::ProgressMeter* meter)
        : definition_(definition),
          context_(context),
          meter_(meter),
          key_(expression::Program::CompileBytes(definition.key, context.layout)),
          form_(KeyForm::ForNewTag(key_, context.layout)) {
        if (!definition.filter.empty()) {
            filter_.emplace(expression::Program::CompileBytes(definition.filter, context.layout));
            const expression::Type type = filter_->type();
            if (type != expression::Type::Boolean && type != expression::Type::Unknown) {
                throw Error(ErrorKind::TypeMismatch, "the FOR condition is not true or false");
            }
            if (ReadsMemos(*filter_, context.layout))
                throw Error(ErrorKind::Unsupported, "the FOR condition must not read memo fields");
        }
    }

    TagHeader Write(PageStream& out) {
        const std::uint32_t count = context_.records.Count();
        SortedKeys keys(definition_, context_, form_, meter_);

        // Room to double the table before leaves must be packed anew for greater record numbers.
        const std::uint32_t greatest = std::max(count, std::min(count, 0x7FFFFFFFU) * 2);
        TreeWriter tree(out, form_.shape(), greatest);
        if (definition_.unique || definition_.candidate) {
            AddDistinct(keys, tree);
        } else {
            for (SortedKeys::Entry entry; keys.Next(entry);)
                tree.Add(entry.key, entry.record);
        }

        TagHeader header;
        header.root = tree.Finish();
        header.keyLength = static_cast<std::uint16_t>(form_.length());
        header.options = static_cast<std::uint8_t>(
            kCompact | kCompound | (definition_.unique ? kUnique : 0) | (form_.nullable ? kNullableKey : 0) |
            (definition_.candidate ? kCandidate : 0) | (filter_ ? kHasFilter : 0));
        header.descending = definition_.descending;
        header.key = definition_.key;
        header.filter = definition_.filter;
        return header;
    }

private:
    /// Of equal keys only the first comes into the tree.
    void AddDistinct(SortedKeys& keys, TreeWriter& tree) const {
        std::vector<std::byte> before;
        std::uint32_t recordBefore = 0;
        for (SortedKeys::Entry entry; keys.Next(entry);) {
            const std::byte* const end = entry.key + form_.length();
            const bool again = !before.empty() && std::equal(entry.key, end, before.begin());
            if (again && definition_.candidate) {
                throw Error(ErrorKind::AlreadyExists, "the records " + std::to_string(recordBefore) +
                                                          " and " + std::to_string(entry.record) +
                                                          " have the same key, which the tag does not allow");
            }
            if (again) continue;
            tree.Add(entry.key, entry.record);
            before.assign(entry.key, end);
            recordBefore = entry.record;
        }
    }

    const TagDefinition& definition_;
    const IndexContext& context_;
    technologies::ProgressMeter* meter_;
    expression::Program key_;
    std::optional<expression::Program> filter_;
    KeyForm form_;
};

BuiltTag Build(PageStream& out, const TagDefinition& definition, const IndexContext& context,
               technologies::ProgressMeter* meter) {
    BuiltTag tag;
    tag.name = StoredName(definition.name);
    try {
        TagBuild build(definition, context, meter);
        tag.offset = out.position();
        out.Next();  // the header's two pages, written when everything else is
        out.Next();
        build.Write(out).Store(tag.header);
    } catch (const Error& error) {
        throw Error(error.kind(),
                    "index tag \"" + tag.name + "\" of table \"" + context.tableName + "\": " + error.what(),
                    error.position());
    }
    return tag;
}

std::uint32_t WriteDirectory(PageStream& out, std::vector<BuiltTag>& tags) {
    std::sort(tags.begin(), tags.end(),
              [](const BuiltTag& left, const BuiltTag& right) { return left.name < right.name; });
    std::uint32_t greatest = 0;
    for (const BuiltTag& tag : tags)
        greatest = std::max(greatest, tag.offset);
    TreeWriter tree(out, kDirectoryShape, greatest, Filling::Full);
    for (const BuiltTag& tag : tags) {
        std::array<std::byte, kTagNameLength> name{};
        name.fill(std::byte{0x20});
        std::memcpy(name.data(), tag.name.data(), tag.name.size());
        tree.Add(name.data(), tag.offset);
    }
    return tree.Finish();
}

void RefuseEqualNames(const std::vector<TagDefinition>& tags) {
    std::vector<std::string> names;
    names.reserve(tags.size());
    for (const TagDefinition& tag : tags)
        names.push_back(StoredName(tag.name));
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice != names.end()) {
        throw Error(ErrorKind::InvalidArgument, "two index tags have the name \"" + *twice + "\"");
    }
}

}  // namespace

void BuildCdx(files::File& file, const std::vector<TagDefinition>& tags, const IndexContext& context,
              technologies::ProgressMeter* meter) {
    RefuseEqualNames(tags);
    PageStream out(file, kFirstTagOffset);
    std::vector<BuiltTag> built;
    built.reserve(tags.size());
    for (const TagDefinition& tag : tags)
        built.push_back(Build(out, tag, context, meter));
    out.Flush();
    for (const BuiltTag& tag : built)
        file.WriteAt(tag.offset, tag.header);

    TagHeader header;
    header.keyLength = kTagNameLength;
    header.options = kCompact | kCompound | kDirectory;
    // The directory has its usual place behind the file header as long as one page holds it.
    PageStream front(file, kDirectoryOffset);
    header.root = WriteDirectory(front, built);
    if (header.root == kDirectoryOffset) {
        front.Flush();
    } else {
        header.root = WriteDirectory(out, built);
        out.Flush();
    }
    std::array<std::byte, kHeaderSize> bytes{};
    header.Store(bytes);
    file.WriteAt(0, bytes);
}

void RequireBuildable(const TagDefinition& tag, const IndexContext& context) {
    StoredName(tag.name);
    TagBuild(tag, context, nullptr);
}

}  // namespace zu::dbf::cdx
