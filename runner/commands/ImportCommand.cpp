#include "runner/commands/ImportCommand.h"

#include <algorithm>
#include <array>
#include <memory>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "portable/error/Error.h"
#include "portable/files/File.h"
#include "portable/text/Utf.h"
#include "runner/DispatchCall.h"
#include "runner/commands/CommandRun.h"
#include "runner/commands/FailureReason.h"
#include "runner/commands/FormatOptions.h"
#include "runner/commands/HeaderLine.h"
#include "runner/commands/ImportNote.h"
#include "runner/commands/NumberText.h"
#include "runner/commands/RecordRows.h"
#include "runner/commands/TableFile.h"
#include "runner/commands/TemporaryTextFile.h"

namespace zu::runner::commands {
namespace {

constexpr std::wstring_view kStandardInput = L"-";
constexpr std::size_t kMostTold = 20;

std::unique_ptr<files::File> OpenText(const std::wstring& path, files::Creation creation) {
    const files::Access access =
        creation == files::Creation::OpenExisting ? files::Access::Read : files::Access::ReadWrite;
    return files::SystemFiles().Open(text::ToUtf8(com::AsUtf16(path)), {access, creation, false});
}

class Import {
public:
    explicit Import(CommandRun& run)
        : run_(run),
          format_(run.words(), Direction::Import),
          file_(run.words().operands().at(0)),
          table_(run.Table(1)) {
        RequireTextFile(file_);
        if (HasHeader() && format_.isFixed())
            throw Error(ErrorKind::InvalidArgument, "--header goes with delimited text files only");
    }

    void Run() {
        Prepare();
        RequireTable();
        CallFunction();
        Tell();
    }

private:
    bool HasHeader() const { return run_.words().Has(L"--header"); }

    /// The function reads a file that holds nothing but lines to add.
    void Prepare() {
        path_ = file_;
        if (file_ == kStandardInput) {
            file_ = L"standard input";
            path_ = input_.path();
            const std::string bytes = run_.console().in.ReadBytes();
            OpenText(path_, files::Creation::CreateAlways)->WriteAt(0, std::as_bytes(std::span(bytes)));
        } else {
            OpenText(path_, files::Creation::OpenExisting);
        }
        fields_ = run_.words().Value(L"--fields").value_or(L"");
        if (!HasHeader()) return;
        const std::wstring line = CopyWithoutHeader(path_, body_.path());
        path_ = body_.path();
        if (fields_.empty()) TakeFields(line);
    }

    void TakeFields(const std::wstring& line) {
        for (const std::wstring& name : NamesInHeader(line, format_.Separator(), format_.Quote()))
            fields_ += (fields_.empty() ? L"" : L",") + name;
    }

    com::Variant Fields() const { return fields_.empty() ? com::Variant() : com::Variant(fields_); }

    /// A missing table, unknown fields and a faulty condition are told with their places here.
    void RequireTable() const {
        const com::ComPtr<IDispatch> table = run_.service().Open(table_);
        const auto select = [&](const com::Variant& condition) {
            CallMember(table.get(), L"Select",
                       {condition, com::Variant(LONG{1}), com::Variant(LONG{0}), Fields()});
        };
        select(com::Variant::Null());
        const std::wstring condition = run_.Condition(2);
        if (!condition.empty()) select(com::Variant(condition));
        if (!CallMember(table.get(), L"Updateable").ToBoolean())
            throw com::ComError(E_ACCESSDENIED, L"table " + table_.shown + L" can only be read");
    }

    void CallFunction() {
        run_.listener().Forget();
        const auto reference = [](com::Variant& value) {
            VARIANT argument{};
            argument.vt = VT_VARIANT | VT_BYREF;
            argument.pvarVal = value.address();
            return argument;
        };
        const com::Variant table(table_.definition());
        const com::Variant file(path_);
        const com::Variant condition(run_.Condition(2));
        const com::Variant fields = Fields();
        const com::Variant control(format_.control());
        const com::Variant format(format_.name());
        // The last argument comes first.
        std::array<VARIANT, 9> arguments = {reference(failed_), reference(added_), reference(rows_),
                                            format.get(),       control.get(),     fields.get(),
                                            condition.get(),    file.get(),        table.get()};
        const com::ComPtr<IDispatch> functions = run_.functions();
        const auto member = FindMember(functions.get(), L"DbfFromFile");
        if (!member) throw com::ComError(DISP_E_UNKNOWNNAME, L"the component has no function DbfFromFile");
        const DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        done_ = InvokeMember(functions.get(), *member, DISPATCH_METHOD, parameters).ToBoolean();
    }

    void Tell() const {
        const LONG rows = NumberOf(rows_);
        const LONG added = NumberOf(added_);
        const auto failed = static_cast<LONG>(failed_.type() & VT_ARRAY ? TextsOf(failed_).size() : 0);
        std::wstring text = file_ + L": " + Counted(rows, L"line") + L" read, " + Counted(added, L"record") +
                            L" added to " + table_.shown;
        if (rows - added - failed > 0 && done_)
            text += L", " + Grouped(rows - added - failed) + L" left out by the condition";
        run_.console().out.WriteLine(text);
        std::vector<std::wstring> notes;
        std::copy_if(run_.listener().notes().begin(), run_.listener().notes().end(),
                     std::back_inserter(notes), [](const std::wstring& note) { return IsImportNote(note); });
        for (std::size_t i = 0; i < std::min(notes.size(), kMostTold); ++i)
            run_.Fail(ImportNote(notes[i], path_, file_, HasHeader() ? 1 : 0));
        if (failed > 0) run_.Fail(Counted(failed, L"line") + L" of " + file_ + L" could not be added");
        if (!done_)
            run_.Fail(L"Cannot import " + file_ + L" into table " + table_.shown + L": " +
                      ReasonOf(run_.listener(), L"the lines could not be read"));
    }

    static LONG NumberOf(const com::Variant& value) { return value.type() == VT_EMPTY ? 0 : value.ToLong(); }

    CommandRun& run_;
    FormatOptions format_;
    std::wstring file_;
    TableName table_;
    TemporaryTextFile input_;
    TemporaryTextFile body_;
    std::wstring path_;
    std::wstring fields_;
    com::Variant rows_;
    com::Variant added_;
    com::Variant failed_;
    bool done_ = false;
};

}  // namespace

void RunImport(CommandRun& run) {
    Import job(run);
    try {
        job.Run();
    } catch (...) {
        run.Fail(run.ReasonOfFailure());
    }
}

}  // namespace zu::runner::commands
