#include "runner/ActivationContext.h"

#include <string>

#include "runner/ProgramPath.h"
#include "runner/Resources.h"

namespace zu::runner {
namespace {

constexpr const wchar_t* kFiles[] = {L"Zuengine.dll", L"ZuDBFFunctions.dll"};

bool AllBesideProgram(const std::wstring& folder) {
    for (const wchar_t* file : kFiles) {
        if (GetFileAttributesW((folder + L'\\' + file).c_str()) == INVALID_FILE_ATTRIBUTES) return false;
    }
    return true;
}

}  // namespace

ActivationContext::ActivationContext() {
    const std::wstring program = ProgramPath();
    const std::wstring folder = FolderOf(program);
    if (!AllBesideProgram(folder)) return;

    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    description.lpSource = program.c_str();
    description.lpAssemblyDirectory = folder.c_str();
    description.lpResourceName = MAKEINTRESOURCEW(ZU_COMPONENTS_MANIFEST);
    context_ = CreateActCtxW(&description);
    if (context_ != INVALID_HANDLE_VALUE && !ActivateActCtx(context_, &cookie_)) {
        ReleaseActCtx(context_);
        context_ = INVALID_HANDLE_VALUE;
    }
}

ActivationContext::~ActivationContext() {
    if (context_ == INVALID_HANDLE_VALUE) return;
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
}

}  // namespace zu::runner
