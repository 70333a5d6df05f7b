#pragma once

#include <cstddef>

#include "host/technologies/Value.h"
#include "host/technologies/dbf/TableLayout.h"

namespace zu::dbf {

class MemoFields;

/// Turns the bytes of a field into a value.
///
/// Dirty content never fails: what cannot be read is the value that the field has when it is blank (numbers
/// 0, or Null when so set; dates, logicals Null).
class FieldReader {
public:
    /// `layout` and `memos` must outlive the reader; `memos` may be null: memo fields are then Null.
    FieldReader(const TableLayout& layout, MemoFields* memos, bool blankNumbersAreNull) noexcept
        : layout_(layout), memos_(memos), blankNumbersAreNull_(blankNumbersAreNull) {}

    /// Puts the value of field `field` of `record` (the deletion mark first) into `out`.
    void Read(const std::byte* record, std::size_t field, technologies::Value& out) const;

private:
    bool IsNull(const std::byte* record, const expression::FieldLayout& field) const noexcept;
    std::size_t LengthOf(const std::byte* record, const expression::FieldLayout& field) const noexcept;
    void ReadNumber(const std::byte* at, const expression::FieldLayout& field,
                    technologies::Value& out) const;
    void ReadFloat(const std::byte* at, const expression::FieldLayout& field, technologies::Value& out) const;
    void ReadMemo(const std::byte* record, std::size_t field, bool text, technologies::Value& out) const;

    const TableLayout& layout_;
    MemoFields* memos_;
    bool blankNumbersAreNull_;
};

}  // namespace zu::dbf
