#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Batch.h"
#include "host/technologies/RecordEdit.h"
#include "host/technologies/RowCells.h"
#include "host/technologies/Value.h"
#include "portable/error/Error.h"
#include "portable/textio/StoredField.h"

namespace zu::technologies {

struct FieldDescription {
    std::string name;  ///< UTF-8
    FieldType type = FieldType::Text;
    int size = 0;          ///< defined width in characters (digits, point and sign for numbers)
    int decimals = 0;      ///< decimal places, 0 for none
    int displayWidth = 0;  ///< widest expected content in characters
    bool rightAligned = false;
    bool nullable = false;
    bool readOnly = false;  ///< kept by the technology itself, or of an unknown type
};

/// One part of an index key, in key order.
struct KeyPart {
    std::string name;  ///< the field name where the part is one field, else the text of the expression
    FieldType type = FieldType::Text;
    bool descending = false;

    bool operator==(const KeyPart&) const = default;
};

struct IndexDescription {
    std::string name;
    std::string expression;
    std::string filter;  ///< the FOR condition, empty for none
    bool unique = false;
    bool candidate = false;
    bool descending = false;
    std::vector<KeyPart> parts;
    bool usable = true;  ///< false: the key cannot be computed here, or the index is damaged or stale
    std::string reason;  ///< why it is not usable

    bool operator==(const IndexDescription&) const = default;
};

/// What is asked of one key part when an index is searched.
struct KeyCriterion {
    Value value;
    bool exact = true;  ///< false: a text matches as a prefix; other types must be equal all the same
};

/// What to select from a table.
struct Selection {
    std::u16string condition;          ///< blank: all records
    std::optional<std::size_t> index;  ///< records come in this index's order; none: record order
    std::uint32_t maxRecords = 0;      ///< 0: no limit
    bool includeDeleted = false;
};

/// Something about a table that belongs to its technology, for people: "Format", "Visual FoxPro".
struct TableFact {
    std::string name;
    std::string value;
};

/// How far a run of marks has come.
struct MarkOutcome {
    std::size_t handled = 0;    ///< of the records, from the first on
    std::uint32_t changed = 0;  ///< marks that are others than before
};

/// One open table of some technology. One-based record numbers. Failures are `zu::Error`s.
///
/// A table belongs to one thread.
class Table {
public:
    virtual ~Table() = default;

    virtual const std::string& name() const noexcept = 0;
    virtual const std::vector<FieldDescription>& fields() const noexcept = 0;
    /// Records in the table now, deleted ones included.
    virtual std::uint32_t RecordCount() = 0;
    virtual bool isUpdateable() const noexcept = 0;
    /// Why it is not, to follow "can only be read: "; empty where there is nothing more to say. UTF-8.
    virtual std::string WhyReadOnly() const { return {}; }

    virtual bool IsDeleted(std::uint32_t record) = 0;
    virtual void ReadValue(std::uint32_t record, std::size_t field, Value& out) = 0;

    virtual const std::vector<IndexDescription>& indexes() = 0;
    virtual std::optional<std::size_t> FindIndex(std::string_view name) = 0;
    /// The tag that index building makes, else the first one that can be used.
    virtual std::optional<std::size_t> DefaultIndex() = 0;

    /// Adds the values of the fields `chosen` of a record to `out`, for work on very many records. False when
    /// a value has no form there; `out` may then hold some of the record.
    virtual bool ReadRow(std::uint32_t record, std::span<const std::size_t> chosen, RowCells& out);

    /// Where the fields `chosen` lie in records that LocateRecords finds. Nothing when a field is not stored
    /// as text, one byte a character of `codePage`, or can be null.
    virtual std::optional<std::vector<textio::StoredField>> StoredForm(std::span<const std::size_t> chosen,
                                                                       unsigned codePage);
    /// Puts into `out` where these records begin in memory, and answers of how many, from the first one on,
    /// that is known; the others must be read by their values. The places are valid until the table is used
    /// again.
    virtual std::size_t LocateRecords(std::span<const std::uint32_t> records, const char** out);

    /// The records that meet the selection. A faulty condition is a `Syntax` error with its position.
    virtual std::vector<std::uint32_t> Select(const Selection& selection) = 0;
    /// The records whose key meets the criteria, which stand for the key parts in order, in index order.
    virtual std::vector<std::uint32_t> Seek(std::size_t index, const std::vector<KeyCriterion>& criteria,
                                            std::uint32_t maxRecords, bool includeDeleted) = 0;

    /// Begins to change a record, or a new blank one. NotFound when there is no such record; AccessDenied
    /// when the table may only be read; Unsupported by technologies that do not write.
    virtual std::unique_ptr<RecordEdit> EditRecord(std::uint32_t record) {
        static_cast<void>(record);
        throw Error(ErrorKind::Unsupported, "The table " + name() + " can only be read.");
    }
    virtual std::unique_ptr<RecordEdit> NewRecord() {
        throw Error(ErrorKind::Unsupported, "The table " + name() + " can only be read.");
    }

    /// Marks records as deleted, or takes their marks off, in the order given, and saves that alone. A record
    /// whose mark is as wanted already, also because another process was quicker, is left as it is. `outcome`
    /// counts up, also when an error ends the run: the records before are marked then. Many records may
    /// become safe together.
    virtual void MarkRecords(std::span<const std::uint32_t> records, bool deleted, MarkOutcome& outcome);

    /// Begins a batch of new records: a copy or an import. Technologies may gather nothing.
    virtual std::unique_ptr<Batch> BeginBatch() { return std::make_unique<Batch>(); }

    /// What had to be tolerated when the table was opened (missing memo file, wrong count, ...), UTF-8.
    virtual const std::vector<std::string>& warnings() const noexcept = 0;

    /// What people may want to know of the table and its files, in the order in which to show it, UTF-8.
    virtual std::vector<TableFact> Facts() { return {}; }
};

}  // namespace zu::technologies
