#pragma once

#include <windows.h>

#include <objidl.h>

#include <memory>

#include "com/ComError.h"
#include "com/Module.h"

namespace zu::com {

/// Calls back once when the last apartment of the current thread is about to go, while references into it can
/// still be released. See ThreadState.
///
/// Release at the end of the thread or of the process would come too late: there the apartment is gone, and
/// in DllMain nothing may be called at all.
class ApartmentWatch {
public:
    using Callback = void (*)() noexcept;

    /// Throws ComError when the system refuses.
    explicit ApartmentWatch(Callback callback);
    ~ApartmentWatch();
    ApartmentWatch(const ApartmentWatch&) = delete;
    ApartmentWatch& operator=(const ApartmentWatch&) = delete;

private:
    class Spy;
    Spy* spy_ = nullptr;
    ULARGE_INTEGER cookie_{};
};

/// A pointer of each thread's own. Compilers that emulate thread_local look the variable up through several
/// calls at each access; this is one.
class ThreadPointer {
public:
    ThreadPointer() noexcept : slot_(TlsAlloc()) {}
    ~ThreadPointer() {
        if (slot_ != TLS_OUT_OF_INDEXES) TlsFree(slot_);
    }
    ThreadPointer(const ThreadPointer&) = delete;
    ThreadPointer& operator=(const ThreadPointer&) = delete;

    /// Null where the thread has set none.
    void* get() const noexcept { return TlsGetValue(slot_); }
    /// Throws std::bad_alloc when the system has no room for it; never for null where it was set before.
    void Set(void* value) const;

private:
    DWORD slot_;
};

/// One T per thread, made at first use and destroyed when the thread's last apartment goes.
///
/// On a thread that never initialises COM, or never ends it, the T stays, and so does the module
/// (Module::CanUnloadNow). T's destructor may release references of the thread.
template <class T>
class ThreadState {
public:
    /// The thread's T. `make` answers a std::unique_ptr<T>; it is called when there is none yet.
    template <class Make>
    static T& Current(Make&& make) {
        if (Holder* const holder = OfThread()) return *holder->state;
        auto holder = std::make_unique<Holder>(&Release);
        holder->state = std::forward<Make>(make)();
        current_.Set(holder.get());
        return *holder.release()->state;
    }
    static T& Current() {
        return Current([] { return std::make_unique<T>(); });
    }

    /// The thread's T; null when there is none.
    static T* Existing() noexcept {
        Holder* const holder = OfThread();
        return holder ? holder->state.get() : nullptr;
    }

    /// Destroys the thread's T now.
    static void Release() noexcept {
        // Cleared first: what the destructor releases may come back here.
        const std::unique_ptr<Holder> holder(OfThread());
        if (holder) current_.Set(nullptr);
    }

private:
    struct Holder {
        explicit Holder(ApartmentWatch::Callback callback) : watch(callback) {}
        ApartmentWatch watch;
        std::unique_ptr<T> state;  // destroyed before the watch ends
    };

    static Holder* OfThread() noexcept { return static_cast<Holder*>(current_.get()); }

    // No destructor at the end of a thread: that would pin the DLL in memory.
    inline static const ThreadPointer current_;
};

}  // namespace zu::com
