#pragma once

#include <windows.h>

#include <unknwn.h>

#include <utility>

#include "com/ComError.h"

namespace zu::com {

/// Owns one reference to an interface. `put()` hands out the address for a new reference and releases the old
/// one first; there is no overloaded address-of.
template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}
    /// Shares: adds a reference.
    explicit ComPtr(T* pointer) noexcept : pointer_(pointer) {
        if (pointer_) pointer_->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ~ComPtr() { reset(); }

    ComPtr& operator=(const ComPtr& other) noexcept {
        ComPtr(other).swap(*this);
        return *this;
    }
    ComPtr& operator=(ComPtr&& other) noexcept {
        ComPtr(std::move(other)).swap(*this);
        return *this;
    }

    /// Takes over a reference that the caller owns.
    static ComPtr Adopt(T* pointer) noexcept {
        ComPtr result;
        result.pointer_ = pointer;
        return result;
    }

    void swap(ComPtr& other) noexcept { std::swap(pointer_, other.pointer_); }
    void reset() noexcept {
        // The member is cleared before the call: the release may come back to this object.
        if (T* pointer = std::exchange(pointer_, nullptr)) pointer->Release();
    }

    T* get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    T& operator*() const noexcept { return *pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    /// For out-parameters.
    T** put() noexcept {
        reset();
        return &pointer_;
    }
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }

    /// Gives the reference away (for [out, retval] results).
    [[nodiscard]] T* detach() noexcept { return std::exchange(pointer_, nullptr); }
    /// A further reference for the caller.
    [[nodiscard]] T* copy() const noexcept {
        if (pointer_) pointer_->AddRef();
        return pointer_;
    }

    /// QueryInterface; null when the object does not answer it.
    template <class U>
    ComPtr<U> tryAs() const noexcept {
        ComPtr<U> result;
        if (pointer_) pointer_->QueryInterface(__uuidof(U), result.putVoid());
        return result;
    }
    /// QueryInterface; a null pointer is kObjectNotSet, a refusal is kTypeMismatch.
    template <class U>
    ComPtr<U> as() const {
        Required(pointer_);
        ComPtr<U> result = tryAs<U>();
        if (!result) throw ComError(kTypeMismatch, L"Type mismatch");
        return result;
    }

private:
    T* pointer_ = nullptr;
};

template <class T>
ComPtr<T> Share(T* pointer) noexcept {
    return ComPtr<T>(pointer);
}

}  // namespace zu::com
