#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/engine/WatchedJob.h"
#include "component/table/CopyOutcome.h"
#include "component/table/DataView.h"
#include "component/table/GatheredRows.h"
#include "component/table/clsEvaluator.h"
#include "component/textio/FieldNotes.h"
#include "component/textio/ImportValues.h"
#include "portable/textio/Cell.h"
#include "portable/textio/CellReader.h"
#include "portable/textio/Encoding.h"
#include "portable/textio/ImportFormat.h"
#include "portable/textio/LineCutter.h"
#include "portable/textio/LineReader.h"
#include "portable/textio/ValueReader.h"

namespace zu::component {

/// Adds a record to a view for each line of a text file that is not empty, in one pass. Lines that fail are
/// told to the engine's log with their number, field, text and what was expected; later lines go on.
class TextImport {
public:
    /// `view` and `outcome` must outlive the import. Throws ComError.
    TextImport(DataView& view, const textio::ImportFormat& format, CopyOutcome& outcome);

    /// Only records that meet the condition are saved; a blank one lets all pass. Throws ComError.
    void SetCondition(std::wstring_view condition);

    /// Reads `lines` to the end. Errors of the file end it; `path` names it in the log.
    void Run(textio::LineReader& lines, std::wstring_view path, const WatchedJob* job = nullptr);

private:
    struct Field {
        com::ComPtr<ZuDataField> target;
        textio::ImportField kind;
        std::size_t width;
    };

    enum class Fate : unsigned char { Added, AddedAtOnce, Rejected, Failed };

    /// `wholeRows` takes records at once; null where every one goes through its fields.
    template <class Char>
    void ReadLines(textio::LineReader& lines, std::wstring_view path, const GatheredRows* wholeRows);
    template <class Char>
    Fate AddRecord(textio::LineCutter<Char>& cutter, std::basic_string_view<Char> line,
                   const GatheredRows* wholeRows);
    /// Adds the record without going through its fields. False: the line needs a closer look, and nothing was
    /// done.
    bool AddAtOnce(textio::LineCutter<char>& cutter, std::string_view line, const GatheredRows& rows);
    template <class Char>
    void FillFields(textio::LineCutter<Char>& cutter);
    std::wstring NameOf(std::size_t field) const;
    /// The log and the last error learn why a row was not added. Without an error the table has refused it,
    /// and has said why itself.
    void Report(const std::optional<com::ComError>& error, std::uint64_t line, std::wstring_view path) const;

    DataView& view_;
    const textio::ImportFormat& format_;
    CopyOutcome& outcome_;
    textio::Encoding encoding_;
    textio::ValueReader reader_;
    textio::CellReader cellReader_;
    ImportValues values_;
    std::vector<Field> fields_;
    const WatchedJob* job_ = nullptr;  ///< while lines are read
    std::vector<textio::Cell> cells_;
    std::vector<std::string> kept_;  ///< tokens of fields that do not lie in the line as they are
    std::unique_ptr<clsEvaluator> evaluator_;
    FieldNotes notes_;
    /// The token that a field has refused, for the log; it counts while fields are being filled.
    std::wstring token_;
    bool filling_ = false;
};

}  // namespace zu::component
