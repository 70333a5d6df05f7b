#include "component/table/RecordLoop.h"

#include <utility>

#include "component/engine/FailureReason.h"
#include "component/engine/WatchedJob.h"

namespace zu::component {

using com::Variant;

RecordLoop::RecordLoop(const EngineContext& context, DataView view, BSTR routineName)
    : context_(context),
      view_(std::move(view)),
      viewItem_(context.HandleOf(ContextItem::kDataView)),
      numberItem_(context.HandleOf(ContextItem::kRecordNumber)),
      routineName_(com::View(routineName)),
      routine_(context.Routine(routineName_.get())) {}

void RecordLoop::Run(com::SafeArray& arguments) {
    const Variant savedView = context_.Save(viewItem_);
    const Variant savedNumber = context_.Save(numberItem_);
    context_.Set(viewItem_, Variant(static_cast<IDispatch*>(view_.get())));
    const WatchedJob job(L"process", 0);
    view_.MoveFirst();
    while (!view_.Eof() && ProcessRecord(arguments)) {
        if (!job.GoesOnAfter(processed_)) {
            TellReason(E_ABORT, WatchedJob::EndedByUser(processed_), ReasonFor::Asking);
            break;
        }
        view_.MoveNext();
    }
    context_.Set(viewItem_, savedView);
    context_.Set(numberItem_, savedNumber);
}

bool RecordLoop::ProcessRecord(com::SafeArray& arguments) {
    context_.Set(numberItem_, Variant(LONG{processed_ + 1}));
    if (!context_.CallRoutine(routine_.get(), routineName_.get(), arguments.address())) return false;
    ++processed_;
    return true;
}

}  // namespace zu::component
