#pragma once

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

    /// All rows are in the table now. Throws ComError when some could not be written; the outcome then counts
    /// those that are there.
    void Finish();

private:
    HRESULT End();

    com::ComPtr<RecordBatch> batch_;
    CopyOutcome& outcome_;
};

}  // namespace zu::component
