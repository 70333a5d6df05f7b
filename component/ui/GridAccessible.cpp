#include "component/ui/GridAccessible.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "component/ui/fgGrid.h"

namespace zu::component {

using grid::Cell;
using grid::kFixedColumns;

namespace {

/// Every member: nothing works without the grid, and nothing is thrown at the client.
template <class Body>
HRESULT Connected(const fgGrid* grid, Body&& body) noexcept {
    if (!grid) return CO_E_OBJNOTCONNECTED;
    HRESULT answer = S_OK;
    const HRESULT guarded = com::Guard([&] { answer = body(); });
    return FAILED(guarded) ? guarded : answer;
}

HRESULT GiveNumber(VARIANT* target, LONG number) noexcept {
    if (!target) return E_POINTER;
    VariantInit(target);
    target->vt = VT_I4;
    target->lVal = number;
    return S_OK;
}

HRESULT GiveText(BSTR* target, std::wstring_view text) {
    if (!target) return E_POINTER;
    *target = com::NewBstr(text);
    return S_OK;
}

std::wstring RecordText(const fgGrid& grid, grid::Row row) {
    const auto& rows = grid.session().rows();
    std::wstring text = L"Record " + std::to_wstring(rows.RowData(row) + 1) + L" of " +
                        std::to_wstring(rows.count() - grid::kHeaderRows);
    const grid::LoadedRow* const loaded = rows.Loaded(row);
    if (loaded && loaded->isDeleted()) text += L", deleted";
    return text;
}

}  // namespace

com::ComPtr<GridAccessible> GridAccessible::Make(fgGrid& grid) {
    return com::ComPtr<GridAccessible>::Adopt(new GridAccessible(grid));
}

LRESULT GridAccessible::Answer(WPARAM wParam) noexcept {
    // The library is there on every Windows; a DLL that links it would need it in every host.
    using Function = LRESULT(WINAPI*)(REFIID, WPARAM, LPUNKNOWN);
    static const HMODULE library = LoadLibraryW(L"oleacc.dll");
    static const auto function = library ? reinterpret_cast<Function>(reinterpret_cast<void*>(
                                               GetProcAddress(library, "LresultFromObject")))
                                         : nullptr;
    return function ? function(__uuidof(IAccessible), wParam, this) : 0;
}

void GridAccessible::AnnounceFocus() const noexcept {
    if (!grid_) return;
    NotifyWinEvent(EVENT_OBJECT_FOCUS, grid_->handle(), OBJID_CLIENT, ChildOf(grid_->session().current()));
}

STDMETHODIMP GridAccessible::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch && id != __uuidof(IAccessible)) return E_NOINTERFACE;
    *result = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) GridAccessible::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP GridAccessible::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

int GridAccessible::DataColumns() const {
    return grid_->session().columns().count() - kFixedColumns;
}

LONG GridAccessible::ChildCount() const {
    const auto& viewport = grid_->viewport();
    return static_cast<LONG>((viewport.visibleEnd() - viewport.topRow()) * DataColumns());
}

LONG GridAccessible::ChildOf(Cell cell) const {
    const auto& viewport = grid_->viewport();
    if (cell.row < viewport.topRow() || cell.row >= viewport.visibleEnd()) return CHILDID_SELF;
    return static_cast<LONG>((cell.row - viewport.topRow()) * DataColumns()) + cell.column - kFixedColumns +
           1;
}

std::optional<Cell> GridAccessible::CellOf(const VARIANT& child) const {
    if (child.vt != VT_I4 || child.lVal < 1 || child.lVal > ChildCount()) return std::nullopt;
    const LONG index = child.lVal - 1;
    return Cell{grid_->viewport().topRow() + index / DataColumns(), kFixedColumns + index % DataColumns()};
}

STDMETHODIMP GridAccessible::get_accParent(IDispatch** parent) {
    if (!parent) return E_POINTER;
    *parent = nullptr;
    return S_FALSE;
}

STDMETHODIMP GridAccessible::get_accChildCount(LONG* count) {
    if (!count) return E_POINTER;
    return Connected(grid_, [&] {
        *count = ChildCount();
        return S_OK;
    });
}

STDMETHODIMP GridAccessible::get_accChild(VARIANT, IDispatch** result) {
    if (!result) return E_POINTER;
    *result = nullptr;  // the children have no objects of their own
    return S_FALSE;
}

STDMETHODIMP GridAccessible::get_accName(VARIANT child, BSTR* name) {
    return Connected(grid_, [&] {
        const auto cell = CellOf(child);
        if (!cell) return GiveText(name, L"Records");
        return GiveText(name, com::AsWide(grid_->session().columns()[cell->column].caption));
    });
}

STDMETHODIMP GridAccessible::get_accValue(VARIANT child, BSTR* value) {
    return Connected(grid_, [&] {
        const auto cell = CellOf(child);
        return GiveText(value, cell ? grid_->session().TextAt(*cell) : std::wstring());
    });
}

STDMETHODIMP GridAccessible::get_accDescription(VARIANT child, BSTR* description) {
    return Connected(grid_, [&] {
        const auto cell = CellOf(child);
        return GiveText(description, cell ? RecordText(*grid_, cell->row) : std::wstring());
    });
}

STDMETHODIMP GridAccessible::get_accHelp(VARIANT child, BSTR* help) {
    return Connected(grid_, [&] {
        if (CellOf(child)) return GiveText(help, {});
        return GiveText(help, L"Arrows move, F2 edits, Ctrl+F searches, Ctrl+C copies.");
    });
}

STDMETHODIMP GridAccessible::get_accRole(VARIANT child, VARIANT* role) {
    return Connected(grid_,
                     [&] { return GiveNumber(role, CellOf(child) ? ROLE_SYSTEM_CELL : ROLE_SYSTEM_TABLE); });
}

STDMETHODIMP GridAccessible::get_accState(VARIANT child, VARIANT* state) {
    return Connected(grid_, [&] {
        const auto cell = CellOf(child);
        const bool focused = GetFocus() == grid_->handle();
        LONG flags = STATE_SYSTEM_FOCUSABLE;
        if (cell) {
            flags |= STATE_SYSTEM_SELECTABLE;
            if (grid_->session().isReadOnly()) flags |= STATE_SYSTEM_READONLY;
            if (*cell == grid_->session().current()) {
                flags |= STATE_SYSTEM_SELECTED;
                if (focused) flags |= STATE_SYSTEM_FOCUSED;
            }
        } else if (focused) {
            flags |= STATE_SYSTEM_FOCUSED;
        }
        return GiveNumber(state, flags);
    });
}

STDMETHODIMP GridAccessible::get_accFocus(VARIANT* child) {
    return Connected(grid_, [&] { return GiveNumber(child, ChildOf(grid_->session().current())); });
}

STDMETHODIMP GridAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
    if (!left || !top || !width || !height) return E_POINTER;
    return Connected(grid_, [&] {
        RECT place{};
        if (const auto cell = CellOf(child)) {
            place = grid_->CellPlace(*cell);
        } else {
            GetClientRect(grid_->handle(), &place);
        }
        POINT corner{place.left, place.top};
        ClientToScreen(grid_->handle(), &corner);
        *left = corner.x;
        *top = corner.y;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    });
}

STDMETHODIMP GridAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
    return Connected(grid_, [&] {
        POINT at{left, top};
        ScreenToClient(grid_->handle(), &at);
        const auto row = grid_->viewport().RowAt(at.y);
        const auto column = grid_->session().columns().At(at.x + grid_->viewport().left());
        return GiveNumber(child, row && column ? ChildOf({*row, *column}) : CHILDID_SELF);
    });
}

}  // namespace zu::component
