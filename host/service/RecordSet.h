#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/service/ViewField.h"
#include "host/technologies/Batch.h"
#include "host/technologies/RecordEdit.h"
#include "host/technologies/RowCells.h"
#include "host/technologies/Value.h"
#include "portable/textio/StoredField.h"

namespace zu::host {

/// The records behind a view, whatever they come from. Records are counted from 0 here; failures are
/// zu::Errors. Several views may show one set.
///
/// What is not overridden belongs to records that can only be read.
class RecordSet {
public:
    /// Hears which records come and go, so that positions stay with their records.
    class Observer {
    public:
        virtual ~Observer() = default;
        /// A record has joined behind the others.
        virtual void OnJoined() noexcept = 0;
        /// The record with this index has left; those behind it have moved up.
        virtual void OnLeft(std::size_t record) noexcept = 0;

    private:
        friend class RecordSet;
        Observer* next_ = nullptr;
    };

    virtual ~RecordSet() = default;

    virtual const std::wstring& tableName() const noexcept = 0;
    virtual const ViewFields& fields() const noexcept = 0;
    virtual std::size_t Count() = 0;

    virtual void Read(std::size_t record, std::size_t field, technologies::Value& out) = 0;
    /// Adds all fields of a record to `out`; false when the set cannot.
    virtual bool ReadRow(std::size_t record, technologies::RowCells& out);
    /// See technologies::Table; all fields are chosen. `first` is counted from 0.
    virtual std::optional<std::vector<textio::StoredField>> StoredForm(unsigned codePage);
    virtual std::size_t LocateRecords(std::size_t first, std::span<const char*> out);
    /// Begins a batch of new records; it must not outlive the set.
    virtual std::unique_ptr<technologies::Batch> BeginBatch();
    /// Adds a record to a batch of the set, without letting it join, and answers its number: see
    /// Batch::AddRow. The cells are for the view's fields at the positions `fields`; null: for the first
    /// ones.
    virtual std::uint32_t AddRow(technologies::Batch& batch, std::span<const textio::Cell> cells,
                                 const unsigned long* fields, unsigned codePage);
    /// See Batch::MatchStored; `fields` as for AddRow.
    virtual bool MatchStored(technologies::Batch& batch, std::span<const textio::StoredField> stored,
                             const unsigned long* fields);
    /// The record's number in its table, from 1; 0 for a record outside a table.
    virtual std::uint32_t RecordNumber(std::size_t record) = 0;
    virtual bool IsDeleted(std::size_t record) = 0;

    virtual bool isUpdateable() const noexcept { return false; }
    /// Why it is not: see Table::WhyReadOnly.
    virtual std::string WhyReadOnly() const { return {}; }
    /// Values are kept at once, by Write; otherwise they go into edits.
    virtual bool keepsAtOnce() const noexcept { return false; }
    virtual void Write(std::size_t record, std::size_t field, const technologies::Value& value);

    virtual std::unique_ptr<technologies::RecordEdit> BeginEdit(std::size_t record);
    /// A new blank record; null when the set takes none.
    virtual std::unique_ptr<technologies::RecordEdit> BeginNew();
    /// The place that a field of the view has in edits.
    virtual std::size_t PlaceInEdit(std::size_t field) const { return field; }
    /// A new record that was saved under `number` joins the set, unless it is deleted and must not show.
    virtual void Join(std::uint32_t number, bool deleted);

    /// Marks a record as deleted, or takes the mark off, at once. A record that must not show any more leaves
    /// the set. False when the mark was as wanted already.
    virtual bool SetDeleted(std::size_t record, bool deleted);

    struct Deletion {
        std::size_t changed = 0;  ///< marks that are others than before
        bool isWhole = true;      ///< false: the user has ended it
    };
    /// Marks all records as deleted, from the last to the first, each as SetDeleted would.
    virtual Deletion DeleteAll();

    /// `observer` watches one set at a time, until Unwatch.
    void Watch(Observer& observer) noexcept;
    void Unwatch(Observer& observer) noexcept;

    /// Throws the error that says that the table can only be read.
    [[noreturn]] void RefuseChange(const std::string& what) const;

protected:
    void TellJoined() noexcept;
    void TellLeft(std::size_t record) noexcept;

private:
    Observer* observers_ = nullptr;  ///< the first of a list
};

}  // namespace zu::host
