// The private half of a view: runs of records for the component's exports, batches for its imports.
#include <algorithm>

#include "host/service/DataView.h"
#include "portable/error/Error.h"

namespace zu::host {

namespace {

/// Reads records into `run` from `first` on; answers how many. A record that fails is left to the next call,
/// so that those before it are delivered. Nothing for records that cannot be read so.
std::optional<ULONG> ReadRecords(RecordSet& records, std::size_t first, ULONG most,
                                 technologies::RowCells& run) {
    for (ULONG read = 0; read < most; ++read) {
        const std::size_t before = run.size();
        bool readable = false;
        try {
            readable = records.ReadRow(first + read, run);
        } catch (const Error&) {
            if (read == 0) throw;
        }
        if (readable) continue;
        if (read == 0) return std::nullopt;
        run.Shrink(before);
        return read;
    }
    return most;
}

}  // namespace

HRESULT DataView::ReadRun(UINT codePage, ULONG most, const textio::Cell** cells, ULONG* records) noexcept {
    if (!cells || !records) return E_POINTER;
    *cells = nullptr;
    *records = 0;
    bool readable = true;
    const HRESULT result = Guarded([&] {
        ViewCursor& position = *cursor();
        const LONG left = position.Count() - position.position();
        run_.Begin(codePage);
        if (left <= 0) return;
        const auto wanted = std::min(most, static_cast<ULONG>(left));
        const auto read = ReadRecords(*position.records(), position.Current(), wanted, run_);
        readable = read.has_value();
        if (!readable) return;
        *cells = run_.cells();
        *records = *read;
        position.MoveNext(static_cast<LONG>(*read));
    });
    return SUCCEEDED(result) && !readable ? E_NOTIMPL : result;
}

HRESULT DataView::BeginBatch(UINT* codePage) noexcept {
    if (!codePage) return E_POINTER;
    *codePage = 0;
    return Guarded([&] {
        batch_.reset();
        gathered_ = cursor()->records();
        batch_ = gathered_->BeginBatch();
        *codePage = batch_->codePage();
    });
}

HRESULT DataView::AddRow(UINT codePage, const ULONG* fields, const textio::Cell* cells,
                         ULONG count) noexcept {
    if (!cells) return E_POINTER;
    if (!batch_ || gathered_ != cursor()->records()) return S_FALSE;
    try {
        return gathered_->AddRow(*batch_, {cells, count}, fields, codePage) != 0 ? S_OK : S_FALSE;
    } catch (...) {
        // The way through single values meets the same error and tells of it.
        return S_FALSE;
    }
}

HRESULT DataView::EndBatch(ULONG* lost) noexcept {
    if (!lost) return E_POINTER;
    *lost = 0;
    const std::shared_ptr<RecordSet> gathered = std::move(gathered_);
    const std::unique_ptr<technologies::Batch> batch = std::move(batch_);
    if (!batch) return S_OK;
    const HRESULT result = Guarded([&] { batch->Finish(); });
    *lost = batch->lost();
    return result;
}

}  // namespace zu::host
