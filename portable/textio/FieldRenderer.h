#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "portable/textio/Cell.h"
#include "portable/textio/DatePrinter.h"
#include "portable/textio/Encoding.h"
#include "portable/textio/ExportFormat.h"
#include "portable/textio/NumberPrinter.h"
#include "portable/textio/TextBuffer.h"

namespace zu::textio {

/// What a format must know of a field.
struct ExportField {
    std::string name;  ///< UTF-8, for error texts
    int type = 0;      ///< a FieldType, or another number for values that are written as their text
    int size = 0;      ///< defined width in characters
    int decimals = 0;  ///< of decimals; 0 or less for none
};

/// Turns the values of a record into text under a format. What the format says is worked out once, so that a
/// value costs little.
///
/// `Char` is char where each character is one byte of the file's code page, and char16_t otherwise. All
/// widths count characters. Failures are Errors that name the field.
template <class Char>
class FieldRenderer {
public:
    /// `encoding` must outlive the renderer.
    FieldRenderer(const ExportFormat& format, const std::vector<ExportField>& fields,
                  const Encoding& encoding);

    std::size_t fieldCount() const noexcept { return fields_.size(); }
    /// Appends the text of one field.
    void Render(std::size_t field, const Cell& value, TextBuffer<Char>& out);
    /// Appends a whole line: the fields in order with the separator between them, and the line's end. When a
    /// field fails, the fields before it stay.
    void RenderLine(const Cell* values, TextBuffer<Char>& out);
    void RenderSeparator(TextBuffer<Char>& out) const {
        out.Append(std::basic_string_view<Char>(separator_));
    }
    static void RenderLineEnd(TextBuffer<Char>& out);

    /// Characters so far that the code page lacks.
    std::size_t missingCharacters() const noexcept { return missing_; }

private:
    using Text = std::basic_string<Char>;
    using View = std::basic_string_view<Char>;

    enum class Way : unsigned char { General, Masked, Date, Text, Boolean, Byte, AsItIs };

    /// Prefix and suffix of the negative (0) and the positive (1) numbers.
    struct Signs {
        Text prefix[2];
        Text suffix[2];
    };

    struct Plan {
        Way way = Way::AsItIs;
        bool currency = false;  ///< takes the signs of currency
        bool point = false;     ///< the mask has a point even without decimals
        long width = -1;        ///< negative: any
        std::size_t decimals = 0;
        ExportField field;
    };

    Text Encode(std::u16string_view text) const;
    Signs MakeSigns(int position) const;
    Plan MakePlan(const ExportField& field) const;
    Plan MakeFixedPlan(const ExportField& field) const;
    static Text Doubled(const Text& quote) { return quote + quote; }

    void RenderNumber(const Plan& plan, const Cell& value, TextBuffer<Char>& out);
    void RenderByte(const Plan& plan, const Cell& value, TextBuffer<Char>& out);
    void RenderDate(const Plan& plan, const Cell& value, TextBuffer<Char>& out);
    void RenderText(const Plan& plan, const Cell& value, TextBuffer<Char>& out);
    void RenderBoolean(const Plan& plan, const Cell& value, TextBuffer<Char>& out);
    void RenderAsItIs(const Plan& plan, const Cell& value, TextBuffer<Char>& out);
    /// The characters of a text cell, in `text_` where they had to be converted.
    View TextOf(const Plan& plan, const Cell& value);
    void AppendQuoted(View text, TextBuffer<Char>& out) const;
    /// The digits with the signs around them, fitted: the rightmost characters are kept, padding stands in
    /// front.
    void AppendFitted(View prefix, std::string_view digits, View suffix, long width,
                      TextBuffer<Char>& out) const;
    [[noreturn]] static void Refuse(const Plan& plan, const char* wanted, const Cell& value);

    const Encoding& encoding_;
    const ExportOptions options_;
    bool delimited_;
    bool stringsRight_;  ///< texts are padded on the left
    bool numbersPadded_;
    Text quote_;
    Text doubledQuote_;
    Text separator_;
    Text stringPad_;
    Text numberPad_;
    Text trueValue_;
    Text falseValue_;
    Signs numberSigns_;
    Signs currencySigns_;
    std::vector<Plan> fields_;
    NumberPrinter numbers_;
    DatePrinter dates_;
    Text text_;
    std::string digits_;
    TextBuffer<Char> quoted_;
    std::size_t missing_ = 0;
};

extern template class FieldRenderer<char>;
extern template class FieldRenderer<char16_t>;

}  // namespace zu::textio
