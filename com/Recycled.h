#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace zu::com {

/// The memory of the last object of a class that went, for the next one. Any thread may take it.
template <class Owner>
class SpareBlock {
    static_assert(alignof(Owner) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

public:
    /// Memory for one Owner.
    static void* Take() {
        void* const block = spare_.block.exchange(nullptr, std::memory_order_acquire);
        return block ? block : ::operator new(sizeof(Owner));
    }
    static void Give(void* block) noexcept {
        void* none = nullptr;
        if (!spare_.block.compare_exchange_strong(none, block, std::memory_order_release,
                                                  std::memory_order_relaxed))
            ::operator delete(block);
    }

private:
    struct Spare {
        std::atomic<void*> block{nullptr};
        ~Spare() { ::operator delete(block.exchange(nullptr)); }
    };
    static inline Spare spare_;
};

/// A base of classes whose objects come and go with every call of a script, such as views and keys. A trip to
/// the heap takes longer than the rest of their making, so the memory of one is kept.
///
///     class DataView final : public com::DualObject<...>, public com::Recycled<DataView> { ... };
template <class Self>
class Recycled {
public:
    static void* operator new(std::size_t) { return SpareBlock<Self>::Take(); }
    static void operator delete(void* block) noexcept { SpareBlock<Self>::Give(block); }

protected:
    ~Recycled() = default;
};

/// The same for objects with shared owners.
template <class T>
struct RecyclingAllocator {
    using value_type = T;

    RecyclingAllocator() noexcept = default;
    template <class Other>
    // NOLINTNEXTLINE(google-explicit-constructor): allocators turn into one another
    RecyclingAllocator(const RecyclingAllocator<Other>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count == 1) return static_cast<T*>(SpareBlock<T>::Take());
        return std::allocator<T>().allocate(count);
    }
    void deallocate(T* block, std::size_t count) noexcept {
        if (count == 1) return SpareBlock<T>::Give(block);
        std::allocator<T>().deallocate(block, count);
    }
    bool operator==(const RecyclingAllocator&) const noexcept { return true; }
};

/// As std::make_shared, for classes whose objects come and go.
template <class T, class... Arguments>
std::shared_ptr<T> MakeSharedRecycled(Arguments&&... arguments) {
    return std::allocate_shared<T>(RecyclingAllocator<T>(), std::forward<Arguments>(arguments)...);
}

}  // namespace zu::com
