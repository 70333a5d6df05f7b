#include "tests/unit/expression/RecordBuilder.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "portable/calendar/Calendar.h"
#include "portable/error/Error.h"
#include "portable/text/CodePage.h"

namespace zu::expression::testing {

namespace {

bool IsBinary(Storage storage) {
    return storage == Storage::Integer32 || storage == Storage::Double || storage == Storage::Currency ||
           storage == Storage::DateTime;
}

}  // namespace

RecordBuilder::RecordBuilder() {
    layout.codePage = &text::CodePage::Default();
    layout.tableName = "ORDERS";
    layout.recordLength = 1;
}

RecordBuilder& RecordBuilder::Add(std::string_view name, Storage storage, std::uint32_t width,
                                  std::uint8_t decimals) {
    FieldLayout field;
    field.name = name;
    field.storage = storage;
    field.offset = layout.recordLength;
    field.width = width;
    field.decimals = decimals;
    layout.fields.push_back(field);
    layout.recordLength += width;
    return *this;
}

RecordBuilder& RecordBuilder::Nullable() {
    layout.fields.back().nullBit = bits_++;
    return *this;
}

RecordBuilder& RecordBuilder::Variable() {
    layout.fields.back().lengthBit = bits_++;
    return *this;
}

RecordBuilder& RecordBuilder::Finish() {
    layout.nullFlagsOffset = layout.recordLength;
    record_.assign(layout.recordLength, ' ');
    for (const FieldLayout& field : layout.fields) {
        if (IsBinary(field.storage)) record_.replace(field.offset, field.width, field.width, '\0');
    }
    const auto flagBytes = static_cast<std::uint32_t>((bits_ + 7) / 8);
    layout.recordLength += flagBytes;
    record_.append(flagBytes, '\0');
    return *this;
}

const FieldLayout& RecordBuilder::Find(std::string_view name) const {
    for (const FieldLayout& field : layout.fields) {
        if (field.name == name) return field;
    }
    throw std::logic_error("no such field");
}

RecordBuilder& RecordBuilder::Set(std::string_view name, std::string_view bytes) {
    const FieldLayout& field = Find(name);
    std::string padded(bytes.substr(0, field.width));
    padded.resize(field.width, ' ');
    record_.replace(field.offset, field.width, padded);
    return *this;
}

RecordBuilder& RecordBuilder::SetInteger(std::string_view name, std::int64_t value) {
    const FieldLayout& field = Find(name);
    for (std::uint32_t i = 0; i < field.width; ++i) {
        record_[field.offset + i] = static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i) & 0xFF);
    }
    return *this;
}

RecordBuilder& RecordBuilder::SetDouble(std::string_view name, double value) {
    std::int64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return SetInteger(name, bits);
}

RecordBuilder& RecordBuilder::SetMoment(std::string_view name, std::int32_t julianDay,
                                        std::int32_t milliseconds) {
    const auto low = static_cast<std::uint64_t>(static_cast<std::uint32_t>(julianDay));
    const auto high = static_cast<std::uint64_t>(static_cast<std::uint32_t>(milliseconds));
    return SetInteger(name, static_cast<std::int64_t>(low | high << 32));
}

void RecordBuilder::SetBit(std::int32_t bit, bool value) {
    char& flags = record_[layout.nullFlagsOffset + static_cast<std::uint32_t>(bit) / 8];
    const auto mask = static_cast<char>(1 << bit % 8);
    flags = static_cast<char>(value ? flags | mask : flags & ~mask);
}

RecordBuilder& RecordBuilder::SetNull(std::string_view name, bool isNull) {
    SetBit(Find(name).nullBit, isNull);
    return *this;
}

RecordBuilder& RecordBuilder::SetVariableLength(std::string_view name, std::uint8_t length) {
    const FieldLayout& field = Find(name);
    record_[field.offset + field.width - 1] = static_cast<char>(length);
    SetBit(field.lengthBit, true);
    return *this;
}

RecordBuilder& RecordBuilder::SetMemo(std::string_view name, std::string_view text) {
    memos_[static_cast<std::size_t>(&Find(name) - layout.fields.data())] = text;
    return *this;
}

RecordBuilder& RecordBuilder::SetDeleted(bool isDeleted) {
    record_[0] = isDeleted ? '*' : ' ';
    return *this;
}

Row RecordBuilder::row(std::uint32_t number) {
    Row row;
    row.record = reinterpret_cast<const std::byte*>(record_.data());
    row.number = number;
    row.memos = this;
    return row;
}

bool RecordBuilder::Read(std::size_t field, const std::byte*, std::string& out) {
    const auto found = memos_.find(field);
    if (found == memos_.end()) return false;
    out = found->second;
    return true;
}

RecordBuilder SampleRecord() {
    RecordBuilder builder;
    builder.Add("ID", Storage::NumberText, 10)
        .Add("CUSTOMER", Storage::Character, 30)
        .Add("COUNTRY", Storage::Character, 2)
        .Add("ORDERED", Storage::DateText, 8)
        .Add("SHIPPED", Storage::DateText, 8)
        .Add("AMOUNT", Storage::NumberText, 12, 2)
        .Add("DISCOUNT", Storage::NumberText, 6, 2)
        .Add("QTY", Storage::Integer32, 4)
        .Add("PRICE", Storage::Currency, 8, 4)
        .Add("RATIO", Storage::Double, 8, 2)
        .Add("PAID", Storage::LogicalText, 1)
        .Add("CHECKED", Storage::LogicalText, 1)
        .Add("STAMP", Storage::DateTime, 8)
        .Add("NOTE", Storage::Memo, 10)
        .Add("REGION", Storage::Character, 10)
        .Nullable()
        .Add("PICTURE", Storage::Opaque, 10)
        .Finish();
    const std::int32_t day = calendar::ToJulianDay({2024, 1, 31});
    builder.Set("ID", "        42")
        .Set("CUSTOMER", "Miller & Sons")
        .Set("COUNTRY", "DE")
        .Set("ORDERED", "20240131")
        .Set("AMOUNT", "     1234.50")
        .SetInteger("QTY", 7)
        .SetInteger("PRICE", 1763571)
        .SetDouble("RATIO", 0.25)
        .Set("PAID", "T")
        .SetMoment("STAMP", day, ((13 * 60 + 45) * 60 + 30) * 1000)
        .SetMemo("NOTE", "Second floor, ring twice")
        .SetNull("REGION");
    return builder;
}

Result Value(std::u16string_view source) {
    RecordBuilder builder = SampleRecord();
    const Program program = Program::Compile(source, builder.layout);
    Result result;
    program.Evaluate(builder.row(7), result);
    return result;
}

std::string ShownResult(const Result& value) {
    if (value.isEmpty) return "EMPTY";
    if (value.isNull) return "NULL";
    char buffer[64];
    const calendar::Date date = calendar::FromJulianDay(value.julianDay);
    switch (value.type) {
        case Type::Boolean:
            return value.boolean ? "TRUE" : "FALSE";
        case Type::Number:
            return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value.number).ptr};
        case Type::Text:
            return "\"" + value.text + "\"";
        case Type::Date:
            std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", date.year, date.month, date.day);
            return buffer;
        case Type::DateTime:
            std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d.%03d", date.year, date.month,
                          date.day, value.milliseconds / 3600000, value.milliseconds / 60000 % 60,
                          value.milliseconds / 1000 % 60, value.milliseconds % 1000);
            return buffer;
        case Type::Unknown:
            break;
    }
    return "unknown";
}

std::string Shown(std::u16string_view source) {
    try {
        return ShownResult(Value(source));
    } catch (const Error& error) {
        return error.what();
    }
}

bool IsTrue(std::u16string_view source) {
    RecordBuilder builder = SampleRecord();
    return Program::Compile(source, builder.layout).Test(builder.row(7));
}

}  // namespace zu::expression::testing
