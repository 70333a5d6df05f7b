#include "component/table/ReadOnly.h"

#include "component/engine/EngineLink.h"
#include "component/engine/FailureReason.h"
#include "component/table/ShownArgument.h"

namespace zu::component {

void TellReadOnly(const DataView& view, const VARIANT& tableDefn) {
    // Engines that take no reasons get no call more than the function needs.
    if (!Engine().reasons()) return;
    try {
        // The engine says why when it is asked to save all the same; there is nothing to be saved.
        static_cast<void>(view.Update());
        TellReason(E_ACCESSDENIED, L"The " + ShownTable(tableDefn) + L" can only be read");
    } catch (...) {
        TellCurrentException();
    }
}

}  // namespace zu::component
