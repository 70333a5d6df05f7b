#pragma once

#include <memory>

#include "host/service/ViewMembers.h"

namespace zu::host {

/// A view as tables hand it out: the records of a selection, or the layout of a table without records.
class DataView final : public ViewMembers<com::DualObject<DataView, ZuDataView>> {
public:
    using ViewMembers::ViewMembers;
};

/// A view of `records` that stands on the first one.
com::ComPtr<DataView> MakeView(std::shared_ptr<RecordSet> records);

}  // namespace zu::host
