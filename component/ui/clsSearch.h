#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "component/ui/EditSession.h"
#include "component/ui/frmDBfEditSearch.h"

namespace zu::component {

/// The search of a grid: what was last searched for, and the dialog that asks for it. "Find Next" in the
/// dialog reaches the grid's form as the event DoSearch.
class clsSearch final : public SearchListener {
public:
    using DoSearch = std::function<void(clsSearch&)>;
    clsSearch(HWND owner, DoSearch doSearch);

    /// A column that can be searched, with the number that the dialog answers for it.
    void AddField(std::wstring_view name, LONG columnNumber);
    /// Shows the dialog with a column chosen; none when it is not among the fields.
    void Display(LONG currentColumn);

    const std::wstring& searchText() const noexcept { return request_.text; }
    LONG columnNumber() const noexcept { return request_.column; }
    void SetColumnNumber(LONG column);
    bool fromTop() const noexcept { return request_.fromTop; }
    void SetFromTop(bool fromTop);
    bool loops() const noexcept { return request_.loop; }
    bool usesPattern() const noexcept { return request_.pattern; }
    bool isVisible() const;
    void SetVisible(bool visible);
    /// What the last "Find Next" asked for.
    const SearchRequest& request() const noexcept { return request_; }

    HWND dialog() const noexcept { return form_.handle(); }

    void SearchRequested(const SearchRequest& request) override;

private:
    frmDBfEditSearch form_;
    DoSearch doSearch_;
    SearchRequest request_;
};

}  // namespace zu::component
