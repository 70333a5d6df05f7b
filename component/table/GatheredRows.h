#pragma once

#include <span>

#include "com/ComPtr.h"
#include "component/table/CopyOutcome.h"
#include "component/table/DataView.h"
#include "idl/RecordRuns.h"

namespace zu::component {

/// Lets the rows that a copy adds to a view be gathered, where the view can. Both must outlive the object.
class GatheredRows {
public:
    /// Throws ComError.
    GatheredRows(DataView& view, CopyOutcome& outcome);
    /// A copy that ends early keeps the rows it has added.
    ~GatheredRows();
    GatheredRows(const GatheredRows&) = delete;
    GatheredRows& operator=(const GatheredRows&) = delete;

    /// Adds a row at once whose first fields hold these cells. False: nothing was done, and the row must go
    /// through the view field by field. Bytes are of `codePage`.
    /// `fields`: the positions of the fields that the cells are for, where those are not the first ones.
    bool Add(unsigned codePage, std::span<const textio::Cell> cells, const ULONG* fields = nullptr) const {
        return batch_ &&
               batch_->AddRow(codePage, fields, cells.data(), static_cast<ULONG>(cells.size())) == S_OK;
    }
    /// False: rows must be added as cells. `stored` says where the values for the fields `fields`, null for
    /// the first ones, lie in the records that AddStored is given; texts are of codePage().
    bool MatchStored(std::span<const textio::StoredField> stored, const ULONG* fields) const {
        return batch_ &&
               batch_->MatchStored(fields, stored.data(), static_cast<ULONG>(stored.size())) == S_OK;
    }
    /// Adds the values of a record at once. False: nothing was done.
    bool AddStored(const char* record) const { return batch_ && batch_->AddStored(record) == S_OK; }
    /// The code page of the view's texts; 0 when it is not known.
    unsigned codePage() const noexcept { return codePage_; }
    bool isOpen() const noexcept { return static_cast<bool>(batch_); }
    /// All rows are in the table now. Throws ComError when some could not be written; the outcome then counts
    /// those that are there.
    void Finish();

private:
    HRESULT End();

    com::ComPtr<RecordBatch> batch_;
    UINT codePage_ = 0;
    CopyOutcome& outcome_;
};

}  // namespace zu::component
