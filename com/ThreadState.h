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
        if (!current_) {
            auto holder = std::make_unique<Holder>(&Release);
            holder->state = std::forward<Make>(make)();
            current_ = holder.release();
        }
        return *current_->state;
    }
    static T& Current() {
        return Current([] { return std::make_unique<T>(); });
    }

    /// The thread's T; null when there is none.
    static T* Existing() noexcept { return current_ ? current_->state.get() : nullptr; }

    /// Destroys the thread's T now.
    static void Release() noexcept {
        // Cleared first: what the destructor releases may come back here.
        const std::unique_ptr<Holder> holder(std::exchange(current_, nullptr));
    }

private:
    struct Holder {
        explicit Holder(ApartmentWatch::Callback callback) : watch(callback) {}
        ApartmentWatch watch;
        std::unique_ptr<T> state;  // destroyed before the watch ends
    };

    // A plain pointer: a thread_local with a destructor would pin the DLL in memory.
    static thread_local Holder* current_;
};

template <class T>
thread_local typename ThreadState<T>::Holder* ThreadState<T>::current_ = nullptr;

}  // namespace zu::com
