#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::test {

/// Initialises COM on the thread of a test.
class Apartment {
public:
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() { CoUninitialize(); }
};

/// An object as a script sees it: everything goes through IDispatch.
class LateBound {
public:
    explicit LateBound(IUnknown* object) { object->QueryInterface(IID_IDispatch, object_.putVoid()); }
    explicit LateBound(const com::Variant& value) : object_(com::ObjectOf<IDispatch>(value)) {}

    IDispatch* get() const { return object_.get(); }
    explicit operator bool() const { return object_.get() != nullptr; }

    com::Variant Get(std::wstring name, std::vector<com::Variant> arguments = {}) const;
    /// As Get, for members that answer an object.
    LateBound Object(std::wstring name, std::vector<com::Variant> arguments = {}) const;
    void Put(std::wstring name, const com::Variant& value, std::vector<com::Variant> arguments = {}) const;
    void PutObject(std::wstring name, IDispatch* value) const;
    /// The default member.
    com::Variant Default(std::vector<com::Variant> arguments = {}) const;

    /// What the last call answered, and the text that came with a failure.
    HRESULT result() const { return result_; }
    const std::wstring& error() const { return error_; }

private:
    com::Variant Invoke(DISPID id, WORD flags, std::vector<com::Variant> arguments) const;
    DISPID Find(std::wstring name) const;

    com::ComPtr<IDispatch> object_;
    mutable HRESULT result_ = S_OK;
    mutable std::wstring error_;
};

com::Variant Text(std::wstring_view text);
com::Variant Number(LONG number);

/// The text that the last failing vtable call left for the caller.
std::wstring ErrorText();

}  // namespace zu::test
