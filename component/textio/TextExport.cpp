#include "component/textio/TextExport.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <type_traits>

#include "component/textio/FieldCells.h"
#include "component/textio/StoredLines.h"
#include "component/textio/TextFile.h"
#include "idl/RecordRuns.h"
#include "portable/error/Error.h"

namespace zu::component {

namespace {

/// Fields of other types are written as their text, which only automation can make.
bool HaveCells(const std::vector<textio::ExportField>& fields) noexcept {
    const auto hasCell = [](const textio::ExportField& field) {
        switch (static_cast<textio::FieldType>(field.type)) {
            case textio::FieldType::Integer16:
            case textio::FieldType::Integer32:
            case textio::FieldType::Single:
            case textio::FieldType::Double:
            case textio::FieldType::Currency:
            case textio::FieldType::Date:
            case textio::FieldType::Text:
            case textio::FieldType::Boolean:
            case textio::FieldType::Decimal:
            case textio::FieldType::Byte:
            case textio::FieldType::LongText:
                return true;
        }
        return false;
    };
    return std::all_of(fields.begin(), fields.end(), hasCell);
}

/// The line in hand: straight in the file's buffer where each character is a byte.
template <class Char>
class LineTarget {
public:
    LineTarget(textio::BlockWriter& writer, const textio::Encoding& encoding)
        : writer_(writer), encoding_(encoding) {}

    textio::TextBuffer<Char>& buffer() noexcept {
        if constexpr (std::is_same_v<Char, char>) {
            return writer_.buffer();
        } else {
            return line_;
        }
    }

    /// Hands over what was added since; answers how many characters the code page lacked.
    std::size_t Deliver() {
        std::size_t missing = 0;
        if constexpr (!std::is_same_v<Char, char>) {
            bytes_.clear();
            missing = encoding_.Append(line_.view(), bytes_);
            line_.Clear();
            writer_.buffer().Append(std::string_view(bytes_));
        }
        writer_.LineDone();
        return missing;
    }

private:
    textio::BlockWriter& writer_;
    const textio::Encoding& encoding_;
    textio::TextBuffer<char16_t> line_;
    std::string bytes_;
};

/// Reads and writes field by field, so that the fields before one that fails are in the file.
template <class Char>
void RenderRecord(FieldCells& cells, textio::FieldRenderer<Char>& renderer,
                  textio::TextBuffer<Char>& buffer) {
    for (std::size_t field = 0; field < renderer.fieldCount(); ++field) {
        const textio::Cell cell = cells.Read(field);
        const std::size_t before = buffer.size();
        if (field != 0) renderer.RenderSeparator(buffer);
        try {
            renderer.Render(field, cell, buffer);
        } catch (...) {
            buffer.Shrink(before);
            throw;
        }
    }
    renderer.RenderLineEnd(buffer);
}

}  // namespace

TextExport::TextExport(std::wstring_view path, const textio::ExportFormat& format)
    : format_(format), encoding_(SystemCodePage()), writer_(CreateTextFile(path)) {}

void TextExport::Write(DataView& view, const WatchedJob* job) {
    job_ = job;
    try {
        if (encoding_.isSingleByte()) {
            WriteRecords<char>(view);
        } else {
            WriteRecords<char16_t>(view);
        }
    } catch (...) {
        try {
            writer_.Flush();
        } catch (const Error&) {
            // The first error counts; nothing more can be written.
        }
        throw;
    }
    writer_.Flush();
}

bool TextExport::WriteRuns(DataView& view, const std::vector<textio::ExportField>& fields,
                           textio::FieldRenderer<char>& renderer) {
    const com::ComPtr<RecordRuns> runs = com::Share(view.get()).tryAs<RecordRuns>();
    if (!runs) return false;
    const UINT codePage = encoding_.page().number();
    StoredLines stored(view, *runs, format_, fields, encoding_);
    for (std::uint64_t record = 1;;) {
        while (const ULONG written = stored.Write(static_cast<LONG>(record - 1), writer_)) {
            record += written;
            if (job_) job_->Reached(static_cast<LONG>(record - 1));
        }
        const textio::Cell* cells = nullptr;
        ULONG count = 0;
        const HRESULT read = runs->ReadRun(codePage, stored.closerLooks(), &cells, &count);
        if (read == E_NOTIMPL && record == 1) return false;
        com::Check(read);
        if (count == 0) return true;
        for (ULONG row = 0; row < count; ++row, ++record) {
            try {
                renderer.RenderLine(cells, writer_.buffer());
            } catch (const Error& error) {
                throw Error(error.kind(), "Record " + std::to_string(record) + ": " + error.what());
            }
            writer_.LineDone();
            cells += renderer.fieldCount();
        }
        if (job_) job_->Reached(static_cast<LONG>(record - 1));
    }
}

template <class Char>
void TextExport::WriteRecords(DataView& view) {
    view.MoveFirst();
    FieldCells cells(view);
    textio::FieldRenderer<Char> renderer(format_, cells.fields(), encoding_);
    if constexpr (std::is_same_v<Char, char>) {
        if (HaveCells(cells.fields()) && WriteRuns(view, cells.fields(), renderer)) {
            missing_ += renderer.missingCharacters();
            return;
        }
    }
    LineTarget<Char> line(writer_, encoding_);
    for (std::uint64_t record = 1; !view.Eof(); ++record) {
        try {
            RenderRecord(cells, renderer, line.buffer());
        } catch (const Error& error) {
            missing_ += line.Deliver();
            throw Error(error.kind(), "Record " + std::to_string(record) + ": " + error.what());
        } catch (...) {
            missing_ += line.Deliver();
            throw;
        }
        missing_ += line.Deliver();
        if (job_) job_->Reached(static_cast<LONG>(record));
        view.MoveNext();
    }
    missing_ += renderer.missingCharacters();
}

}  // namespace zu::component
