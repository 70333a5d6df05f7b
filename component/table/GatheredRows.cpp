#include "component/table/GatheredRows.h"

#include <utility>

#include "com/ComError.h"
#include "component/engine/Trapped.h"

namespace zu::component {

GatheredRows::GatheredRows(DataView& view, CopyOutcome& outcome)
    : batch_(com::Share(view.get()).tryAs<RecordBatch>()), outcome_(outcome) {
    if (batch_) com::Check(batch_->BeginBatch(&codePage_));
}

GatheredRows::~GatheredRows() {
    // What ended the copy is told; that rows were lost as well shows in the count.
    Trap([this] {
        if (FAILED(End())) SetErrorInfo(0, nullptr);
    });
}

void GatheredRows::Finish() {
    com::Check(End());
}

HRESULT GatheredRows::End() {
    if (!batch_) return S_OK;
    ULONG lost = 0;
    const com::ComPtr<RecordBatch> batch = std::move(batch_);
    const HRESULT result = batch->EndBatch(&lost);
    if (lost > 0) outcome_.TakeBack(static_cast<LONG>(lost));
    return result;
}

}  // namespace zu::component
