#pragma once

#include <deque>
#include <memory>
#include <mutex>

namespace zu::fake {

/// The T of the calling thread, kept until the program ends. Only a plain pointer is thread-local: at the end
/// of a thread this compiler's run time may free thread-local memory before it runs the destructors in it.
template <class T>
T& OfThisThread() {
    static thread_local T* own = nullptr;
    if (!own) {
        static std::mutex mutex;
        static std::deque<std::unique_ptr<T>> all;
        const std::lock_guard lock(mutex);
        own = all.emplace_back(std::make_unique<T>()).get();
    }
    return *own;
}

}  // namespace zu::fake
