#include "host/technologies/dbf/cdx/KeyEncoder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/KeyBytes.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/ByteWords.h"
#include "portable/text/NumberText.h"

namespace zu::dbf::cdx {

namespace {

using expression::Result;
using expression::Storage;

constexpr std::byte kNotNull{0x80};
constexpr double kUnitsPerCurrency = 10000.0;

template <typename Integer>
Integer Clamped(double value) noexcept {
    if (std::isnan(value)) return 0;
    // The greatest 64-bit integer is no double: compare with the power of two above it.
    if (value >= -static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::max();
    }
    if (value <= static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::min();
    }
    return static_cast<Integer>(std::nearbyint(value));
}

// The Julian day of YYYYMMDD; 0 for blank fields and days that do not exist.
std::int32_t JulianDayOf(const std::byte* digits) noexcept {
    int parts[8];
    for (int i = 0; i < 8; ++i) {
        parts[i] = std::to_integer<int>(digits[i]) - '0';
        if (parts[i] < 0 || parts[i] > 9) return 0;
    }
    calendar::Date date;
    date.year = parts[0] * 1000 + parts[1] * 100 + parts[2] * 10 + parts[3];
    date.month = parts[4] * 10 + parts[5];
    date.day = parts[6] * 10 + parts[7];
    return calendar::IsValid(date) ? calendar::ToJulianDay(date) : 0;
}

}  // namespace

KeyEncoder::KeyEncoder(const expression::Program& key, const expression::RecordLayout& layout,
                       const KeyForm& form)
    : key_(key), layout_(layout), form_(form) {
    const auto position = key.singleField();
    if (position && *position < layout.fields.size()) field_ = &layout.fields[*position];
}

bool KeyEncoder::IsNull(const std::byte* record) const noexcept {
    if (field_->nullBit < 0) return false;
    const auto bit = static_cast<std::uint32_t>(field_->nullBit);
    const std::uint32_t at = layout_.nullFlagsOffset + bit / 8;
    if (at >= layout_.recordLength) return false;
    return (std::to_integer<unsigned>(record[at]) >> (bit % 8) & 1U) != 0;
}

void KeyEncoder::Encode(const expression::Row& row, std::byte* out) {
    if (field_ != nullptr) {
        std::byte* value = out;
        if (form_.nullable) {
            if (IsNull(row.record)) {
                std::memset(out, 0, form_.length());
                return;
            }
            *value++ = kNotNull;
        }
        if (EncodeField(row.record, value)) return;
        key_.Evaluate(row, value_);
        EncodeValue(value_, value);
        return;
    }
    key_.Evaluate(row, value_);
    EncodeResult(value_, out);
}

void KeyEncoder::EncodeResult(const Result& value, std::byte* out) const {
    if (form_.nullable) {
        if (value.isNull) {
            std::memset(out, 0, form_.length());
            return;
        }
        *out++ = kNotNull;
    }
    EncodeValue(value, out);
}

// The storages whose keys follow from the bytes at once. False: the expression must be run.
bool KeyEncoder::EncodeField(const std::byte* record, std::byte* out) const {
    const std::byte* raw = record + field_->offset;
    const std::size_t width = field_->width;
    switch (field_->storage) {
        case Storage::Character: {
            if (form_.encoding != KeyEncoding::Text) return false;
            const std::size_t copied = std::min(width, form_.width);
            auto* const characters = reinterpret_cast<char*>(out);
            text::CopyBytes(reinterpret_cast<const char*>(raw), copied, characters);
            text::FillBlanks(characters + copied, form_.width - copied);
            return true;
        }
        case Storage::NumberText: {
            if (form_.encoding != KeyEncoding::Double) return false;
            double number = 0;
            text::ParseNumber(std::string_view(reinterpret_cast<const char*>(raw), width), number);
            StoreDoubleKey(number, out);
            return true;
        }
        case Storage::DateText:
            if (form_.encoding != KeyEncoding::Date || width < 8) return false;
            StoreDoubleKey(JulianDayOf(raw), out);
            return true;
        case Storage::Integer32: {
            if (width != 4) return false;
            const auto value = static_cast<std::int32_t>(LoadLittle<std::uint32_t>(raw));
            if (form_.encoding == KeyEncoding::Integer32) {
                StoreIntegerKey(value, out);
            } else {
                StoreDoubleKey(value, out);
            }
            return true;
        }
        case Storage::Double:
            if (form_.encoding != KeyEncoding::Double || width != 8) return false;
            StoreDoubleKey(std::bit_cast<double>(LoadLittle<std::uint64_t>(raw)), out);
            return true;
        case Storage::Currency: {
            if (width != 8) return false;
            const auto units = static_cast<std::int64_t>(LoadLittle<std::uint64_t>(raw));
            if (form_.encoding == KeyEncoding::Currency) {
                StoreCurrencyKey(units, out);
            } else {
                StoreDoubleKey(static_cast<double>(units) / kUnitsPerCurrency, out);
            }
            return true;
        }
        case Storage::DateTime: {
            if (form_.encoding != KeyEncoding::DateTime || width != 8) return false;
            const auto day = static_cast<std::int32_t>(LoadLittle<std::uint32_t>(raw));
            const auto milliseconds = static_cast<std::int32_t>(LoadLittle<std::uint32_t>(raw + 4));
            StoreDoubleKey(day == 0 ? 0 : MomentNumber(day, milliseconds), out);
            return true;
        }
        default:
            return false;
    }
}

void KeyEncoder::EncodeValue(const Result& value, std::byte* out) const {
    const bool none = value.isNull;
    switch (form_.encoding) {
        case KeyEncoding::Text: {
            const std::size_t copied = none ? 0 : std::min(value.text.size(), form_.width);
            std::memcpy(out, value.text.data(), copied);
            std::memset(out + copied, ' ', form_.width - copied);
            break;
        }
        case KeyEncoding::Integer32:
            StoreIntegerKey(none ? 0 : Clamped<std::int32_t>(value.number), out);
            break;
        case KeyEncoding::Double:
            StoreDoubleKey(none ? 0 : value.number, out);
            break;
        case KeyEncoding::Currency:
            StoreCurrencyKey(none ? 0 : Clamped<std::int64_t>(value.number * kUnitsPerCurrency), out);
            break;
        case KeyEncoding::Date:
            StoreDoubleKey(none ? 0 : value.julianDay, out);
            break;
        case KeyEncoding::DateTime:
            StoreDoubleKey(none ? 0 : MomentNumber(value.julianDay, value.milliseconds), out);
            break;
        case KeyEncoding::Logical:
            *out = static_cast<std::byte>(!none && value.boolean ? 'T' : 'F');
            break;
    }
}

bool KeyEncoder::SameValue(const std::byte* left, const std::byte* right) const noexcept {
    if (std::memcmp(left, right, form_.length()) == 0) return true;
    if (form_.encoding != KeyEncoding::DateTime) return false;
    if (form_.nullable) {
        if (*left++ != *right++) return false;
    }
    constexpr double kHalfSecond = 500 / kMillisecondsPerDay;
    return std::abs(LoadDoubleKey(left) - LoadDoubleKey(right)) < kHalfSecond;
}

}  // namespace zu::dbf::cdx
