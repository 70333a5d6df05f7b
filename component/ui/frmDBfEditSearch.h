#pragma once

#include <windows.h>

#include <memory>
#include <string_view>

#include "component/ui/Drawing.h"
#include "component/ui/EditSession.h"

namespace zu::component {

/// Hears of "Find Next".
class SearchListener {
public:
    virtual ~SearchListener() = default;
    virtual void SearchRequested(const SearchRequest& request) = 0;
};

/// The search dialog: a column, a text, three options. It is not modal; closing it hides it.
class frmDBfEditSearch {
public:
    /// Throws ComError when the dialog cannot be made.
    frmDBfEditSearch(HWND owner, SearchListener& listener);
    ~frmDBfEditSearch();
    frmDBfEditSearch(const frmDBfEditSearch&) = delete;
    frmDBfEditSearch& operator=(const frmDBfEditSearch&) = delete;

    void AddField(std::wstring_view name, LONG columnNumber);
    /// Chooses the first field with this column number, or none.
    void ChooseColumn(LONG columnNumber);
    void SetFromTop(bool fromTop);
    void Show();
    void Hide();
    HWND handle() const noexcept { return dialog_; }

    enum Control {
        kFind = IDOK,
        kCancel = IDCANCEL,
        kHelp = IDHELP,
        kFieldNameLabel = 201,
        kFieldName,
        kSearchTextLabel,
        kSearchText,
        kStartAtTop,
        kLoop,
        kPattern,
    };

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    bool Handle(UINT message, WPARAM wParam);
    void CreateControls();
    void PlaceBesideOwner();
    void Find();
    bool IsChecked(Control box) const {
        return SendDlgItemMessageW(dialog_, box, BM_GETCHECK, 0, 0) != BST_UNCHECKED;
    }

    SearchListener& listener_;
    HWND dialog_ = nullptr;
    std::unique_ptr<Fonts> fonts_;
};

}  // namespace zu::component
