#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/expression/RecordLayout.h"
#include "host/technologies/dbf/RecordAccess.h"
#include "host/technologies/dbf/cdx/IndexContext.h"

namespace zu::dbf::cdx {

/// A table in memory for tests: fields are added first, then records as texts of the fields' widths.
class TestTable final : public RecordAccess {
public:
    TestTable();

    TestTable& Field(const std::string& name, expression::Storage storage, std::uint32_t width,
                     std::uint8_t decimals = 0);
    /// A field that can be null; null bits follow the order of the calls.
    TestTable& NullableField(const std::string& name, expression::Storage storage, std::uint32_t width);

    /// Appends a record: texts are padded on the right, those of NumberText fields on the left; for binary
    /// fields the bytes themselves.
    TestTable& Add(const std::vector<std::string>& values, bool deleted = false);
    void Set(std::uint32_t record, std::size_t field, const std::string& value);
    void SetNull(std::uint32_t record, std::size_t field);
    void RemoveLast() { data_.resize(data_.size() - layout.recordLength); }

    std::uint32_t Count() override { return static_cast<std::uint32_t>(data_.size() / layout.recordLength); }
    const std::byte* Record(std::uint32_t number) override;
    expression::MemoReader* memos() override { return nullptr; }

    IndexContext Context(const std::string& name = "TEST") { return {layout, *this, name, *layout.codePage}; }

    expression::RecordLayout layout;

private:
    void Put(std::byte* record, std::size_t field, std::string_view value) const;

    std::vector<std::byte> data_;
    int nullBits_ = 0;
};

/// Bytes of a little-endian integer or a double, for binary fields.
std::string Int32Bytes(std::int32_t value);
std::string Int64Bytes(std::int64_t value);
std::string DoubleBytes(double value);
std::string MomentBytes(std::int32_t julianDay, std::int32_t milliseconds);

}  // namespace zu::dbf::cdx
