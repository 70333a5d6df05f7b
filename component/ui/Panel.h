#pragma once

#include "component/ui/Window.h"

namespace zu::component {

/// A box for controls: what they send goes on to the box around it.
class Panel final : public Window {
public:
    void Open(const wchar_t* className, HWND parent, int id);

protected:
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
};

}  // namespace zu::component
