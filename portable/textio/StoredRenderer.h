#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "portable/text/DigitsField.h"
#include "portable/textio/Encoding.h"
#include "portable/textio/ExportFormat.h"
#include "portable/textio/FieldRenderer.h"
#include "portable/textio/StoredField.h"
#include "portable/textio/TextBuffer.h"

namespace zu::textio {

/// Writes the lines that FieldRenderer writes, straight from the bytes of stored records: most values stand
/// there as they are to be written, or nearly so. What the bytes are worth is only asked as far as that
/// takes.
class StoredRenderer {
public:
    /// Nothing when the format wants a field in a form that its bytes do not have. `fields` and `stored`
    /// describe the same fields, in their order.
    static std::optional<StoredRenderer> Make(const ExportFormat& format,
                                              const std::vector<ExportField>& fields,
                                              std::span<const StoredField> stored, const Encoding& encoding);

    /// Appends the line of a record. False, and nothing is appended: a value needs a closer look.
    bool RenderLine(const char* record, TextBuffer<char>& out) const;

private:
    enum class Way : unsigned char {
        Trimmed,         ///< the text without its padding
        Quoted,          ///< the same between quotes
        WholeText,       ///< with its padding, as it lies there
        ShortestDigits,  ///< the number alone
        WholeDigits,     ///< with its padding
        Date,
        Truth
    };

    struct Step {
        Way way;
        std::uint32_t offset;
        std::uint32_t width;
        text::DigitsField digits;
    };

    StoredRenderer() = default;
    static std::optional<Way> WayFor(const ExportFormat& format, const ExportField& field,
                                     const StoredField& stored, const std::string& quote);
    /// The most bytes that a field takes in a line.
    std::size_t RoomFor(const Step& step) const noexcept;
    char* RenderField(const Step& step, const char* field, char* out) const;
    char* RenderQuoted(const char* text, std::size_t length, char* out) const;
    char* RenderDate(const char* field, char* out) const;

    /// The bytes of the record from the first field to the last are the line, but for dates and truth values.
    bool IsWholeRecord() const noexcept;
    bool RenderWholeRecord(const char* record, TextBuffer<char>& out) const;

    std::vector<Step> steps_;
    bool wholeRecord_ = false;
    std::string separator_;
    std::string trueValue_;
    std::string falseValue_;
    char quote_ = 0;
    bool delimited_ = false;
    std::size_t room_ = 0;  ///< the most bytes of a line
};

}  // namespace zu::textio
