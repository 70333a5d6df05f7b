#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "com/Variant.h"
#include "host/service/RecordSet.h"
#include "host/service/SeenValues.h"
#include "host/technologies/RecordEdit.h"
#include "idl/ZuDataViewInterface.h"

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
///
/// Values that are put into a field wait in an edit of the cursor's own until Update. There is one edit at a
/// time: it ends when it is saved or cancelled, when another one begins, and when its record is made current
/// once more (which reads it anew). Moving away and back leaves it waiting. A new record stands behind the
/// last one, at position count, and is not counted until it is saved. A field that another process has
/// changed since it was read here is not overwritten.
class ViewCursor final : private RecordSet::Observer {
public:
    explicit ViewCursor(std::shared_ptr<RecordSet> records);
    ViewCursor(const ViewCursor&) = delete;
    ViewCursor& operator=(const ViewCursor&) = delete;
    ~ViewCursor() override;

    /// Another cursor over the same records at the same position, without what is not saved here.
    std::shared_ptr<ViewCursor> Clone() const;

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

    void MoveFirst() { GoTo(0); }
    void MoveLast();
    /// Moves `count` records on, at most to the end; -1 stands for one record.
    void MoveNext(LONG count);
    void MovePrevious(LONG count);
    /// Out of range is an InvalidArgument error that names the range. The place of a new record is in range.
    void Move(LONG record);

    com::Variant Read(std::size_t field);
    com::Variant Read(LONG record, std::size_t field);
    /// The value that is stored, whatever waits to be saved; Null in a new record.
    com::Variant ReadStored(std::size_t field);
    /// Keeps a value for Update. "##DELETED" counts at once, except in a new record. What the field cannot
    /// hold is refused with the reason, and everything stays as it was.
    void Write(std::size_t field, const VARIANT& value);

    /// The current record has changes that are not saved.
    bool isDirty() const;
    /// The current record is a new one that is not saved.
    bool isNew() const { return new_ && position_ >= Count(); }
    std::uint32_t RecordNumber();
    bool IsDeleted();

    /// Saves the changes of the current record. False, and they stay, when the record as it is cannot be
    /// saved: another process has changed one of the same fields, or holds the record, or an index refuses
    /// the key. `whyNot` gets the reason.
    bool Update(std::string& whyNot);
    /// Drops the changes of the current record. A new one goes, and the cursor is where it was before.
    void CancelUpdate();
    /// Reads the current record anew, without what was not saved.
    void Refresh();
    /// Begins a new record with the values of `values`, found by their names; null: a blank one. False when
    /// the view takes no new records.
    bool AddNew(ZuDataView* values);
    /// See RecordSet::SetDeleted.
    bool SetDeleted(LONG record, bool deleted);

    /// The index of the current record; NotFound when there is none.
    std::size_t Current() const;
    /// `record` as an index; InvalidArgument when it is out of range.
    std::size_t Checked(LONG record) const;

    /// Lets the records go; the fields stay known.
    void Close();

private:
    void OnJoined() noexcept override;
    void OnLeft(std::size_t record) noexcept override;

    com::Variant ReadAt(std::size_t record, std::size_t field);
    com::Variant ReadEdit(std::size_t field);
    /// The field holds another value by now than the one that was read here.
    bool IsOutdated(technologies::RecordEdit& edit, std::size_t field);
    void GoTo(LONG record);
    /// The edit of the current record; null when there is none.
    technologies::RecordEdit* CurrentEdit() const;
    void DropEdit() noexcept;
    void SaveNew();
    void Convert(std::size_t field, const VARIANT& value);
    void CopyValues(technologies::RecordEdit& edit, ZuDataView& values);

    std::shared_ptr<RecordSet> records_;
    LONG position_ = 0;
    std::unique_ptr<technologies::RecordEdit> edit_;
    std::size_t edited_ = 0;  ///< the record of edit_, unless that is a new one
    bool new_ = false;        ///< edit_ is a new record
    bool outdated_ = false;   ///< edit_ would overwrite what another process has written meanwhile
    LONG before_ = 0;         ///< where the cursor stood when the new record began
    bool takesEdits_;         ///< what is read may be the base of a change
    SeenValues seen_;
    /// Reused, so that texts do not allocate each time.
    technologies::Value value_;
};

}  // namespace zu::host
