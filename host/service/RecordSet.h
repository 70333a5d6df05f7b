#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/service/ViewField.h"
#include "host/technologies/Value.h"

namespace zu::host {

/// The records behind a view, whatever they come from. Records are counted from 0 here; failures are
/// zu::Errors.
///
/// What is not overridden belongs to records that can only be read.
class RecordSet {
public:
    virtual ~RecordSet() = default;

    virtual const std::wstring& tableName() const noexcept = 0;
    virtual const ViewFields& fields() const noexcept = 0;
    virtual std::size_t Count() = 0;

    virtual void Read(std::size_t record, std::size_t field, technologies::Value& out) = 0;
    /// The record's number in its table, from 1; 0 for a record outside a table.
    virtual std::uint32_t RecordNumber(std::size_t record) = 0;
    virtual bool IsDeleted(std::size_t record) = 0;

    virtual bool isUpdateable() const noexcept { return false; }
    /// Keeps `value` for the field until Update.
    virtual void Write(std::size_t record, std::size_t field, const technologies::Value& value);
    virtual void SetDeleted(std::size_t record, bool deleted);
    /// Saves what was written; false when it was not saved.
    virtual bool Update(std::size_t record);
    virtual bool AddNew();

protected:
    /// Throws the error that says that the table can only be read.
    [[noreturn]] void RefuseChange(const std::string& what) const;
};

}  // namespace zu::host
