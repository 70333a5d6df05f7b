#include "host/expression/FieldReader.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "host/expression/Comparison.h"
#include "host/expression/DateText.h"
#include "portable/text/NumberText.h"

namespace zu::expression {

namespace {

std::string_view BytesOf(const FieldLayout& field, const std::byte* record) noexcept {
    return {reinterpret_cast<const char*>(record) + field.offset, field.width};
}

std::uint32_t LoadUnsigned(const std::byte* at) noexcept {
    return std::to_integer<std::uint32_t>(at[0]) | std::to_integer<std::uint32_t>(at[1]) << 8 |
           std::to_integer<std::uint32_t>(at[2]) << 16 | std::to_integer<std::uint32_t>(at[3]) << 24;
}

}  // namespace

Type TypeOf(Storage storage) noexcept {
    switch (storage) {
        case Storage::Character:
        case Storage::Varchar:
        case Storage::Memo:
            return Type::Text;
        case Storage::NumberText:
        case Storage::Integer32:
        case Storage::Double:
        case Storage::Currency:
            return Type::Number;
        case Storage::DateText:
            return Type::Date;
        case Storage::DateTime:
            return Type::DateTime;
        case Storage::LogicalText:
            return Type::Boolean;
        case Storage::Opaque:
            break;
    }
    return Type::Unknown;
}

NullBit::NullBit(const RecordLayout& layout, const FieldLayout& field) noexcept {
    if (field.nullBit < 0) return;
    const auto bit = static_cast<unsigned>(field.nullBit);
    offset = layout.nullFlagsOffset + bit / 8;
    mask = 1U << bit % 8;
}

std::string_view TextOf(const RecordLayout& layout, const FieldLayout& field,
                        const std::byte* record) noexcept {
    std::string_view bytes = BytesOf(field, record);
    if (field.lengthBit < 0 || bytes.empty()) return bytes;
    const auto bit = static_cast<unsigned>(field.lengthBit);
    const auto flags = std::to_integer<unsigned>(record[layout.nullFlagsOffset + bit / 8]);
    if ((flags >> bit % 8 & 1U) == 0) return bytes;
    const std::size_t length = static_cast<unsigned char>(bytes.back());
    return bytes.substr(0, std::min(length, bytes.size() - 1));
}

std::int32_t LoadInteger(const std::byte* at) noexcept {
    return static_cast<std::int32_t>(LoadUnsigned(at));
}

std::int64_t LoadInteger64(const std::byte* at) noexcept {
    return static_cast<std::int64_t>(std::uint64_t{LoadUnsigned(at)} | std::uint64_t{LoadUnsigned(at + 4)}
                                                                           << 32);
}

double LoadDouble(const std::byte* at) noexcept {
    const std::int64_t bits = LoadInteger64(at);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

bool LoadDateTime(const std::byte* at, std::int32_t& julianDay, std::int32_t& milliseconds) noexcept {
    julianDay = LoadInteger(at);
    milliseconds = std::clamp(LoadInteger(at + 4), 0, kDayMilliseconds - 1);
    if (julianDay < kFirstDay || julianDay > kLastDay) return false;
    const std::int32_t rest = milliseconds % 1000;
    if (rest == 1) --milliseconds;
    if (rest == 999) ++milliseconds;
    if (milliseconds == kDayMilliseconds) {
        milliseconds = 0;
        ++julianDay;
    }
    return julianDay <= kLastDay;
}

int LoadLogical(std::byte stored) noexcept {
    static constexpr std::array<std::int8_t, 256> kTruth = [] {
        std::array<std::int8_t, 256> table{};
        table.fill(-1);
        for (const unsigned char letter : {'T', 't', 'Y', 'y'})
            table[letter] = 1;
        for (const unsigned char letter : {'F', 'f', 'N', 'n'})
            table[letter] = 0;
        return table;
    }();
    return kTruth[std::to_integer<std::size_t>(stored)];
}

void ReadField(const RecordLayout& layout, std::size_t index, const Row& row, Register& out) {
    const FieldLayout& field = layout.fields[index];
    const std::byte* at = row.record + field.offset;
    if (NullBit(layout, field).IsSet(row.record)) return out.SetNull(TypeOf(field.storage));
    switch (field.storage) {
        case Storage::Character:
        case Storage::Varchar:
            return out.SetText(TextOf(layout, field, row.record));
        case Storage::NumberText: {
            double value = 0;
            text::ParseNumber(BytesOf(field, row.record), value);
            return out.SetNumber(value);
        }
        case Storage::DateText: {
            std::int32_t day = 0;
            if (field.width == 8 && ParseDigitDate(reinterpret_cast<const char*>(at), day)) {
                return out.SetDate(day);
            }
            return out.SetEmpty(Type::Date);
        }
        case Storage::LogicalText: {
            const int truth = LoadLogical(*at);
            return truth < 0 ? out.SetEmpty(Type::Boolean) : out.SetBoolean(truth == 1);
        }
        case Storage::Integer32:
            return out.SetNumber(LoadInteger(at));
        case Storage::Double:
            return out.SetNumber(LoadDouble(at));
        case Storage::Currency:
            return out.SetNumber(static_cast<double>(LoadInteger64(at)) / 10000.0);
        case Storage::DateTime: {
            std::int32_t day = 0;
            std::int32_t time = 0;
            return LoadDateTime(at, day, time) ? out.SetDateTime(day, time) : out.SetEmpty(Type::DateTime);
        }
        case Storage::Memo:
            if (row.memos == nullptr || !row.memos->Read(index, row.record, out.buffer)) out.buffer.clear();
            return out.SetBuffer();
        case Storage::Opaque:
            break;
    }
    out.SetNull(Type::Unknown);
}

bool IsBlankField(const RecordLayout& layout, std::size_t index, const Row& row, Register& scratch) {
    const FieldLayout& field = layout.fields[index];
    if (NullBit(layout, field).IsSet(row.record)) return false;
    switch (field.storage) {
        case Storage::NumberText:
            return WithoutPadding(BytesOf(field, row.record)).empty();
        case Storage::Character:
        case Storage::Varchar:
        case Storage::Memo:
            ReadField(layout, index, row, scratch);
            return WithoutPadding(scratch.text).empty();
        case Storage::DateText:
        case Storage::DateTime:
        case Storage::LogicalText:
            ReadField(layout, index, row, scratch);
            return scratch.isEmpty;
        default:
            return false;
    }
}

}  // namespace zu::expression
