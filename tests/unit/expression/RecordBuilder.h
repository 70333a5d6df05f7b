#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "host/expression/Program.h"

namespace zu::expression::testing {

/// Makes layouts and records for tests.
class RecordBuilder : public MemoReader {
public:
    RecordBuilder();

    /// Adds a field behind the others; call before any record is filled.
    RecordBuilder& Add(std::string_view name, Storage storage, std::uint32_t width,
                       std::uint8_t decimals = 0);
    /// Gives the last field a null bit; the flags lie behind the fields.
    RecordBuilder& Nullable();
    /// Gives the last field a bit for "the last byte is the length".
    RecordBuilder& Variable();
    /// Ends the layout: blank record of blanks (binary fields: zeros).
    RecordBuilder& Finish();

    /// Puts bytes into a field, padded with blanks.
    RecordBuilder& Set(std::string_view field, std::string_view bytes);
    RecordBuilder& SetInteger(std::string_view field, std::int64_t value);
    RecordBuilder& SetDouble(std::string_view field, double value);
    RecordBuilder& SetMoment(std::string_view field, std::int32_t julianDay, std::int32_t milliseconds);
    RecordBuilder& SetNull(std::string_view field, bool isNull = true);
    RecordBuilder& SetVariableLength(std::string_view field, std::uint8_t length);
    RecordBuilder& SetMemo(std::string_view field, std::string_view text);
    RecordBuilder& SetDeleted(bool isDeleted);

    Row row(std::uint32_t number = 1);
    const std::string& bytes() const { return record_; }
    RecordLayout layout;

    bool Read(std::size_t field, const std::byte* record, std::string& out) override;

private:
    const FieldLayout& Find(std::string_view field) const;
    void SetBit(std::int32_t bit, bool value);

    std::string record_;
    std::int32_t bits_ = 0;
    std::map<std::size_t, std::string> memos_;
};

/// The record that docs/expressions.md describes.
RecordBuilder SampleRecord();

/// Compiles and evaluates over the sample record.
Result Value(std::u16string_view source);
/// The same as text for short expectations: `42`, `"abc"`, `TRUE`, `NULL`, `EMPTY`, `2024-01-31`,
/// `2024-01-31 13:45:30.000`, or the message of the error.
std::string Shown(std::u16string_view source);
/// The value in the same form.
std::string ShownResult(const Result& value);
/// Whether the condition selects the sample record.
bool IsTrue(std::u16string_view source);

}  // namespace zu::expression::testing
