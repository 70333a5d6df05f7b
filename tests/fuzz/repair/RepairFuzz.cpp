// A sound table with memos and tags, of which some bytes are changed, perhaps with a journal beside it:
// opened, read, written to, checked, repaired and checked again. A repair that says that it can mend the
// table must leave a sound one.
//
// The input: one byte that chooses format and access, one with the number of changes, four bytes a change
// (file, offset, value); the rest is the body of a journal.

#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/TableWriter.h"
#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "host/technologies/dbf/maintenance/TableRepair.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"

namespace {

using namespace zu;
using Bytes = std::vector<std::byte>;
using technologies::Value;

constexpr const char* kTable = "t.dbf";

struct Sound {
    Bytes table;
    Bytes memo;
    Bytes index;
};

Sound MakeSound(dbf::Format format) {
    files::MemoryFiles files;
    dbf::TableWriter writer(
        files, kTable, format, 0x03,
        {{"ID", 'N', 6, 0}, {"NAME", 'C', 12, 0}, {"BORN", 'D', 8, 0}, {"NOTE", 'M', 10, 0}}, {2024, 1, 31});
    for (int i = 0; i < 40; ++i) {
        writer.SetInteger(0, i * 7 % 41);
        writer.SetText(1, i % 2 ? u"odd" : u"even");
        if (i % 5) writer.SetDate(2, {2024, 1, 1 + i % 28});
        if (i % 3) writer.SetMemo(3, std::u16string(static_cast<std::size_t>(i * 20), u'm'));
        writer.Append(i % 9 == 0);
    }
    writer.Close({{"ID", "ID"}, {"NAME", "UPPER(NAME)", ".NOT.DELETED()"}, {"BORN", "BORN", "", true}});
    return {files.Get(kTable), files.Get(format == dbf::Format::DBase3 ? "t.dbt" : "t.fpt"),
            files.Get("t.cdx")};
}

void Spoil(Bytes& bytes, std::size_t offset, std::uint8_t value) {
    bytes[offset % bytes.size()] = static_cast<std::byte>(value);
}

// The form of a journal whose body came in whole; see Journal.h.
void PutJournal(files::MemoryFiles& files, const std::uint8_t* body, std::size_t size) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = kMultiplier ^ size;
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * kMultiplier;
        hash ^= hash >> 29;
    };
    std::size_t at = 0;
    for (; at + 8 <= size; at += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, body + at, 8);
        mix(word);
    }
    std::uint64_t rest = 0;
    if (at < size) std::memcpy(&rest, body + at, size - at);
    mix(rest);
    std::string journal("ZUJRNL1\0", 8);
    for (const std::uint64_t number : {std::uint64_t{size}, hash})
        for (int i = 0; i < 8; ++i)
            journal += static_cast<char>(number >> (8 * i));
    journal.append(reinterpret_cast<const char*>(body), size);
    files.Put("t.zuj", std::as_bytes(std::span(journal.data(), journal.size())));
}

Value Text(const char16_t* text) {
    Value value;
    value.kind = Value::Kind::Text;
    value.text = text;
    return value;
}

void Write(files::FileSystem& files) {
    const auto table = dbf::DbfTable::Open(files, kTable, {});
    Value value;
    for (std::uint32_t record = 1; record <= table->RecordCount() && record <= 50; ++record)
        for (std::size_t field = 0; field < table->fields().size(); ++field)
            table->ReadValue(record, field, value);
    const auto batch = table->BeginBatch();
    for (int i = 0; i < 3; ++i) {
        const auto edit = table->NewRecord();
        edit->Set(0, Text(u"5"));
        edit->Set(table->fields().size() - 1, Text(u"new"));
        edit->Save();
    }
    batch->Finish();
    const auto edit = table->EditRecord(2);
    edit->Set(0, Text(u"77"));
    edit->Set(table->fields().size() - 1, Text(u"longer than it was before, by some characters"));
    edit->SetDeleted(!edit->isDeleted());
    edit->Save();
    for (std::size_t index = 0; index < table->indexes().size(); ++index) {
        technologies::Selection selection;
        if (table->indexes()[index].usable) selection.index = index;
        table->Select(selection);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Sound sounds[] = {MakeSound(dbf::Format::DBase3), MakeSound(dbf::Format::FoxPro2),
                                   MakeSound(dbf::Format::VisualFoxPro)};
    if (size < 2) return 0;
    const std::size_t format = data[0] % 3;
    Sound sound = sounds[format];
    const std::size_t changes = std::min<std::size_t>(data[1] % 32, (size - 2) / 4);
    for (std::size_t i = 0; i < changes; ++i) {
        const std::uint8_t* change = data + 2 + 4 * i;
        Bytes* parts[] = {&sound.table, &sound.memo, &sound.index};
        Spoil(*parts[change[0] % 3], change[1] | static_cast<std::size_t>(change[2]) << 8, change[3]);
    }
    files::MemoryFiles files;
    files.AllowMapping((data[0] & 0x80) != 0);
    files.Put(kTable, sound.table);
    files.Put(format == 0 ? "t.dbt" : "t.fpt", sound.memo);
    files.Put("t.cdx", sound.index);
    const std::size_t used = 2 + 4 * changes;
    if (size > used) PutJournal(files, data + used, size - used);
    try {
        Write(files);
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::Internal) std::abort();
    }
    try {
        const auto before = dbf::maintenance::CheckTable(files, kTable, {}, nullptr);
        const auto done = dbf::maintenance::RepairTable(files, kTable, {}, nullptr);
        if (before.findings.empty() && !done.empty()) std::abort();
        if (!before.repairable) return 0;
        if (!dbf::maintenance::CheckTable(files, kTable, {}, nullptr).findings.empty()) std::abort();
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Damaged && error.kind() != ErrorKind::Unsupported &&
            error.kind() != ErrorKind::NotFound)
            std::abort();
    }
    return 0;
}
