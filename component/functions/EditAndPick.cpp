#include "com/ComError.h"
#include "component/engine/Trapped.h"
#include "component/functions/Functions.h"
#include "component/functions/KeyLookup.h"
#include "component/table/OptionalArgument.h"
#include "component/table/ShownArgument.h"
#include "component/ui/frmDBFEdit.h"

namespace zu::component {

using com::ComPtr;
using com::Variant;

namespace {

/// The flags of a selection: True as a number, and False.
constexpr LONG kForUpdate = -1;
constexpr LONG kForReading = 0;

/// No limit on the records of the grid; `flag` as the table's selections take it.
SelectionLimits AllRecords(LONG flag, const VARIANT* fieldNames) {
    return SelectionLimits{0, flag, Given(fieldNames)};
}

/// Callers by name may leave the width out; so may others.
FormPlace PlaceOf(LONG left, LONG top, const VARIANT& width, LONG height) {
    constexpr LONG kUsualWidth = 600;
    if (com::IsMissing(width)) return {left, top, kUsualWidth, height};
    try {
        return {left, top, com::Convert(width, VT_I4)->lVal, height};
    } catch (const com::ComError& error) {
        throw com::ComError(error.code(),
                            L"The width of the window is a number of pixels, not " + Shown(width));
    }
}

ComPtr<ZuDataField> FieldOf(const ComPtr<ZuDataView>& view, const VARIANT& name) {
    ComPtr<ZuDataFields> fields;
    com::Check(view->get_Fields(fields.put()));
    ComPtr<ZuDataField> field;
    com::Check(com::Required(fields.get())->get_Item(name, field.put()));
    return field;
}

}  // namespace

STDMETHODIMP Functions::DbfEdit(VARIANT TableDefn, BSTR Title, VARIANT Condition, VARIANT Direction,
                                LONG Height, VARIANT Width, LONG Top, LONG Left, VARIANT* FieldNames,
                                VARIANT_BOOL AllowUndelete, VARIANT_BOOL* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        const ComPtr<ZuDataView> view =
            LookUpRecords(TableDefn, Condition, Variant(false), AllRecords(kForUpdate, FieldNames));
        if (!view) return false;
        frmDBFEdit form;
        form.DisplayEdit(com::View(Title), view, true, AllowUndelete != VARIANT_FALSE,
                         PlaceOf(Left, Top, Width, Height), Direction);
        return true;
    });
}

STDMETHODIMP Functions::DbfPick(VARIANT TableDefn, BSTR Title, BSTR Condition, LONG Height, VARIANT Width,
                                LONG Top, LONG Left, VARIANT* FieldNames, VARIANT* ReturnField,
                                VARIANT* Result) {
    const FunctionCall call;
    return Trapped(Result, [&] {
        const ComPtr<ZuDataView> view = LookUpRecords(TableDefn, GivenText(Condition), Variant(true),
                                                      AllRecords(kForReading, FieldNames));
        if (!view) return Variant();
        ComPtr<ZuDataView> picked;
        {
            frmDBFEdit form;
            picked = form.DisplayPick(com::View(Title), view, PlaceOf(Left, Top, Width, Height));
        }
        if (com::IsMissing(ReturnField)) return Variant(static_cast<IDispatch*>(picked.get()));
        if (!picked) return Variant();
        return Variant(static_cast<IDispatch*>(FieldOf(picked, com::Dereference(*ReturnField)).get()));
    });
}

}  // namespace zu::component
