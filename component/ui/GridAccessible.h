#pragma once

#include <windows.h>

#include <oleacc.h>

#include <optional>

#include "com/ComPtr.h"
#include "portable/grid/Cell.h"

namespace zu::component {

class fgGrid;

/// What screen readers see of a grid: a table whose children are the visible cells, each with the column's
/// heading as its name, its text as the value and its record as the description.
///
/// Children are numbered from 1 over the visible rows, data column by data column. The object outlives the
/// grid when a client keeps it; it answers CO_E_OBJNOTCONNECTED then.
class GridAccessible final : public IAccessible {
public:
    static com::ComPtr<GridAccessible> Make(fgGrid& grid);
    void Disconnect() noexcept { grid_ = nullptr; }
    /// The answer to WM_GETOBJECT.
    LRESULT Answer(WPARAM wParam) noexcept;
    /// Tells clients which cell has the focus now.
    void AnnounceFocus() const noexcept;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(LONG* count) override;
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** result) override;
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
    STDMETHODIMP get_accHelpTopic(BSTR*, VARIANT, LONG*) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR*) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP get_accFocus(VARIANT* child) override;
    STDMETHODIMP get_accSelection(VARIANT* children) override { return get_accFocus(children); }
    STDMETHODIMP get_accDefaultAction(VARIANT, BSTR*) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP accSelect(LONG, VARIANT) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    STDMETHODIMP accNavigate(LONG, VARIANT, VARIANT*) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
    STDMETHODIMP accDoDefaultAction(VARIANT) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

private:
    explicit GridAccessible(fgGrid& grid) noexcept : grid_(&grid) {}
    ~GridAccessible() = default;

    int DataColumns() const;
    LONG ChildCount() const;
    /// The child that stands for a cell; CHILDID_SELF for one that cannot be seen.
    LONG ChildOf(grid::Cell cell) const;
    /// The cell of a child; nothing for the grid itself and for unknown children.
    std::optional<grid::Cell> CellOf(const VARIANT& child) const;

    ULONG references_ = 1;
    fgGrid* grid_;
};

}  // namespace zu::component
