#include "com/Module.h"

#include <atomic>

#include "com/ComError.h"

namespace zu::com {
namespace {

std::atomic<LONG> objectCount{0};
std::atomic<LONG> lockCount{0};
std::atomic<LONG> threadStateCount{0};

// Something with an address inside this module, wherever the library is linked into.
const char kAnchor = 0;

}  // namespace

void Module::ObjectBorn() noexcept {
    ++objectCount;
}
void Module::ObjectGone() noexcept {
    --objectCount;
}
void Module::Lock() noexcept {
    ++lockCount;
}
void Module::Unlock() noexcept {
    --lockCount;
}
void Module::ThreadStateBorn() noexcept {
    ++threadStateCount;
}
void Module::ThreadStateGone() noexcept {
    --threadStateCount;
}

LONG Module::objects() noexcept {
    return objectCount;
}
LONG Module::threadStates() noexcept {
    return threadStateCount;
}

HRESULT Module::CanUnloadNow() noexcept {
    return objectCount == 0 && lockCount == 0 && threadStateCount == 0 ? S_OK : S_FALSE;
}

HMODULE Module::handle() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&kAnchor), &module);
    return module;
}

std::wstring Module::Path() {
    // Paths can be longer than MAX_PATH; the call tells only by filling the buffer.
    std::wstring path(MAX_PATH, L'\0');
    while (true) {
        const DWORD length = GetModuleFileNameW(handle(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) throw ComError(HRESULT_FROM_WIN32(GetLastError()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        if (path.size() > 0x10000) throw ComError(E_UNEXPECTED, L"The path of the module is too long");
        path.resize(path.size() * 2);
    }
}

std::wstring Module::Name() {
    std::wstring path = Path();
    path.erase(0, path.find_last_of(L"\\/") + 1);
    return path.substr(0, path.find_last_of(L'.'));
}

}  // namespace zu::com
