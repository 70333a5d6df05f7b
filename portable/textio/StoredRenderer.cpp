#include "portable/textio/StoredRenderer.h"

#include <algorithm>
#include <cstring>

#include "portable/text/ByteWords.h"
#include "portable/textio/StoredBytes.h"

namespace zu::textio {

namespace {

using text::CopyBytes;
using text::LoadWord;

/// Copies bytes and answers whether one of them is 0.
bool CopySeekingZero(const char* from, std::size_t length, char* to) noexcept {
    if (length < 8) {
        CopyBytes(from, length, to);
        return std::find(from, from + length, '\0') != from + length;
    }
    std::uint64_t found = 0;
    const auto copy = [&](const char* source, char* target) {
        found |= text::HasZeroByte(LoadWord(source));
        std::memcpy(target, source, 8);
    };
    copy(from + length - 8, to + length - 8);
    for (; length > 8; from += 8, to += 8, length -= 8)
        copy(from, to);
    return found != 0;
}

}  // namespace

std::optional<StoredRenderer::Way> StoredRenderer::WayFor(const ExportFormat& format,
                                                          const ExportField& field, const StoredField& stored,
                                                          const std::string& quote) {
    const ExportOptions& options = format.options();
    const bool delimited = format.preset() == kDelimited;
    const bool fullWidth = field.size >= 0 && static_cast<std::uint32_t>(field.size) == stored.width;
    switch (stored.form) {
        case StoredField::Form::Text:
            if (field.type != static_cast<int>(FieldType::Text) || !fullWidth) return std::nullopt;
            if (options.stringsPadded && !options.stringPad.empty()) {
                // Formats without a preset pad on the left.
                const bool whole =
                    format.preset() == kFixed && options.stringPad == u" " && !options.stringsQuoted;
                return whole ? std::optional(Way::WholeText) : std::nullopt;
            }
            return options.stringsQuoted && !quote.empty() ? Way::Quoted : Way::Trimmed;
        case StoredField::Form::Number: {
            const bool plain = !options.omitDecimalPoint && !options.numbersQuoted &&
                               options.positiveSymbol.empty() && options.negativeSymbol == u"-" &&
                               options.signPosition != static_cast<int>(SignPosition::Right) &&
                               options.signPosition != static_cast<int>(SignPosition::Parentheses);
            if (field.type != static_cast<int>(FieldType::Decimal) || !plain) return std::nullopt;
            if (delimited) return Way::ShortestDigits;
            const bool whole = fullWidth && std::max(field.decimals, 0) == stored.decimals &&
                               options.numbersPadded && options.numberPad == u" ";
            return whole ? std::optional(Way::WholeDigits) : std::nullopt;
        }
        case StoredField::Form::Date:
            if (field.type != static_cast<int>(FieldType::Date) || stored.width != kStoredDateWidth ||
                options.dateMask != u"yyyymmdd")
                return std::nullopt;
            return Way::Date;
        case StoredField::Form::Logical:
            if (field.type != static_cast<int>(FieldType::Boolean) || stored.width == 0) return std::nullopt;
            return Way::Truth;
    }
    return std::nullopt;
}

std::optional<StoredRenderer> StoredRenderer::Make(const ExportFormat& format,
                                                   const std::vector<ExportField>& fields,
                                                   std::span<const StoredField> stored,
                                                   const Encoding& encoding) {
    if (fields.size() != stored.size() || !encoding.isSingleByte()) return std::nullopt;
    StoredRenderer renderer;
    renderer.delimited_ = format.preset() == kDelimited;
    renderer.separator_ = encoding.Encode(format.options().separator);
    renderer.trueValue_ = encoding.Encode(format.options().trueValue);
    renderer.falseValue_ = encoding.Encode(format.options().falseValue);
    const std::string quote = encoding.Encode(format.options().quote);
    if (!quote.empty()) renderer.quote_ = quote.front();
    renderer.room_ = 2;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::optional<Way> way = WayFor(format, fields[i], stored[i], quote);
        if (!way) return std::nullopt;
        const Step step{*way, stored[i].offset, stored[i].width, {stored[i].width, stored[i].decimals}};
        const bool digits = step.way == Way::ShortestDigits || step.way == Way::WholeDigits;
        if (digits && !step.digits.isUsable()) return std::nullopt;
        renderer.room_ += renderer.separator_.size() + renderer.RoomFor(step);
        renderer.steps_.push_back(step);
    }
    renderer.wholeRecord_ = renderer.IsWholeRecord();
    return renderer;
}

bool StoredRenderer::IsWholeRecord() const noexcept {
    if (delimited_ || !separator_.empty() || steps_.empty()) return false;
    std::uint32_t expected = steps_.front().offset;
    for (const Step& step : steps_) {
        if (step.offset != expected) return false;
        expected += step.width;
        switch (step.way) {
            case Way::WholeText:
            case Way::WholeDigits:
            case Way::Date:
                break;
            case Way::Truth:
                if (step.width != 1 || trueValue_.size() != 1 || falseValue_.size() != 1) return false;
                break;
            default:
                return false;
        }
    }
    return true;
}

bool StoredRenderer::RenderWholeRecord(const char* record, TextBuffer<char>& out) const {
    const Step& last = steps_.back();
    const std::uint32_t first = steps_.front().offset;
    const std::size_t length = last.offset + last.width - first;
    const std::size_t before = out.size();
    char* const line = out.Extend(length + 2);
    bool plain = !CopySeekingZero(record + first, length, line);
    // The fields are looked at where they lie: reading what was just written in other pieces would wait for
    // it.
    for (const Step& step : steps_) {
        const char* const field = record + step.offset;
        char* const copy = line + (step.offset - first);
        if (step.way == Way::WholeDigits)
            plain = plain && step.digits.Find(field).end != 0;
        else if (step.way == Way::Truth)
            *copy = IsStoredTrue(*field) ? trueValue_.front() : falseValue_.front();
        else if (step.way == Way::Date && !IsStoredDate(field))
            std::memset(copy, ' ', kStoredDateWidth);
    }
    if (!plain) {
        out.Shrink(before);
        return false;
    }
    line[length] = '\r';
    line[length + 1] = '\n';
    return true;
}

std::size_t StoredRenderer::RoomFor(const Step& step) const noexcept {
    switch (step.way) {
        case Way::Quoted:
            return 2 * std::size_t{step.width} + 2;
        case Way::Truth:
            return std::max(trueValue_.size(), falseValue_.size());
        default:
            return step.width;
    }
}

char* StoredRenderer::RenderQuoted(const char* text, std::size_t length, char* out) const {
    const std::uint64_t quotes = text::WordOf(quote_);
    *out++ = quote_;
    const char* const end = text + length;
    if (length >= 8) {
        for (; end - text > 8 && text::HasZeroByte(LoadWord(text) ^ quotes) == 0; text += 8, out += 8)
            std::memcpy(out, text, 8);
        if (end - text <= 8 && text::HasZeroByte(LoadWord(end - 8) ^ quotes) == 0) {
            // The last word overlaps with the one before.
            out += end - text;
            std::memcpy(out - 8, end - 8, 8);
            text = end;
        }
    }
    for (; text != end; ++text) {
        if (*text == quote_) *out++ = quote_;
        *out++ = *text;
    }
    *out++ = quote_;
    return out;
}

char* StoredRenderer::RenderDate(const char* field, char* out) const {
    if (IsStoredDate(field)) {
        std::memcpy(out, field, kStoredDateWidth);
        return out + kStoredDateWidth;
    }
    if (delimited_) return out;
    std::memset(out, ' ', kStoredDateWidth);
    return out + kStoredDateWidth;
}

char* StoredRenderer::RenderField(const Step& step, const char* field, char* out) const {
    switch (step.way) {
        case Way::Trimmed: {
            const std::size_t length = LengthWithoutPadding(field, step.width);
            CopyBytes(field, length, out);
            return out + length;
        }
        case Way::Quoted:
            return RenderQuoted(field, LengthWithoutPadding(field, step.width), out);
        case Way::WholeText:
            return CopySeekingZero(field, step.width, out) ? nullptr : out + step.width;
        case Way::ShortestDigits: {
            const text::DigitsField::Place place = step.digits.FindShortest(field);
            if (place.end == 0) return nullptr;
            CopyBytes(field + place.begin, place.end - place.begin, out);
            return out + (place.end - place.begin);
        }
        case Way::WholeDigits:
            if (step.digits.Find(field).end == 0) return nullptr;
            CopyBytes(field, step.width, out);
            return out + step.width;
        case Way::Date:
            return RenderDate(field, out);
        case Way::Truth: {
            const std::string& truth = IsStoredTrue(*field) ? trueValue_ : falseValue_;
            CopyBytes(truth.data(), truth.size(), out);
            return out + truth.size();
        }
    }
    return nullptr;
}

bool StoredRenderer::RenderLine(const char* record, TextBuffer<char>& out) const {
    if (wholeRecord_) return RenderWholeRecord(record, out);
    const std::size_t before = out.size();
    char* const begin = out.Extend(room_);
    char* at = begin;
    bool first = true;
    for (const Step& step : steps_) {
        if (!first) {
            CopyBytes(separator_.data(), separator_.size(), at);
            at += separator_.size();
        }
        first = false;
        at = RenderField(step, record + step.offset, at);
        if (at == nullptr) {
            out.Shrink(before);
            return false;
        }
    }
    *at++ = '\r';
    *at++ = '\n';
    out.Shrink(before + static_cast<std::size_t>(at - begin));
    return true;
}

}  // namespace zu::textio
