#include "portable/textio/FieldRenderer.h"

#include <type_traits>

#include "portable/error/Error.h"

namespace zu::textio {

namespace {

/// Characters of a long text that are written.
constexpr long kLongTextWidth = 255;
constexpr long kInteger16Width = 6;
constexpr long kInteger32Width = 11;
constexpr long kByteWidth = 3;
constexpr long kAnyWidth = -1;
/// Wider fields, and more decimals, could only be a mistake and would fill the memory.
constexpr long kMostWidth = 16L * 1024 * 1024;

const char* NameOf(Cell::Kind kind) noexcept {
    switch (kind) {
        case Cell::Kind::Null:
            return "no value (Null)";
        case Cell::Kind::Boolean:
            return "a truth value";
        case Cell::Kind::Date:
            return "a date";
        case Cell::Kind::Bytes:
        case Cell::Kind::Characters:
            return "a text";
        default:
            return "a number";
    }
}

bool IsNumber(Cell::Kind kind) noexcept {
    return kind >= Cell::Kind::Integer && kind <= Cell::Kind::Double;
}

std::size_t Places(int decimals) noexcept {
    return decimals > 0 ? static_cast<std::size_t>(decimals) : 0;
}

}  // namespace

template <class Char>
FieldRenderer<Char>::FieldRenderer(const ExportFormat& format, const std::vector<ExportField>& fields,
                                   const Encoding& encoding)
    : encoding_(encoding),
      options_(format.options()),
      delimited_(format.preset() == kDelimited),
      stringsRight_(format.preset() != kDelimited && format.preset() != kFixed),
      numbersPadded_(options_.numbersPadded && !options_.numberPad.empty()),
      quote_(Encode(options_.quote)),
      doubledQuote_(Doubled(quote_)),
      separator_(Encode(options_.separator)),
      stringPad_(Encode(options_.stringPad)),
      numberPad_(Encode(options_.numberPad)),
      trueValue_(Encode(options_.trueValue)),
      falseValue_(Encode(options_.falseValue)),
      numberSigns_(MakeSigns(options_.signPosition)),
      currencySigns_(MakeSigns(options_.currencySignPosition)),
      dates_(options_.dateMask) {
    fields_.reserve(fields.size());
    for (const ExportField& field : fields) {
        fields_.push_back(MakePlan(field));
        const Plan& plan = fields_.back();
        if (plan.width > kMostWidth || plan.decimals > static_cast<std::size_t>(kMostWidth))
            throw Error(ErrorKind::InvalidArgument, "Field " + plan.field.name + ": a width of " +
                                                        std::to_string(plan.width) + " characters with " +
                                                        std::to_string(plan.decimals) +
                                                        " decimals is too much for a text file, at most " +
                                                        std::to_string(kMostWidth) + " are written");
    }
}

template <class Char>
auto FieldRenderer<Char>::Encode(std::u16string_view text) const -> Text {
    if constexpr (std::is_same_v<Char, char>) {
        return encoding_.Encode(text);
    } else {
        return Text(text);
    }
}

template <class Char>
auto FieldRenderer<Char>::MakeSigns(int position) const -> Signs {
    const Text negative = Encode(options_.negativeSymbol);
    const Text positive = Encode(options_.positiveSymbol);
    if (position == static_cast<int>(SignPosition::Right)) return {{}, {negative, positive}};
    if (position == static_cast<int>(SignPosition::Parentheses))
        return {{Text(1, Char('(')), {}}, {Text(1, Char(')')), {}}};
    return {{negative, positive}, {}};
}

template <class Char>
auto FieldRenderer<Char>::MakePlan(const ExportField& field) const -> Plan {
    Plan plan;
    switch (static_cast<FieldType>(field.type)) {
        case FieldType::Text:
            plan.way = Way::Text;
            plan.width = field.size;
            break;
        case FieldType::LongText:
            plan.way = Way::Text;
            plan.width = kLongTextWidth;
            break;
        case FieldType::Date:
            plan.way = Way::Date;
            break;
        case FieldType::Boolean:
            plan.way = Way::Boolean;
            break;
        case FieldType::Byte:
            plan.way = Way::Byte;
            plan.width = delimited_ ? kAnyWidth : kByteWidth;
            break;
        case FieldType::Integer16:
        case FieldType::Integer32:
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Currency:
        case FieldType::Decimal:
            if (!delimited_) return MakeFixedPlan(field);
            plan.way = Way::General;
            break;
    }
    plan.field = field;
    return plan;
}

template <class Char>
auto FieldRenderer<Char>::MakeFixedPlan(const ExportField& field) const -> Plan {
    Plan plan;
    plan.way = Way::Masked;
    switch (static_cast<FieldType>(field.type)) {
        case FieldType::Integer16:
            plan.width = kInteger16Width;
            break;
        case FieldType::Integer32:
            plan.width = kInteger32Width;
            break;
        case FieldType::Single:
            plan.width = options_.lengthOfSingle;
            plan.decimals = Places(options_.decimalsForSingle);
            plan.point = true;
            break;
        case FieldType::Double:
            plan.width = options_.lengthOfDouble;
            plan.decimals = Places(options_.decimalsForDouble);
            plan.point = true;
            break;
        case FieldType::Currency:
            plan.width = options_.lengthOfCurrency;
            plan.decimals = Places(options_.currencyPrecision);
            plan.point = true;
            plan.currency = true;
            break;
        default:
            plan.width = field.size;
            plan.decimals = Places(field.decimals);
            break;
    }
    plan.field = field;
    return plan;
}

template <class Char>
void FieldRenderer<Char>::Refuse(const Plan& plan, const char* wanted, const Cell& value) {
    throw Error(ErrorKind::TypeMismatch, "Field " + plan.field.name + " holds " + NameOf(value.kind) +
                                             ", which cannot be written as " + wanted);
}

template <class Char>
void FieldRenderer<Char>::Render(std::size_t field, const Cell& value, TextBuffer<Char>& out) {
    const Plan& plan = fields_[field];
    switch (plan.way) {
        case Way::General:
        case Way::Masked:
            return RenderNumber(plan, value, out);
        case Way::Date:
            return RenderDate(plan, value, out);
        case Way::Text:
            return RenderText(plan, value, out);
        case Way::Boolean:
            return RenderBoolean(plan, value, out);
        case Way::Byte:
            return RenderByte(plan, value, out);
        case Way::AsItIs:
            return RenderAsItIs(plan, value, out);
    }
}

template <class Char>
void FieldRenderer<Char>::RenderLine(const Cell* values, TextBuffer<Char>& out) {
    std::size_t whole = out.size();
    try {
        for (std::size_t field = 0; field < fields_.size(); ++field) {
            if (field != 0) RenderSeparator(out);
            Render(field, values[field], out);
            whole = out.size();
        }
    } catch (...) {
        out.Shrink(whole);
        throw;
    }
    RenderLineEnd(out);
}

template <class Char>
void FieldRenderer<Char>::RenderLineEnd(TextBuffer<Char>& out) {
    Char* const end = out.Extend(2);
    end[0] = Char('\r');
    end[1] = Char('\n');
}

template <class Char>
void FieldRenderer<Char>::AppendFitted(View prefix, std::string_view digits, View suffix, long width,
                                       TextBuffer<Char>& out) const {
    const std::size_t length = prefix.size() + digits.size() + suffix.size();
    std::size_t surplus = 0;
    if (width >= 0) {
        const auto room = static_cast<std::size_t>(width);
        if (length > room) surplus = length - room;
        if (length < room && numbersPadded_) out.Append(room - length, numberPad_.front());
    }
    const auto keep = [&surplus](auto part) {
        const std::size_t lost = surplus < part.size() ? surplus : part.size();
        surplus -= lost;
        part.remove_prefix(lost);
        return part;
    };
    out.Append(keep(prefix));
    const std::string_view shown = keep(digits);
    Char* at = out.Extend(shown.size());
    for (const char c : shown)
        *at++ = static_cast<Char>(c);
    out.Append(keep(suffix));
}

template <class Char>
void FieldRenderer<Char>::RenderNumber(const Plan& plan, const Cell& value, TextBuffer<Char>& out) {
    if (!IsNumber(value.kind)) Refuse(plan, "a number", value);
    std::string_view digits = plan.way == Way::General ? numbers_.General(value)
                                                       : numbers_.Masked(value, plan.decimals, plan.point);
    if (options_.omitDecimalPoint) {
        digits_ = digits;
        std::erase(digits_, '.');
        digits = digits_;
    }
    const Signs& signs = plan.currency ? currencySigns_ : numberSigns_;
    const std::size_t row = IsNegative(value) ? 0 : 1;
    if (!options_.numbersQuoted)
        return AppendFitted(signs.prefix[row], digits, signs.suffix[row], plan.width, out);
    quoted_.Clear();
    AppendFitted(signs.prefix[row], digits, signs.suffix[row], plan.width, quoted_);
    AppendQuoted(quoted_.view(), out);
}

template <class Char>
void FieldRenderer<Char>::RenderByte(const Plan& plan, const Cell& value, TextBuffer<Char>& out) {
    if (!IsNumber(value.kind)) Refuse(plan, "a number", value);
    const Text minus(IsNegative(value) ? 1 : 0, Char('-'));
    AppendFitted(minus, delimited_ ? numbers_.General(value) : numbers_.Masked(value, 0, false), {},
                 plan.width, out);
}

template <class Char>
void FieldRenderer<Char>::RenderDate(const Plan& plan, const Cell& value, TextBuffer<Char>& out) {
    if (value.kind == Cell::Kind::Null) {
        // Lines of fixed length stay readable when a date is missing.
        if (!delimited_) out.Append(dates_.maskLength(), Char(' '));
        return;
    }
    if (value.kind != Cell::Kind::Date) Refuse(plan, "a date", value);
    const std::u16string_view text = dates_.Print(static_cast<std::int32_t>(value.integer));
    if constexpr (std::is_same_v<Char, char>) {
        missing_ += encoding_.EncodeTo(text, out.Extend(text.size()));
    } else {
        out.Append(text);
    }
}

template <class Char>
auto FieldRenderer<Char>::TextOf(const Plan& plan, const Cell& value) -> View {
    if constexpr (std::is_same_v<Char, char>) {
        if (value.kind == Cell::Kind::Bytes) return {value.bytes, value.length};
        if (value.kind == Cell::Kind::Characters) {
            text_.resize(value.length);
            missing_ += encoding_.EncodeTo({value.characters, value.length}, text_.data());
            return text_;
        }
    } else {
        if (value.kind == Cell::Kind::Characters) return {value.characters, value.length};
        if (value.kind == Cell::Kind::Bytes) {
            text_.clear();
            encoding_.page().Decode({value.bytes, value.length}, text_);
            return text_;
        }
    }
    Refuse(plan, "a text", value);
}

template <class Char>
void FieldRenderer<Char>::AppendQuoted(View text, TextBuffer<Char>& out) const {
    if (quote_.empty()) return out.Append(text);
    const Char quote = quote_.front();
    out.Append(quote);
    for (std::size_t at; (at = text.find(quote)) != View::npos; text.remove_prefix(at + 1)) {
        out.Append(text.substr(0, at));
        out.Append(View(doubledQuote_));
    }
    out.Append(text);
    out.Append(quote);
}

template <class Char>
void FieldRenderer<Char>::RenderText(const Plan& plan, const Cell& value, TextBuffer<Char>& out) {
    View text = TextOf(plan, value);
    if (options_.stringsTrimmed) text.remove_suffix(text.size() - (text.find_last_not_of(Char(' ')) + 1));
    std::size_t padding = 0;
    if (plan.width >= 0) {
        const auto width = static_cast<std::size_t>(plan.width);
        text = text.substr(0, width);
        if (options_.stringsPadded && !stringPad_.empty()) padding = width - text.size();
    }
    if (padding == 0) return options_.stringsQuoted ? AppendQuoted(text, out) : out.Append(text);
    if (!options_.stringsQuoted) {
        if (stringsRight_) out.Append(padding, stringPad_.front());
        out.Append(text);
        if (!stringsRight_) out.Append(padding, stringPad_.front());
        return;
    }
    quoted_.Clear();
    if (stringsRight_) quoted_.Append(padding, stringPad_.front());
    quoted_.Append(text);
    if (!stringsRight_) quoted_.Append(padding, stringPad_.front());
    AppendQuoted(quoted_.view(), out);
}

template <class Char>
void FieldRenderer<Char>::RenderBoolean(const Plan& plan, const Cell& value, TextBuffer<Char>& out) {
    if (value.kind != Cell::Kind::Null && value.kind != Cell::Kind::Boolean)
        Refuse(plan, "True or False", value);
    const bool isTrue = value.kind == Cell::Kind::Boolean && value.integer != 0;
    out.Append(View(isTrue ? trueValue_ : falseValue_));
}

template <class Char>
void FieldRenderer<Char>::RenderAsItIs(const Plan& plan, const Cell& value, TextBuffer<Char>& out) {
    out.Append(TextOf(plan, value));
}

template class FieldRenderer<char>;
template class FieldRenderer<char16_t>;

}  // namespace zu::textio
