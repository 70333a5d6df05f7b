#pragma once

#include <exception>
#include <system_error>
#include <thread>

namespace zu::threads {

/// True where two threads get on faster than one.
inline bool HaveSecondProcessor() noexcept {
    return std::thread::hardware_concurrency() > 1;
}

/// Runs `own` here and `other` on a thread of its own, and comes back when both have ended. What `own` throws
/// goes to the caller, else what `other` throws. Where no thread can be had, one runs after the other.
template <class Own, class Other>
void RunBeside(const Own& own, const Other& other) {
    std::exception_ptr failure;
    std::thread thread;
    try {
        thread = std::thread([&] {
            try {
                other();
            } catch (...) {
                failure = std::current_exception();
            }
        });
    } catch (const std::system_error&) {
        own();
        other();
        return;
    }
    try {
        own();
    } catch (...) {
        thread.join();
        throw;
    }
    thread.join();
    if (failure) std::rethrow_exception(failure);
}

}  // namespace zu::threads
