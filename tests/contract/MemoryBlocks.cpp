#include "tests/contract/MemoryBlocks.h"

#include <array>

namespace zu::contract {

MemoryBlocks::MemoryBlocks() {
    std::array<HANDLE, 64> heaps{};
    const DWORD found = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    for (DWORD number = 0; number < found && number < heaps.size(); ++number) {
        HeapLock(heaps[number]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[number], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++count_;
        }
        HeapUnlock(heaps[number]);
    }
}

ComBlocks::ComBlocks() {
    using Function = void(WINAPI*)();
    const HMODULE automation = GetModuleHandleW(L"oleaut32.dll");
    if (const auto noCache =
            reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(automation, "SetOaNoCache")))) {
        noCache();
    }
    CoRegisterMallocSpy(this);
}

ComBlocks::~ComBlocks() {
    CoRevokeMallocSpy();
}

STDMETHODIMP ComBlocks::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IMallocSpy;
    *result = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(void*) ComBlocks::PostAlloc(void* block) {
    if (block) {
        ++allocated_;
        ++alive_;
    }
    return block;
}

STDMETHODIMP_(void*) ComBlocks::PreFree(void* block, BOOL spied) {
    if (block && spied) --alive_;
    return block;
}

STDMETHODIMP_(SIZE_T) ComBlocks::PreRealloc(void* block, SIZE_T size, void** newBlock, BOOL) {
    growsFromNothing_ = !block;
    *newBlock = block;
    return size;
}

STDMETHODIMP_(void*) ComBlocks::PostRealloc(void* block, BOOL) {
    if (block && growsFromNothing_) {
        ++allocated_;
        ++alive_;
    }
    return block;
}

}  // namespace zu::contract
