#pragma once

#include <optional>
#include <vector>

#include "component/table/DataView.h"
#include "idl/RecordRuns.h"
#include "portable/textio/BlockWriter.h"
#include "portable/textio/StoredRenderer.h"

namespace zu::component {

/// Writes lines straight from the bytes of a view's records, as long as they hold nothing odd.
class StoredLines {
public:
    /// All must outlive the object.
    StoredLines(DataView& view, RecordRuns& runs, const textio::ExportFormat& format,
                const std::vector<textio::ExportField>& fields, const textio::Encoding& encoding);

    /// Writes the lines of some records from the view's current one on, whose position is `first`, and makes
    /// the one behind them current; answers how many. 0: the records from there on need a closer look.
    ULONG Write(LONG first, textio::BlockWriter& writer);
    /// So many records are to be read by their values before Write is called again: odd ones seldom come
    /// alone.
    ULONG closerLooks() const noexcept { return closerLooks_; }

private:
    DataView& view_;
    RecordRuns& runs_;
    std::optional<textio::StoredRenderer> renderer_;
    ULONG closerLooks_;
};

}  // namespace zu::component
