#include "host/service/DataView.h"

#include <utility>

#include "com/ComError.h"
#include "host/engine/EngineState.h"
#include "portable/text/Utf.h"

namespace zu::host {

com::ComPtr<DataView> MakeView(std::shared_ptr<RecordSet> records) {
    return com::MakeObject<DataView>(com::MakeSharedRecycled<ViewCursor>(std::move(records)));
}

HRESULT DataView::DeleteAll(LONG* deleted) noexcept {
    bool isWhole = true;
    const HRESULT outcome = GuardedResult(
        deleted,
        [&] {
            const RecordSet::Deletion deletion = cursor()->records()->DeleteAll();
            isWhole = deletion.isWhole;
            return static_cast<LONG>(deletion.changed);
        },
        Audience::User);
    return isWhole ? outcome : E_ABORT;
}

com::ComPtr<ZuDataView> CloneView(const ViewCursor& cursor) {
    return com::ComPtr<ZuDataView>::Adopt(com::MakeObject<DataView>(cursor.Clone()).detach());
}

com::ComPtr<ZuDataView> ValuesArgument(const VARIANT* values) {
    if (!values || com::IsMissing(*values)) return nullptr;
    const VARIANT& content = com::Dereference(*values);
    if (content.vt == VT_EMPTY || content.vt == VT_NULL) return nullptr;
    const com::ComPtr<IUnknown> object = com::ObjectOf<IUnknown>(content);
    if (!object && (content.vt & ~VT_BYREF) != VT_DISPATCH && (content.vt & ~VT_BYREF) != VT_UNKNOWN)
        throw com::ComError(com::kTypeMismatch, L"AddNew takes the values of a view");
    if (!object)
        throw com::ComError(
            com::kObjectNotSet,
            L"A new record takes its values from a view, such as DbfVarDeclare makes; there is none");
    return object.as<ZuDataView>();
}

void ReportUnsaved(const std::string& reason) {
    EngineState::Current().messages.Report(STG_E_LOCKVIOLATION, com::AsWide(text::ToUtf16(reason)));
}

}  // namespace zu::host
