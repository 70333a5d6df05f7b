#include "component/textio/TextExport.h"

#include <cstdint>
#include <string>
#include <type_traits>

#include "component/textio/FieldCells.h"
#include "component/textio/TextFile.h"
#include "portable/error/Error.h"

namespace zu::component {

namespace {

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

void TextExport::Write(DataView& view) {
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

template <class Char>
void TextExport::WriteRecords(DataView& view) {
    view.MoveFirst();
    FieldCells cells(view);
    textio::FieldRenderer<Char> renderer(format_, cells.fields(), encoding_);
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
        view.MoveNext();
    }
    missing_ += renderer.missingCharacters();
}

}  // namespace zu::component
