#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::host {

/// The routines of a script: the methods of one object that the script's host, or any other client, hands in.
///
/// A routine is looked up once by its name; calling it again costs no second look-up. Failures are ComErrors.
class Routines {
public:
    void SetHolder(IDispatch* holder) noexcept;
    const com::ComPtr<IDispatch>& holder() const noexcept { return holder_; }

    bool Has(std::wstring_view name);
    /// The object to hand to Call for the routine `name`. DISP_E_UNKNOWNNAME when there is none.
    com::ComPtr<IDispatch> Find(std::wstring_view name);

    /// Calls the method `name` of `routine` with the arguments, which the routine may change, and answers
    /// what it answered. An error that the routine raised comes back as it was raised.
    com::Variant Call(IDispatch* routine, std::wstring_view name, SAFEARRAY* arguments);

private:
    DISPID Resolve(IDispatch* object, std::wstring_view name);

    com::ComPtr<IDispatch> holder_;
    com::ComPtr<IDispatch> lastObject_;  ///< of the routine that was looked up last
    std::wstring lastName_;
    DISPID lastId_ = DISPID_UNKNOWN;
};

}  // namespace zu::host
