#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <string_view>

#include "com/Variant.h"
#include "host/service/RecordSet.h"

namespace zu::host {

/// The names of the fields that every view has besides its own and does not count.
inline constexpr std::wstring_view kRecordNumberName = L"##RECNO";
inline constexpr std::wstring_view kDeletedName = L"##DELETED";
/// Their positions.
inline constexpr std::size_t kRecordNumberField = static_cast<std::size_t>(-2);
inline constexpr std::size_t kDeletedField = static_cast<std::size_t>(-3);

/// A position among the records of a set, and the values of the current record. A view and the fields that it
/// hands out share one cursor. Failures are zu::Errors and ComErrors that name table, field and record.
///
/// Positions run from -1 (before the first record) over 0 .. count-1 to count (past the last one). An empty
/// set stands at 0 and is at both ends.
class ViewCursor {
public:
    explicit ViewCursor(std::shared_ptr<RecordSet> records) noexcept : records_(std::move(records)) {}

    const std::shared_ptr<RecordSet>& records() const noexcept { return records_; }
    const ViewFields& fields() const noexcept { return records_->fields(); }
    /// The position of a field by name, pseudo-fields included; kNoField when there is none.
    std::size_t Find(std::wstring_view name) const noexcept;
    /// The position of the field that `index` names (text) or numbers from 0. NotFound names the missing
    /// field.
    std::size_t Locate(const VARIANT& index) const;
    /// A field of this cursor's; the pseudo-fields have descriptions of their own.
    const ViewField& Field(std::size_t field) const;

    LONG Count() const;
    LONG position() const noexcept { return position_; }
    bool IsBeforeFirst() const { return position_ < 0 || Count() == 0; }
    bool IsPastLast() const { return position_ >= Count(); }

    void MoveFirst() noexcept { position_ = 0; }
    void MoveLast();
    /// Moves `count` records on, at most to the end; -1 stands for one record.
    void MoveNext(LONG count);
    void MovePrevious(LONG count);
    /// Out of range is an InvalidArgument error that names the range.
    void Move(LONG record);

    com::Variant Read(std::size_t field);
    com::Variant Read(LONG record, std::size_t field);
    void Write(std::size_t field, const VARIANT& value);
    /// The index of the current record; NotFound when there is none.
    std::size_t Current() const;
    /// `record` as an index; InvalidArgument when it is out of range.
    std::size_t Checked(LONG record) const;

    /// Lets the records go; the fields stay known.
    void Close();

private:
    com::Variant ReadAt(std::size_t record, std::size_t field);

    std::shared_ptr<RecordSet> records_;
    LONG position_ = 0;
    technologies::Value value_;  ///< reused, so that reading texts does not allocate each time
};

}  // namespace zu::host
