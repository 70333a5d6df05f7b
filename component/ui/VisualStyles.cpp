#include "component/ui/VisualStyles.h"

#include <commctrl.h>

#include "com/Module.h"

namespace zu::component {

namespace {

/// Of the manifest in ui.rc.
constexpr WORD kManifest = 2;

}  // namespace

VisualStyles::VisualStyles() noexcept {
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.hModule = com::Module::handle();
    wanted.lpResourceName = MAKEINTRESOURCEW(kManifest);
    // The module's file is looked for under its name when the handle alone does not do.
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(com::Module::handle(), path, MAX_PATH);
    wanted.lpSource = path;
    context_ = CreateActCtxW(&wanted);
    active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_);
    INITCOMMONCONTROLSEX controls{sizeof controls,
                                  ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
}

VisualStyles::~VisualStyles() {
    if (active_) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace zu::component
