#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>
#include <vector>

namespace zu::tests {

/// Writes a call down as text, with every argument as it arrived in the vtable: texts in quotes, `missing`
/// for an omitted VARIANT, `none` for a null text or object, arrays in brackets, objects by what they are.
class CallRecord {
public:
    void Begin(std::wstring_view name);

    void Add(const VARIANT& value);
    void Add(VARIANT* value);
    void Add(BSTR text);
    void Add(BSTR* text);
    void Add(LONG number);
    void Add(VARIANT_BOOL truth);
    void Add(SAFEARRAY** array);
    template <class Interface>
    void Add(Interface** object) {
        Append(Describe(object ? *object : nullptr));
    }

    const std::wstring& text() const noexcept { return text_; }

private:
    void Append(const std::wstring& argument);
    static std::wstring Describe(const VARIANT& value);
    static std::wstring Describe(SAFEARRAY* array);
    static std::wstring Describe(IUnknown* object);

    std::wstring text_;
    bool first_ = true;
};

}  // namespace zu::tests
