#include <string>
#include <utility>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/DataView.h"
#include "component/table/ShownArgument.h"

namespace zu::component {

using com::ComPtr;

namespace {

/// The field under which a view hands out the physical number of its current record.
constexpr std::wstring_view kRecordNumberField = L"##RECNO";

/// The view that was given, or the one that the engine's script is processing.
DataView CurrentView(const VARIANT* dataView, const wchar_t* function) {
    if (!com::IsMissing(dataView)) {
        ComPtr<ZuDataView> given = IsDataView(*dataView);
        if (!given)
            throw com::ComError(com::kTypeMismatch,
                                std::wstring(function) +
                                    L" takes a view, such as DbfSelect answers; it was given " +
                                    Shown(*dataView));
        return DataView(std::move(given));
    }
    const EngineContext& context = Engine().context();
    ComPtr<ZuDataView> current = IsDataView(context.Value(context.HandleOf(ContextItem::kDataView)));
    if (!current)
        throw com::ComError(com::kObjectNotSet,
                            L"No records are being processed: give " + std::wstring(function) +
                                L" a view, or call it in the routine that DbfProcess calls");
    return DataView(std::move(current));
}

}  // namespace

STDMETHODIMP Functions::DbfTop(VARIANT* View, VARIANT_BOOL* Result) {
    return Trapped(Result, [&] { return CurrentView(View, L"DbfTop").AbsolutePosition() == 0; });
}

STDMETHODIMP Functions::DbfBottom(VARIANT* View, VARIANT_BOOL* Result) {
    return Trapped(Result, [&] {
        const DataView view = CurrentView(View, L"DbfBottom");
        return view.AbsolutePosition() == view.RecordCount() - 1;
    });
}

STDMETHODIMP Functions::DbfRecNo(VARIANT* View, LONG* Result) {
    return Trapped(Result, LONG{0}, [&] {
        DataView view = CurrentView(View, L"DbfRecNo");
        LONG number = view.AbsolutePosition();
        // A view without the field keeps its position as the answer.
        Trap([&] { number = com::Convert(view.Value(kRecordNumberField), VT_I4)->lVal; });
        return number;
    });
}

}  // namespace zu::component
