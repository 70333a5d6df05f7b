#include "component/ui/clsSearch.h"

#include <utility>

namespace zu::component {

clsSearch::clsSearch(HWND owner, DoSearch doSearch) : form_(owner, *this), doSearch_(std::move(doSearch)) {}

void clsSearch::AddField(std::wstring_view name, LONG columnNumber) {
    form_.AddField(name, columnNumber);
}

void clsSearch::Display(LONG currentColumn) {
    SetColumnNumber(currentColumn);
    form_.SetFromTop(request_.fromTop);
    form_.Show();
}

void clsSearch::SetColumnNumber(LONG column) {
    request_.column = column;
    form_.ChooseColumn(column);
}

void clsSearch::SetFromTop(bool fromTop) {
    request_.fromTop = fromTop;
    form_.SetFromTop(fromTop);
}

bool clsSearch::isVisible() const {
    return IsWindowVisible(form_.handle()) != FALSE;
}

void clsSearch::SetVisible(bool visible) {
    if (visible) {
        form_.Show();
    } else {
        form_.Hide();
    }
}

void clsSearch::SearchRequested(const SearchRequest& request) {
    request_ = request;
    doSearch_(*this);
}

}  // namespace zu::component
