#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "Target.h"
#include "com/Variant.h"

namespace zu::com::test {

/// What a call by name answered.
struct Outcome {
    HRESULT code = E_FAIL;
    Variant result;
    HRESULT errorCode = S_OK;  ///< from EXCEPINFO
    std::wstring error;
    std::wstring source;
    UINT badArgument = 99;

    std::wstring text() const { return SUCCEEDED(code) ? Describe(result.get()) : L"failed"; }
};

/// Calls an object by name as a script engine does. Arguments stand in natural order.
class Caller {
public:
    explicit Caller(ComPtr<IDispatch> object) : object_(std::move(object)) {}

    /// DISPID_UNKNOWN when the name is not known.
    DISPID IdOf(const wchar_t* name) const;
    Outcome Call(const wchar_t* name, std::vector<VARIANT> arguments = {},
                 WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET) const;
    Outcome Invoke(DISPID id, std::vector<VARIANT> arguments, WORD flags,
                   std::vector<DISPID> named = {}) const;
    /// The value to assign is the last argument.
    Outcome Put(const wchar_t* name, std::vector<VARIANT> arguments, WORD flags = DISPATCH_PROPERTYPUT) const;

    IDispatch& object() const { return *object_; }

private:
    ComPtr<IDispatch> object_;
};

/// What a script engine passes for a variable.
VARIANT ByReference(Variant& variable);
/// A typed reference.
VARIANT ByReference(LONG& number);
VARIANT ByReference(BSTR& text);
VARIANT ByReference(SAFEARRAY*& array);

/// An array object of a script engine: `length` and index names.
ComPtr<IDispatch> MakeScriptArray(std::vector<Variant> elements, Variant length);
ComPtr<IDispatch> MakeScriptArray(std::vector<Variant> elements);

}  // namespace zu::com::test
