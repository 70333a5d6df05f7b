#pragma once

#include <windows.h>

#include <objidl.h>

#include <cstddef>

namespace zu::contract {

/// The blocks in use on all heaps of the process at the time of construction.
class MemoryBlocks {
public:
    MemoryBlocks();
    std::size_t count() const { return count_; }

private:
    std::size_t count_ = 0;
};

/// Counts the blocks that COM's allocator hands out from construction on (texts, arrays, task memory). The
/// cache of freed texts is switched off, so that a freed text is a freed block.
class ComBlocks final : public IMallocSpy {
public:
    ComBlocks();
    virtual ~ComBlocks();
    ComBlocks(const ComBlocks&) = delete;
    ComBlocks& operator=(const ComBlocks&) = delete;

    long allocated() const { return allocated_; }
    /// Blocks allocated and not freed since construction.
    long alive() const { return alive_; }

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override;
    STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override;
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** newBlock, BOOL spied) override;
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL spied) override;
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int result) override { return result; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

private:
    long allocated_ = 0;
    long alive_ = 0;
    bool growsFromNothing_ = false;
};

}  // namespace zu::contract
