#pragma once

#include <cstddef>
#include <string>

#include "host/technologies/Value.h"
#include "host/technologies/dbf/FieldEncoder.h"
#include "host/technologies/dbf/TableLayout.h"

namespace zu::dbf::write {

/// Puts values of any kind into the fields of a record, converted to what the field holds.
///
/// Texts become numbers, dates and truth values where they denote one; numbers, dates and truth values become
/// texts. Decimal places beyond those of a number field are rounded half away from zero; everything else that
/// does not fit whole is refused as FieldEncoder refuses it.
class ValueEncoder {
public:
    /// `layout` must outlive the encoder.
    explicit ValueEncoder(const TableLayout& layout) : layout_(layout), encoder_(layout) {}

    const FieldEncoder& fields() const noexcept { return encoder_; }

    /// For every field but memos.
    void Set(std::byte* record, std::size_t field, const technologies::Value& value) const;
    /// The bytes that a memo field's content has for `value`; empty for Null.
    std::string MemoContent(std::size_t field, const technologies::Value& value) const;

private:
    void SetNumber(std::byte* record, std::size_t field, const technologies::Value& value) const;
    void SetMoment(std::byte* record, std::size_t field, const technologies::Value& value) const;
    void SetBoolean(std::byte* record, std::size_t field, const technologies::Value& value) const;
    void SetDecimal(std::byte* record, std::size_t field, const technologies::Decimal& decimal) const;
    [[noreturn]] void Refuse(std::size_t field, const std::string& what) const;
    [[noreturn]] void FailFit(std::size_t field, const std::string& what) const;

    const TableLayout& layout_;
    FieldEncoder encoder_;
};

}  // namespace zu::dbf::write
