#include "host/technologies/dbf/cdx/TagDirectory.h"

#include <algorithm>
#include <string_view>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/TagCursor.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

// Two extensions of other makers put their page sizes into the reserved bytes of the header.
void RefuseOtherPageSizes(CdxFile& file) {
    constexpr std::size_t kMark = 16;
    constexpr std::uint16_t kLargePages = 0xABCD;
    constexpr std::size_t kSizes = 16;
    constexpr std::size_t kSizedMark = 20;
    const PageBytes first = file.Page(0);
    const std::byte* raw = first.data();
    const std::string_view text(reinterpret_cast<const char*>(raw), kPageSize);
    const bool isSized = text.substr(kSizedMark, 4) == "RCHB";
    const bool isOther = LoadLittle<std::uint16_t>(raw + kMark) == kLargePages ||
                         (isSized && (LoadLittle<std::uint16_t>(raw + kSizes) != kHeaderSize ||
                                      LoadLittle<std::uint16_t>(raw + kSizes + 2) != kPageSize));
    if (isOther) {
        throw Error(ErrorKind::Unsupported, "the index has pages of another size than " +
                                                std::to_string(kPageSize) + " bytes, which is not supported");
    }
}

std::string Unpadded(const std::byte* key, std::size_t length) {
    while (length > 0 && (key[length - 1] == std::byte{' '} || key[length - 1] == std::byte{0}))
        --length;
    return {reinterpret_cast<const char*>(key), length};
}

}  // namespace

std::vector<DirectoryEntry> ReadTagDirectory(CdxFile& file) {
    const TagHeader header = file.Header(0);
    RefuseOtherPageSizes(file);
    if ((header.options & kCompact) == 0) {
        throw Error(ErrorKind::Unsupported, "the file is not a compact index, which is not supported");
    }
    if ((header.options & kCompound) == 0) return {{std::string(), 0}};

    if (header.keyLength == 0 || header.keyLength > kMaxKeyLength) {
        throw Error(ErrorKind::Damaged,
                    "the tag directory states names of " + std::to_string(header.keyLength) + " bytes");
    }
    const KeyShape shape{header.keyLength, std::byte{' '}};
    std::vector<DirectoryEntry> entries;
    TagCursor cursor(file, header.root, shape);
    for (bool more = cursor.First(); more; more = cursor.Next()) {
        entries.push_back({Unpadded(cursor.key(), shape.length), cursor.record()});
    }
    std::sort(entries.begin(), entries.end(), [](const DirectoryEntry& left, const DirectoryEntry& right) {
        return left.header < right.header;
    });
    return entries;
}

}  // namespace zu::dbf::cdx
