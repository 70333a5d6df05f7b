#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/table/DataView.h"

namespace zu::component {

namespace {

/// The field under which a view hands out the physical number of its current record.
constexpr std::wstring_view kRecordNumberField = L"##RECNO";

/// The view that was given, or the one that the engine's script is processing.
DataView CurrentView(const VARIANT* dataView) {
    if (!com::IsMissing(dataView)) return DataView::FromValue(*dataView);
    const EngineContext& context = Engine().context();
    return DataView::FromValue(context.Value(context.HandleOf(ContextItem::kDataView)));
}

}  // namespace

STDMETHODIMP Functions::DbfTop(VARIANT* View, VARIANT_BOOL* Result) {
    return Trapped(Result, [&] { return CurrentView(View).AbsolutePosition() == 0; });
}

STDMETHODIMP Functions::DbfBottom(VARIANT* View, VARIANT_BOOL* Result) {
    return Trapped(Result, [&] {
        const DataView view = CurrentView(View);
        return view.AbsolutePosition() == view.RecordCount() - 1;
    });
}

STDMETHODIMP Functions::DbfRecNo(VARIANT* View, LONG* Result) {
    return Trapped(Result, LONG{0}, [&] {
        DataView view = CurrentView(View);
        LONG number = view.AbsolutePosition();
        // A view without the field keeps its position as the answer.
        Trap([&] { number = com::Convert(view.Value(kRecordNumberField), VT_I4)->lVal; });
        return number;
    });
}

}  // namespace zu::component
