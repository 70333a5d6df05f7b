#include "host/service/DataView.h"

#include <utility>

namespace zu::host {

com::ComPtr<DataView> MakeView(std::shared_ptr<RecordSet> records) {
    return com::MakeObject<DataView>(std::make_shared<ViewCursor>(std::move(records)));
}

com::ComPtr<ZuDataView> CloneView(const ViewCursor& cursor) {
    return com::ComPtr<ZuDataView>::Adopt(
        com::MakeObject<DataView>(std::make_shared<ViewCursor>(cursor)).detach());
}

}  // namespace zu::host
