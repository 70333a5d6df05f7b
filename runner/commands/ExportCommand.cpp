#include "runner/commands/ExportCommand.h"

#include <optional>

#include "com/ComError.h"
#include "portable/error/Error.h"
#include "runner/DispatchCall.h"
#include "runner/commands/CommandRun.h"
#include "runner/commands/FailureReason.h"
#include "runner/commands/FormatOptions.h"
#include "runner/commands/HeaderLine.h"
#include "runner/commands/NumberText.h"
#include "runner/commands/RecordRows.h"
#include "runner/commands/TableFile.h"
#include "runner/commands/TemporaryTextFile.h"

namespace zu::runner::commands {
namespace {

constexpr std::wstring_view kStandardOutput = L"-";

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

class Export {
public:
    explicit Export(CommandRun& run) : run_(run), format_(run.words(), Direction::Export) {
        if (run.words().Has(L"--header") && format_.isFixed())
            throw Error(ErrorKind::InvalidArgument, "--header goes with delimited text files only");
    }

    void Write(const TableName& name, const std::wstring& file) {
        run_.listener().Forget();
        // Faulty conditions and unknown fields are told with their places here, before a file is touched.
        const RecordRows rows = Selection(name);
        const bool plain = file != kStandardOutput && !run_.words().Has(L"--header");
        const std::optional<TemporaryTextFile> temporary =
            plain ? std::nullopt : std::make_optional<TemporaryTextFile>();
        CallFunction(name, plain ? file : temporary->path());
        const std::wstring header = run_.words().Has(L"--header") ? Header(rows) : std::wstring();
        if (file == kStandardOutput) {
            if (!header.empty()) run_.console().out.WriteLine(header);
            WriteLinesTo(run_.console().out, temporary->path());
            return;
        }
        if (!plain) CopyWithHeader(temporary->path(), header, file);
        run_.console().out.WriteLine(name.shown + L": " + Counted(rows.count(), L"record") + L" written to " +
                                     file);
    }

private:
    com::Variant Fields() const {
        const auto fields = run_.words().Value(L"--fields");
        return fields ? com::Variant(*fields) : com::Variant();
    }
    LONG Limit() const { return run_.words().Number(L"--limit").value_or(0); }

    RecordRows Selection(const TableName& name) const {
        const com::ComPtr<IDispatch> table = run_.service().Open(name);
        return RecordRows(com::ObjectOf<IDispatch>(CallMember(
            table.get(), L"Select",
            {com::Variant(run_.Condition(2)), com::Variant(Limit()), com::Variant(LONG{0}), Fields()})));
    }

    void CallFunction(const TableName& name, const std::wstring& file) const {
        const com::Variant done = CallMember(
            run_.functions().get(), L"DbfToFile",
            {com::Variant(name.definition()), com::Variant(file), com::Variant(run_.Condition(2)), Fields(),
             com::Variant(Limit()), com::Variant(format_.control()), com::Variant(format_.name())});
        if (done.ToBoolean()) return;
        throw com::ComError(E_FAIL, L"Cannot export table " + name.shown + L" to " + file + L": " +
                                        ReasonOf(run_.listener(), L"the records could not be written"));
    }

    std::wstring Header(const RecordRows& rows) const {
        std::vector<std::wstring> names;
        for (const RecordRows::Field& field : rows.fields())
            names.push_back(field.name);
        return HeaderLine(names, format_.Separator(), format_.Quote());
    }

    CommandRun& run_;
    FormatOptions format_;
};

/// In a folder each table has a file of its own.
std::wstring FileFor(const TableName& name, const std::wstring& target, bool folder) {
    if (!folder) return target;
    std::wstring stem = name.table.empty() ? name.database : name.table;
    stem = stem.substr(stem.find_last_of(L"\\/:|") + 1);
    const std::size_t point = stem.rfind(L'.');
    if (point != 0 && point != std::wstring::npos) stem.resize(point);
    const bool ended = target.ends_with(L'\\') || target.ends_with(L'/');
    return target + (ended ? L"" : L"\\") + stem + L".txt";
}

}  // namespace

void RunExport(CommandRun& run) {
    Export job(run);
    const std::wstring& target = run.words().operands().at(1);
    RequireTextFile(target);
    const bool folder = target != kStandardOutput && IsFolder(target);
    const std::vector<TableName> tables = run.Tables(0, 1);
    if (tables.size() > 1 && !folder)
        throw Error(ErrorKind::InvalidArgument, "several tables are exported into a folder that exists");
    for (const TableName& name : tables) {
        run.StopIfInterrupted();
        try {
            job.Write(name, FileFor(name, target, folder));
        } catch (...) {
            run.Fail(run.ReasonOfFailure());
        }
    }
}

}  // namespace zu::runner::commands
