#include "host/technologies/dbf/cdx/StalenessProbe.h"

#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/KeyBounds.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "host/technologies/dbf/cdx/LeafPage.h"
#include "host/technologies/dbf/cdx/OpenTag.h"

namespace zu::dbf::cdx {

namespace {

constexpr std::uint32_t kProbes = 8;
// Trees of files up to 512 KB are counted through: that takes less than opening the file did.
constexpr std::size_t kCountedPages = 1024;

std::uint64_t CountKeys(const OpenTag& tag, std::uint64_t limit) {
    std::vector<std::uint32_t> records;
    LeafPath path = tag.MakePath();
    std::uint64_t keys = 0;
    path.ToFirst();
    do {
        records.clear();
        LeafPage::ReadRecords(path.file().Page(path.leaf()), path.leaf(), records);
        keys += records.size();
    } while (keys <= limit && path.ToNext());
    return keys;
}

// Moments are found within half a second, every other key exactly.
bool Holds(const OpenTag& tag, const KeyEncoder& encoder, const std::vector<std::byte>& key,
           std::uint32_t record) {
    TagCursor cursor = tag.MakeCursor();
    if (encoder.form().encoding != KeyEncoding::DateTime) {
        return cursor.Seek(key.data(), record) && encoder.SameValue(cursor.key(), key.data()) &&
               cursor.record() == record;
    }
    const KeyBounds around = KeyBounds::AroundKey(encoder, key);
    for (bool more = cursor.Seek(around.low.data(), 0); more; more = cursor.Next()) {
        if (CompareKeys(cursor.key(), around.high.data(), key.size()) > 0) return false;
        if (cursor.record() == record) return true;
    }
    return false;
}

// A unique tag lacks records by design: of equal keys the first one has an entry, and when that record
// changes no other one moves up. So its entries are looked up in the table, not the records in the tag.
std::string FindWrongEntry(const OpenTag& tag, KeyEncoder& encoder, RecordAccess& records) {
    std::vector<std::byte> key(encoder.form().length());
    TagCursor cursor = tag.MakeCursor();
    for (const bool last : {false, true}) {
        if (!(last ? cursor.Last() : cursor.First())) return {};
        const std::uint32_t number = cursor.record();
        const expression::Row row{records.Record(number), number, records.memos()};
        if (row.record == nullptr)
            return "the index is not up to date: it leads to records that are not there";
        encoder.Encode(row, key.data());
        const bool belongs = tag.filter() == nullptr || tag.filter()->Test(row);
        if (!belongs || !encoder.SameValue(cursor.key(), key.data())) {
            return "the index is not up to date: record " + std::to_string(number) +
                   " is in it under a key that it does not have";
        }
    }
    return {};
}

}  // namespace

std::string FindStaleness(CdxFile& file, OpenTag& tag, RecordAccess& records) {
    const std::uint32_t count = records.Count();
    KeyEncoder& encoder = tag.encoder();
    std::vector<std::byte> key(encoder.form().length());
    for (std::uint32_t probe = 0; probe < kProbes && probe < count; ++probe) {
        // From the last record, the likeliest to be missing, to the first.
        const auto spread = static_cast<std::uint32_t>(std::uint64_t{count - 1} * probe / (kProbes - 1));
        const std::uint32_t number = count - (count <= kProbes ? probe : spread);
        const expression::Row row{records.Record(number), number, records.memos()};
        if (row.record == nullptr) return "record " + std::to_string(number) + " cannot be read";
        const bool belongs = tag.filter() == nullptr || tag.filter()->Test(row);
        encoder.Encode(row, key.data());
        if (belongs && tag.description().unique) continue;
        if (Holds(tag, encoder, key, number) == belongs) continue;
        return "the index is not up to date: record " + std::to_string(number) +
               (belongs ? " is not in it under its present key" : " is in it against the FOR condition");
    }
    if (tag.description().unique) {
        std::string wrong = FindWrongEntry(tag, encoder, records);
        if (!wrong.empty()) return wrong;
    }
    if (file.pageCount() <= kCountedPages || count == 0) {
        const std::uint64_t keys = CountKeys(tag, count);
        if (keys > count || (keys < count && tag.holdsAllRecords())) {
            return "the index is not up to date: it has " + std::string(keys > count ? "more than " : "") +
                   std::to_string(keys > count ? count : keys) + " keys for " + std::to_string(count) +
                   " records";
        }
    }
    return {};
}

}  // namespace zu::dbf::cdx
