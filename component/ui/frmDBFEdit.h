#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "com/ComPtr.h"
#include "component/ui/EditSession.h"
#include "component/ui/FormButtons.h"
#include "component/ui/Panel.h"
#include "component/ui/VisualStyles.h"
#include "component/ui/Window.h"
#include "component/ui/clsSearch.h"
#include "component/ui/fgGrid.h"
#include "component/ui/txEditBox.h"

namespace zu::component {

/// Where the form stands, in screen pixels; a negative left or top centres it.
struct FormPlace {
    LONG left = -1;
    LONG top = -1;
    LONG width = 600;
    LONG height = 400;
};

/// The modal window that shows the records of a view in a grid, to edit them or to pick one. One form serves
/// one call. What cannot be opened throws ComError; afterwards nothing is thrown.
class frmDBFEdit final : public Window, public GridScreen, public GridOwner, public EditorOwner {
public:
    frmDBFEdit() = default;
    ~frmDBFEdit() override;

    /// Answers when the window has gone: "SYSCLOSE" after the close box, else an empty text.
    std::wstring DisplayEdit(std::wstring_view title, const com::ComPtr<ZuDataView>& view, bool editAllowed,
                             bool allowUndelete, const FormPlace& place, const VARIANT& direction);
    /// The view on the chosen record; null when none was chosen.
    com::ComPtr<ZuDataView> DisplayPick(std::wstring_view title, const com::ComPtr<ZuDataView>& view,
                                        const FormPlace& place);

protected:
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    // What the session shows.
    void ShowButton(Button button, bool visible) override;
    void EnableButton(Button button, bool enabled) override;
    void ShowDeleted(bool deleted) override;
    void ShowPosition(std::wstring_view text) override;
    void Tell(std::wstring_view message) override;
    Answer Ask(std::wstring_view question) override;
    void Explain(std::wstring_view note) override;
    grid::Row TopRow() const override;
    grid::Row VisibleEnd() const override;
    void ScrollTo(grid::Row row) override;
    void CurrentCellChanged() override;
    void RowsChanged() override;
    void RowChanged(grid::Row row) override;
    void Close() override;

    // What the grid and the editor ask for.
    void Perform(grid::Command command) override;
    void TypeInto(wchar_t character) override;
    void CellActivated() override;
    bool FinishEdit() override;
    void GridScrolled() override;
    bool CanPerform(grid::Command command) override;
    void PerformInEditor(grid::EditorCommand command) override;
    void EditorLeft() override;

    void CreateWindows(std::wstring_view caption);
    void PlaceWindow(const FormPlace& place);
    void LayOut();
    void LoadAndShow();
    void RunModal();
    bool IsForMe(MSG& message);
    void OnButton(Button button);
    void OnDestroyed();

    void BeginEdit();
    void EndEdit();
    bool StoreEdit();
    void EditNext(grid::Cell cell);
    void StoreWithoutEditor(std::wstring_view text);
    void ToggleBoolean();
    void Paste();
    void Escape();
    void OpenSearch();
    void FindNext();
    void DoSearch(clsSearch& search);
    void CloseFromBox();

    VisualStyles styles_;
    std::unique_ptr<EditSession> session_;
    std::unique_ptr<fgGrid> grid_;
    Panel picture_;
    Panel frame_;
    std::unique_ptr<FormButtons> buttons_;
    txEditBox editor_{*this};
    std::unique_ptr<clsSearch> search_;
    HWND owner_ = nullptr;
    HWND lastFocus_ = nullptr;
    bool picking_ = false;
    bool selected_ = false;
    bool closed_ = false;
    std::wstring closeReason_;
};

}  // namespace zu::component
