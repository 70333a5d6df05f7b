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
        if (!run_) run_.emplace();
        run_->Begin(codePage);
        if (left <= 0) return;
        const auto wanted = std::min(most, static_cast<ULONG>(left));
        const auto read = ReadRecords(*position.records(), position.Current(), wanted, *run_);
        readable = read.has_value();
        if (!readable) return;
        *cells = run_->cells();
        *records = *read;
        position.MoveNext(static_cast<LONG>(*read));
    });
    return SUCCEEDED(result) && !readable ? E_NOTIMPL : result;
}

HRESULT DataView::DescribeStored(UINT codePage, const textio::StoredField** fields, ULONG* count) noexcept {
    if (!fields || !count) return E_POINTER;
    *fields = nullptr;
    *count = 0;
    bool described = false;
    const HRESULT result = Guarded([&] {
        auto stored = cursor()->records()->StoredForm(codePage);
        described = stored.has_value();
        if (!described) return;
        storedFields_ = std::move(*stored);
        *fields = storedFields_.data();
        *count = static_cast<ULONG>(storedFields_.size());
    });
    return SUCCEEDED(result) && !described ? E_NOTIMPL : result;
}

HRESULT DataView::LocateRun(ULONG most, const char* const** places, ULONG* records) noexcept {
    if (!places || !records) return E_POINTER;
    *places = nullptr;
    *records = 0;
    bool located = true;
    const HRESULT result = Guarded([&] {
        ViewCursor& position = *cursor();
        const LONG left = position.Count() - position.position();
        if (left <= 0) return;
        places_.resize(std::min(most, static_cast<ULONG>(left)));
        const std::size_t found = position.records()->LocateRecords(position.Current(), places_);
        located = found != 0 || places_.empty();
        *places = places_.data();
        *records = static_cast<ULONG>(found);
        position.MoveNext(static_cast<LONG>(found));
    });
    return SUCCEEDED(result) && !located ? E_NOTIMPL : result;
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

HRESULT DataView::MatchStored(const ULONG* fields, const textio::StoredField* stored, ULONG count) noexcept {
    if (!stored && count != 0) return E_POINTER;
    if (!batch_ || gathered_ != cursor()->records()) return E_NOTIMPL;
    bool matches = false;
    const HRESULT result = Guarded([&] {
        matches = gathered_->MatchStored(*batch_, {stored, count}, fields);
    });
    return SUCCEEDED(result) && !matches ? E_NOTIMPL : result;
}

HRESULT DataView::AddStored(const char* record) noexcept {
    if (!record) return E_POINTER;
    if (!batch_ || gathered_ != cursor()->records()) return S_FALSE;
    try {
        return batch_->AddStored(record) != 0 ? S_OK : S_FALSE;
    } catch (...) {
        // As AddRow: the error comes up again.
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
