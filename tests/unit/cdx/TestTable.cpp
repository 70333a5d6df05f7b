#include "tests/unit/cdx/TestTable.h"

#include <algorithm>
#include <cstring>

namespace zu::dbf::cdx {

namespace {

constexpr std::uint32_t kNullFlagBytes = 2;

template <typename T>
std::string BytesOfValue(T value) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

}  // namespace

// The null flags come first here, so that fields can be added behind them.
TestTable::TestTable() {
    layout.nullFlagsOffset = 1;
    layout.recordLength = 1 + kNullFlagBytes;
    layout.tableName = "TEST";
    layout.codePage = text::CodePage::Find(1252);
}

TestTable& TestTable::Field(const std::string& name, expression::Storage storage, std::uint32_t width,
                            std::uint8_t decimals) {
    expression::FieldLayout field;
    field.name = name;
    field.storage = storage;
    field.offset = layout.recordLength;
    field.width = width;
    field.decimals = decimals;
    layout.recordLength += width;
    layout.fields.push_back(field);
    return *this;
}

TestTable& TestTable::NullableField(const std::string& name, expression::Storage storage,
                                    std::uint32_t width) {
    Field(name, storage, width);
    layout.fields.back().nullBit = nullBits_++;
    return *this;
}

void TestTable::Put(std::byte* record, std::size_t index, std::string_view value) const {
    const expression::FieldLayout& field = layout.fields[index];
    std::string bytes(value.substr(0, field.width));
    if (field.storage == expression::Storage::NumberText) {
        bytes.insert(0, field.width - bytes.size(), ' ');
    } else {
        bytes.resize(field.width, ' ');
    }
    std::memcpy(record + field.offset, bytes.data(), bytes.size());
}

TestTable& TestTable::Add(const std::vector<std::string>& values, bool deleted) {
    data_.resize(data_.size() + layout.recordLength);
    std::byte* record = data_.data() + data_.size() - layout.recordLength;
    record[0] = static_cast<std::byte>(deleted ? '*' : ' ');
    for (std::size_t i = 0; i < values.size(); ++i)
        Put(record, i, values[i]);
    return *this;
}

void TestTable::Set(std::uint32_t record, std::size_t field, const std::string& value) {
    Put(data_.data() + std::size_t{record - 1} * layout.recordLength, field, value);
}

void TestTable::SetNull(std::uint32_t record, std::size_t field) {
    const int bit = layout.fields[field].nullBit;
    data_[std::size_t{record - 1} * layout.recordLength + layout.nullFlagsOffset +
          static_cast<std::size_t>(bit / 8)] |= static_cast<std::byte>(1 << (bit % 8));
}

const std::byte* TestTable::Record(std::uint32_t number) {
    if (number == 0 || number > Count()) return nullptr;
    return data_.data() + std::size_t{number - 1} * layout.recordLength;
}

std::string Int32Bytes(std::int32_t value) {
    return BytesOfValue(value);
}
std::string Int64Bytes(std::int64_t value) {
    return BytesOfValue(value);
}
std::string DoubleBytes(double value) {
    return BytesOfValue(value);
}
std::string MomentBytes(std::int32_t julianDay, std::int32_t milliseconds) {
    return BytesOfValue(julianDay) + BytesOfValue(milliseconds);
}

}  // namespace zu::dbf::cdx
