#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "com/Recycled.h"
#include "host/service/ViewMembers.h"
#include "host/technologies/Batch.h"
#include "host/technologies/RowCells.h"
#include "idl/RecordRuns.h"

namespace zu::host {

/// A view as tables hand it out: the records of a selection, or the layout of a table without records.
class DataView final
    : public ViewMembers<com::DualObject<DataView, ZuDataView, RecordRuns, RecordBatch, RecordDeletion>>,
      public com::Recycled<DataView> {
public:
    using ViewMembers::ViewMembers;

    HRESULT STDMETHODCALLTYPE ReadRun(UINT codePage, ULONG most, const textio::Cell** cells,
                                      ULONG* records) noexcept override;
    HRESULT STDMETHODCALLTYPE DescribeStored(UINT codePage, const textio::StoredField** fields,
                                             ULONG* count) noexcept override;
    HRESULT STDMETHODCALLTYPE LocateRun(ULONG most, const char* const** places,
                                        ULONG* records) noexcept override;
    HRESULT STDMETHODCALLTYPE BeginBatch(UINT* codePage) noexcept override;
    HRESULT STDMETHODCALLTYPE AddRow(UINT codePage, const ULONG* fields, const textio::Cell* cells,
                                     ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE MatchStored(const ULONG* fields, const textio::StoredField* stored,
                                          ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE AddStored(const char* record) noexcept override;
    HRESULT STDMETHODCALLTYPE EndBatch(ULONG* lost) noexcept override;
    HRESULT STDMETHODCALLTYPE DeleteAll(LONG* deleted) noexcept override;

private:
    std::optional<technologies::RowCells> run_;  ///< once a run was asked for
    std::vector<textio::StoredField> storedFields_;
    std::vector<const char*> places_;
    std::shared_ptr<RecordSet> gathered_;  ///< keeps open what the batch adds to
    std::unique_ptr<technologies::Batch> batch_;
};

/// A view of `records` that stands on the first one.
com::ComPtr<DataView> MakeView(std::shared_ptr<RecordSet> records);

}  // namespace zu::host
