#pragma once

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <string>
#include <vector>

#include "com/Bstr.h"
#include "com/EnumVariant.h"
#include "com/Object.h"
#include "com/SameText.h"

namespace zu::component {

/// Formats in the order in which they were added, under their names; case does not matter.
template <class Format>
class FormatCollection {
public:
    LONG count() const noexcept { return static_cast<LONG>(formats_.size()); }

    /// Null when there is none of that name.
    com::ComPtr<Format> Find(std::wstring_view name) const noexcept {
        for (const com::ComPtr<Format>& format : formats_) {
            if (com::SameText(format->name(), name)) return format;
        }
        return nullptr;
    }

    /// By name (a text) or by position from 1 (any number). A missing element is "subscript out of range".
    com::ComPtr<Format> At(const VARIANT& reference) const {
        if (const auto name = com::TextOf(reference)) {
            com::ComPtr<Format> found = Find(*name);
            if (!found)
                throw com::ComError(com::kSubscriptOutOfRange,
                                    L"There is no format named \"" + std::wstring(*name) + L"\"");
            return found;
        }
        const LONG position = com::Variant(reference).ToLong();
        if (position < 1 || position > count())
            throw com::ComError(com::kSubscriptOutOfRange, L"There is no format " +
                                                               std::to_wstring(position) + L", there are " +
                                                               std::to_wstring(count()) + L" counted from 1");
        return formats_[static_cast<std::size_t>(position - 1)];
    }

    /// A name that is there already is "duplicate key", and nothing is added.
    void Add(std::wstring_view name, LONG preset) {
        if (Find(name))
            throw com::ComError(com::kDuplicateKey, L"There is a format named \"" + std::wstring(name) +
                                                        L"\" already; names must differ in more than case");
        com::ComPtr<Format> format = com::MakeObject<Format>();
        format->SetUp(name, preset);
        formats_.push_back(std::move(format));
    }

    /// For the automation "for each"; `owner` keeps this collection alive meanwhile.
    template <class Owner>
    com::ComPtr<IUnknown> Enumerate(Owner* owner) const {
        return com::EnumVariant::Make(
            [this, alive = com::ComPtr<Owner>(owner)](ULONG position) -> std::optional<com::Variant> {
                if (position >= formats_.size()) return std::nullopt;
                return com::Variant(static_cast<IDispatch*>(formats_[position].get()));
            });
    }

private:
    std::vector<com::ComPtr<Format>> formats_;
};

}  // namespace zu::component
