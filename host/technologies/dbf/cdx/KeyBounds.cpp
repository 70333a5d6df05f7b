#include "host/technologies/dbf/cdx/KeyBounds.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "host/technologies/dbf/cdx/KeyBytes.h"

namespace zu::dbf::cdx {

namespace {

using expression::Result;
using expression::Type;

constexpr std::byte kNotNull{0x80};
constexpr std::byte kLowest{0x00};
constexpr std::byte kHighest{0xFF};
constexpr std::int32_t kHalfSecond = 500;

enum class Side { Low, High };

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
        text.remove_suffix(1);
    return text;
}

KeyBuffer TextBound(const KeyForm& form, std::string_view text, std::byte fill) {
    KeyBuffer bound(form.length(), fill);
    std::byte* at = bound.data();
    if (form.nullable) *at++ = kNotNull;
    std::memcpy(at, text.data(), std::min(text.size(), form.width));
    return bound;
}

// A text bound counts without its trailing blanks, so shorter values with control characters behind them must
// stay inside; in a composite key everything behind the first part is free.
KeyBuffer RangeText(const KeyForm& form, std::string_view text, Side side, bool isComposite) {
    const std::string_view trimmed = WithoutTrailingBlanks(text);
    if (side == Side::Low) return TextBound(form, trimmed, kLowest);
    return TextBound(form, trimmed, isComposite ? kHighest : std::byte{' '});
}

Result Moved(const Result& moment, std::int32_t milliseconds) {
    constexpr std::int32_t kDay = 86'400'000;
    Result moved = moment;
    moved.milliseconds += milliseconds;
    if (moved.milliseconds < 0) {
        moved.milliseconds += kDay;
        --moved.julianDay;
    }
    return moved;
}

// The bound of a value that is no text; nothing when the value is not of the key's type.
std::optional<KeyBuffer> RangeValue(const KeyEncoder& encoder, const Result& value, Side side) {
    const bool isLow = side == Side::Low;
    const bool isMoment = value.type == Type::Date || value.type == Type::DateTime;
    Result bound = value;
    switch (encoder.form().encoding) {
        case KeyEncoding::Text:
            return std::nullopt;
        case KeyEncoding::Integer32:
            if (value.type != Type::Number) return std::nullopt;
            bound.number = isLow ? std::ceil(value.number) : std::floor(value.number);
            break;
        case KeyEncoding::Currency:
            if (value.type != Type::Number) return std::nullopt;
            // One unit of slack for the rounding of decimal fractions.
            bound.number = value.number + (isLow ? -0.0001 : 0.0001);
            break;
        case KeyEncoding::Double:
            if (value.type != Type::Number) return std::nullopt;
            break;
        case KeyEncoding::Date:
            if (!isMoment) return std::nullopt;
            break;
        case KeyEncoding::DateTime:
            if (!isMoment) return std::nullopt;
            if (value.type == Type::Date) bound.milliseconds = 0;
            bound = Moved(bound, isLow ? -kHalfSecond : kHalfSecond);
            break;
        case KeyEncoding::Logical:
            if (value.type != Type::Boolean) return std::nullopt;
            break;
    }
    KeyBuffer bytes(encoder.form().length(), kLowest);
    encoder.EncodeResult(bound, bytes.data());
    return bytes;
}

}  // namespace

KeyBounds KeyBounds::Everything(std::size_t keyLength) {
    return {KeyBuffer(keyLength, kLowest), KeyBuffer(keyLength, kHighest)};
}

KeyBounds KeyBounds::Of(const KeyEncoder& encoder, const Result& value) {
    KeyBounds bounds;
    bounds.low = KeyBuffer(encoder.form().length(), kLowest);
    encoder.EncodeResult(value, bounds.low.data());
    bounds.high = bounds.low;
    return bounds;
}

KeyBounds KeyBounds::Prefix(const KeyForm& form, std::string_view prefix) {
    return {TextBound(form, prefix, kLowest), TextBound(form, prefix, kHighest)};
}

KeyBounds KeyBounds::AroundMoment(const KeyEncoder& encoder, const Result& moment) {
    KeyBounds bounds;
    bounds.low = Of(encoder, Moved(moment, -kHalfSecond)).low;
    bounds.high = Of(encoder, Moved(moment, kHalfSecond)).high;
    return bounds;
}

KeyBounds KeyBounds::AroundKey(const KeyEncoder& encoder, std::span<const std::byte> key) {
    KeyBounds bounds{KeyBuffer(key), KeyBuffer(key)};
    const std::size_t start = encoder.form().nullable ? 1 : 0;
    if (start == 1 && key.front() != kNotNull) return bounds;
    const double moment = LoadDoubleKey(key.data() + start);
    if (moment == 0) return bounds;
    StoreDoubleKey(moment - kHalfSecond / kMillisecondsPerDay, bounds.low.data() + start);
    StoreDoubleKey(moment + kHalfSecond / kMillisecondsPerDay, bounds.high.data() + start);
    return bounds;
}

std::optional<KeyBounds> KeyBounds::FromRange(const KeyEncoder& encoder, const expression::KeyRange& range,
                                              bool isComposite) {
    const KeyForm& form = encoder.form();
    const bool hasLow = range.low && !range.low->isNull;
    const bool hasHigh = range.high && !range.high->isNull;
    if (!hasLow && !hasHigh) return std::nullopt;

    KeyBounds bounds = Everything(form.length());
    if (form.encoding == KeyEncoding::Text) {
        if ((hasLow && range.low->type != Type::Text) || (hasHigh && range.high->type != Type::Text)) {
            return std::nullopt;
        }
        if (range.prefix) {
            if (!hasLow) return std::nullopt;
            const std::string_view prefix = WithoutTrailingBlanks(range.low->text);
            if (prefix.empty()) return std::nullopt;
            return Prefix(form, prefix);
        }
        if (hasLow) bounds.low = RangeText(form, range.low->text, Side::Low, isComposite);
        if (hasHigh) bounds.high = RangeText(form, range.high->text, Side::High, isComposite);
        return bounds;
    }
    if (range.prefix) return std::nullopt;
    if (hasLow) {
        auto low = RangeValue(encoder, *range.low, Side::Low);
        if (!low) return std::nullopt;
        bounds.low = *low;
    }
    if (hasHigh) {
        auto high = RangeValue(encoder, *range.high, Side::High);
        if (!high) return std::nullopt;
        bounds.high = *high;
    }
    return bounds;
}

}  // namespace zu::dbf::cdx
