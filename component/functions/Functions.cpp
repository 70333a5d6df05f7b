#include "component/functions/Functions.h"

namespace zu::component {

namespace {

/// Object parameters whose interfaces the view library describes; it need not be registered.
const com::ForeignType kForeign[] = {{L"Field", __uuidof(ZuDataField)},
                                     {L"DataView", __uuidof(ZuDataView)},
                                     {L"FieldValues", __uuidof(ZuDataView)}};

}  // namespace

com::DispatchOptions Functions::dispatchOptions() noexcept {
    return {{}, kForeign};
}

}  // namespace zu::component
