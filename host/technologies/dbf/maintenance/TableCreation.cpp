#include "host/technologies/dbf/maintenance/TableCreation.h"

#include <array>
#include <memory>
#include <optional>

#include "host/technologies/dbf/CompanionFiles.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/HeaderWriter.h"
#include "host/technologies/dbf/MemoWriter.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/TableLayout.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/maintenance/FieldPlan.h"
#include "host/technologies/dbf/maintenance/FileSwap.h"
#include "host/technologies/dbf/maintenance/TagDefinitions.h"
#include "host/technologies/dbf/write/HeaderDate.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

constexpr files::OpenOptions kNewFile{files::Access::ReadWrite, files::Creation::CreateAlways, true};

// The mark that programs of the FoxPro family give a code page; 0 for sets that have none.
std::uint8_t MarkOf(unsigned codePage) {
    const auto marks = [codePage](unsigned first, unsigned last) -> std::uint8_t {
        for (unsigned mark = first; mark <= last; ++mark) {
            const auto* set = text::CodePage::FindByDbfMark(static_cast<std::uint8_t>(mark));
            if (set && set->number() == codePage) return static_cast<std::uint8_t>(mark);
        }
        return 0;
    };
    // Marks from 8 to 4F stand for languages of dBASE IV and come last.
    if (const std::uint8_t mark = marks(0x01, 0x07)) return mark;
    if (const std::uint8_t mark = marks(0x50, 0xFF)) return mark;
    return marks(0x08, 0x4F);
}

std::unique_ptr<files::File> WriteTable(files::FileSystem& files, const std::string& path,
                                        const std::vector<std::byte>& header) {
    auto file = files.Open(path, kNewFile);
    std::vector<std::byte> bytes = header;
    bytes.push_back(std::byte{kEndOfFile});
    file->WriteAt(0, bytes);
    return file;
}

// A file of this name without regard to case; nothing of the name may be lost on any system.
std::optional<std::string> Present(files::FileSystem& files, const std::string& path) {
    return FindFile(files, files::Parent(path), files::FileName(path));
}

}  // namespace

void CreateTable(files::FileSystem& files, const std::string& path,
                 const technologies::TechnologySettings& settings,
                 const std::vector<technologies::FieldDescription>& fields,
                 const std::vector<technologies::IndexField>& key) {
    if (const auto present = Present(files, path))
        throw Error(ErrorKind::AlreadyExists, "The table " + *present + " exists already.");
    FileSwap::Discard(files, path);

    const text::CodePage* set = text::CodePage::Find(settings.codePage);
    const text::CodePage& codePage = set ? *set : text::CodePage::Default();
    const FieldPlan plan = PlanFields(fields, settings.newTableFormat, codePage);
    std::vector<std::byte> bytes =
        MakeHeader(plan.format, MarkOf(codePage.number()), plan.fields, write::Today());
    if (!key.empty()) bytes[header::kTableFlags] |= std::byte{kProductionIndex};

    // The table comes first: what of the rest is missing then is put in place by the next one who opens it.
    FileSwap swap(files, path);
    auto file = WriteTable(files, swap.Prepare(path), bytes);
    const DbfHeader header = DbfHeader::Read(*file);
    const TableLayout layout = TableLayout::Make(header, codePage, std::string(files::Stem(path)));
    if (layout.hasMemos()) {
        const MemoFormat format = MemoFormatOf(plan.format);
        const char* extension = format == MemoFormat::Fpt ? ".fpt" : ".dbt";
        MemoWriter::Make(files.Open(swap.Prepare(files::WithExtension(path, extension)), kNewFile), format)
            ->Close();
    }
    {
        RecordFile records(std::move(file), header);
        if (!key.empty()) {
            const auto index = files.Open(swap.Prepare(files::WithExtension(path, ".cdx")), kNewFile);
            cdx::BuildCdx(*index, {DefaultTag(layout, key)},
                          {layout.record, records, layout.record.tableName, codePage});
        }
    }
    swap.CommitNew();
}

void DropTable(files::FileSystem& files, const std::string& path) {
    FileSwap::Finish(files, path);
    // A table that is damaged can be removed too, so it is not opened as one.
    files.Open(path, {files::Access::ReadWrite, files::Creation::OpenExisting, true});
    FileSwap swap(files, path);
    CompanionFiles companions(files, path);
    // The table goes last: as long as it is there, the rest is looked for by whoever opens it.
    for (const char* extension : {".cdx", ".mdx", ".fpt", ".dbt", ".smt", ".cpg", ".zuj"})
        if (const auto companion = companions.Find(extension)) swap.Remove(*companion);
    swap.Remove(path);
    swap.Commit();
}

}  // namespace zu::dbf::maintenance
