#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstddef>
#include <vector>

#include "com/Variant.h"
#include "runner/Unknown.h"

namespace zu::runner {

/// Walks over a fixed list of values for For Each.
class ElementEnumerator final : public Unknown<IEnumVARIANT> {
public:
    explicit ElementEnumerator(std::vector<com::Variant> elements, std::size_t next = 0)
        : elements_(std::move(elements)), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* elements, ULONG* fetched) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** result) override;

private:
    std::vector<com::Variant> elements_;
    std::size_t next_;
};

}  // namespace zu::runner
