#include "component/textio/TextImport.h"

#include <functional>
#include <optional>
#include <type_traits>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/QuotedText.h"
#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/engine/Trapped.h"
#include "component/textio/TextFile.h"

namespace zu::component {

using com::Bstr;
using com::Check;
using com::Variant;

namespace {

constexpr const wchar_t* kFunction = L"DbfFromFile";
/// Characters of a value that the log shows.
constexpr std::size_t kMostShown = 100;

std::wstring_view WithoutBlanks(std::wstring_view text) noexcept {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

template <class Char>
std::basic_string<Char> InFile(const textio::Encoding& encoding, const std::u16string& text) {
    if constexpr (std::is_same_v<Char, char>) {
        return encoding.Encode(text);
    } else {
        return text;
    }
}

}  // namespace

TextImport::TextImport(DataView& view, const textio::ImportFormat& format, CopyOutcome& outcome)
    : view_(view),
      format_(format),
      outcome_(outcome),
      encoding_(SystemCodePage()),
      reader_(format),
      cellReader_(reader_),
      values_(format, encoding_.page()) {
    const LONG count = view.FieldCount();
    for (LONG position = 0; position < count; ++position) {
        Field field;
        field.target = view.Field(Variant(position));
        LONG number = 0;
        Check(field.target->get_Type(&number));
        field.kind.type = number;
        Check(field.target->get_Size(&number));
        field.kind.size = number;
        field.width = reader_.WidthOf(field.kind);
        fields_.push_back(std::move(field));
    }
}

void TextImport::SetCondition(std::wstring_view condition) {
    const std::wstring_view formula = WithoutBlanks(condition);
    if (formula.empty()) return;
    evaluator_ = std::make_unique<clsEvaluator>();
    evaluator_->SetFormula(formula);
    evaluator_->SetFields(com::Share(&view_.Fields()));
}

void TextImport::Run(textio::LineReader& lines, std::wstring_view path, const WatchedJob* job) {
    job_ = job;
    GatheredRows gathered(view_, outcome_);
    // What a condition says is known when the fields are filled.
    const GatheredRows* const wholeRows = evaluator_ || !gathered.isOpen() ? nullptr : &gathered;
    kept_.resize(fields_.size());
    if (encoding_.isSingleByte()) {
        ReadLines<char>(lines, path, wholeRows);
    } else {
        ReadLines<char16_t>(lines, path, wholeRows);
    }
    gathered.Finish();
}

template <class Char>
void TextImport::ReadLines(textio::LineReader& lines, std::wstring_view path, const GatheredRows* wholeRows) {
    textio::LineCutter<Char> cutter(format_.preset(), InFile<Char>(encoding_, format_.separator()),
                                    InFile<Char>(encoding_, format_.quote()));
    std::string_view bytes;
    std::u16string wide;
    for (std::uint64_t number = 1; lines.Next(bytes); ++number) {
        if (bytes.empty()) continue;
        std::basic_string_view<Char> line;
        if constexpr (std::is_same_v<Char, char>) {
            line = bytes;
        } else {
            wide.clear();
            encoding_.page().Decode(bytes, wide);
            line = wide;
        }
        outcome_.BeginRow();
        notes_.BeginLine();
        filling_ = false;
        Fate fate = Fate::Failed;
        std::optional<com::ComError> error;
        try {
            fate = AddRecord(cutter, line, wholeRows);
        } catch (...) {
            error = CurrentRunTimeError();
        }
        if (fate == Fate::Failed) Report(error, number, path);
        if (fate != Fate::Rejected) outcome_.EndRow(fate != Fate::Failed);
        if (job_ && fate == Fate::AddedAtOnce)
            job_->Passed(outcome_.rows());
        else if (job_)
            job_->Reached(outcome_.rows());
    }
}

template <class Char>
auto TextImport::AddRecord(textio::LineCutter<Char>& cutter, std::basic_string_view<Char> line,
                           [[maybe_unused]] const GatheredRows* wholeRows) -> Fate {
    if constexpr (std::is_same_v<Char, char>) {
        if (wholeRows && AddAtOnce(cutter, line, *wholeRows)) return Fate::AddedAtOnce;
    }
    cutter.Start(line);
    Variant blank = Variant::Missing();
    if (!view_.AddNew(*blank.address())) return Fate::Failed;
    FillFields(cutter);
    if (evaluator_ && !Engine().data().ToBoolean(Variant(evaluator_->Evaluate()))) return Fate::Rejected;
    return view_.Update() ? Fate::Added : Fate::Failed;
}

bool TextImport::AddAtOnce(textio::LineCutter<char>& cutter, std::string_view line,
                           const GatheredRows& rows) {
    cells_.clear();
    cutter.Start(line);
    for (std::size_t position = 0; position < fields_.size() && !cutter.isAtEnd(); ++position) {
        const Field& field = fields_[position];
        std::string_view token = cutter.Next(field.width);
        const std::less<> before;
        if (before(token.data(), line.data()) ||
            before(line.data() + line.size(), token.data() + token.size()))
            token = kept_[position].assign(token);
        textio::Cell cell;
        const bool isDecimal = static_cast<textio::FieldType>(field.kind.type) == textio::FieldType::Decimal;
        if (!(isDecimal && textio::CellReader::ReadDigits(token, cell)) &&
            !cellReader_.Read(field.kind, token, cell))
            return false;
        if (static_cast<textio::FieldType>(field.kind.type) == textio::FieldType::Boolean) {
            const std::optional<bool> truth = values_.Truth(token);
            if (!truth) return false;
            cell = textio::Cell::OfBoolean(*truth);
        }
        cells_.push_back(cell);
    }
    return rows.Add(encoding_.page().number(), cells_);
}

template <class Char>
void TextImport::FillFields(textio::LineCutter<Char>& cutter) {
    filling_ = true;
    for (std::size_t position = 0; position < fields_.size() && !cutter.isAtEnd(); ++position) {
        const Field& field = fields_[position];
        notes_.BeginField(position);
        const std::basic_string_view<Char> token = cutter.Next(field.width);
        const Variant value = values_.Convert(reader_.Read<Char>(field.kind, token), field.kind.type, notes_);
        const HRESULT stored = field.target->put_Value(value);
        if (FAILED(stored)) {
            if constexpr (std::is_same_v<Char, char>) {
                std::u16string shown;
                encoding_.page().Decode(token, shown);
                token_ = com::AsWide(shown);
            } else {
                token_ = com::AsWide(token);
            }
            Check(stored);
        }
    }
    filling_ = false;
}

std::wstring TextImport::NameOf(std::size_t field) const {
    Bstr name;
    if (FAILED(fields_[field].target->get_Name(name.put())) || name.empty())
        return std::to_wstring(field + 1);
    return name.str();
}

void TextImport::Report(const std::optional<com::ComError>& error, std::uint64_t line,
                        std::wstring_view path) const {
    Trap([&] {
        std::wstring where = L"Row " + std::to_wstring(outcome_.rows()) + L" (line " + std::to_wstring(line) +
                             L") of " + std::wstring(path) + L" was not added: ";
        if (error && filling_)
            where += L"field " + NameOf(notes_.field()) + L" does not take " +
                     com::Quoted(token_, kMostShown) + L": ";
        std::wstring remarks;
        for (const FieldNotes::Note& note : notes_.notes())
            remarks += L"; field " + NameOf(note.field) + L" holds " + com::Quoted(note.token, kMostShown) +
                       L" where " + note.expected + L" was expected";
        if (error) TellReason(error->code(), where + DescriptionOf(*error) + remarks, ReasonFor::Asking);
        Engine().messages().Trace(
            where + (error ? RunTimeErrorText(*error, kFunction) : L"the table refused the record") +
            remarks);
    });
}

}  // namespace zu::component
