#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/technologies/dbf/TableLayout.h"
#include "portable/calendar/Calendar.h"

namespace zu::dbf {

/// Puts values into the bytes of a record: the other direction of FieldReader.
///
/// Nothing is lost silently: a value that does not fit is an Overflow, a character that the code page lacks
/// an InvalidArgument, a value of a wrong kind a TypeMismatch; messages name table and field. The record
/// stays as it was then. Every setter but SetNull takes the mark "is null" away.
class FieldEncoder {
public:
    /// `layout` must outlive the encoder.
    explicit FieldEncoder(const TableLayout& layout) : layout_(layout) {}

    /// Makes the whole record a live one without any content.
    void Blank(std::byte* record) const;
    void BlankField(std::byte* record, std::size_t field) const;
    /// Null where the field can be null, else blank.
    void SetNull(std::byte* record, std::size_t field) const;

    void SetText(std::byte* record, std::size_t field, std::u16string_view text) const;
    void SetBytes(std::byte* record, std::size_t field, std::string_view bytes) const;
    /// Fields N, F, I, B, Y. Decimal places beyond those of the field are rounded.
    void SetNumber(std::byte* record, std::size_t field, double value) const;
    /// The same from units of the last decimal place that the field has (Y: 1/10000).
    void SetDecimal(std::byte* record, std::size_t field, std::int64_t units) const;
    void SetDate(std::byte* record, std::size_t field, const calendar::Date& date) const;
    void SetDateTime(std::byte* record, std::size_t field, std::int32_t julianDay,
                     std::int32_t milliseconds) const;
    void SetBoolean(std::byte* record, std::size_t field, bool value) const;
    void SetMemoBlock(std::byte* record, std::size_t field, std::uint32_t block) const;

private:
    const expression::FieldLayout& At(std::size_t field) const { return layout_.record.fields[field]; }
    void SetBit(std::byte* record, std::int32_t bit, bool value) const noexcept;
    void MarkPresent(std::byte* record, const expression::FieldLayout& field) const noexcept;
    [[noreturn]] void FailFit(std::size_t field, const std::string& value) const;
    [[noreturn]] void FailKind(std::size_t field, const char* what) const;

    const TableLayout& layout_;
};

}  // namespace zu::dbf
