#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstddef>
#include <string>

namespace zu::runner {

/// The arguments of one automation call in the order in which the script wrote them, references looked
/// through. A property's new value is the last of them.
class CallArguments {
public:
    explicit CallArguments(const DISPPARAMS& parameters) noexcept : parameters_(parameters) {}

    std::size_t count() const noexcept { return parameters_.cArgs; }
    /// The argument is there and not left out.
    bool Has(std::size_t index) const noexcept;
    /// The argument's content; an omitted one is VT_ERROR.
    const VARIANT& operator[](std::size_t index) const noexcept;

    /// Converted as automation does it. A missing or unsuitable argument throws com::ComError.
    std::wstring Text(std::size_t index) const;
    LONG Long(std::size_t index) const;
    /// The object in the argument; throws com::ComError when there is none.
    IDispatch* Object(std::size_t index) const;

    /// Throws com::ComError unless the count lies between the two.
    void RequireCount(std::size_t least, std::size_t most) const;

    const DISPPARAMS& parameters() const noexcept { return parameters_; }

private:
    const DISPPARAMS& parameters_;
};

}  // namespace zu::runner
