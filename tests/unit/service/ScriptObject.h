#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::test {

/// An object as a script engine would hand it in: methods by name, dispatch ids handed out on request. It
/// counts how often a name was looked up and how many references it has.
class ScriptObject final : public IDispatch {
public:
    /// Answers the result; the arguments come in the order of the call and may be written to.
    using Method =
        std::function<HRESULT(std::vector<VARIANT*>& arguments, VARIANT* result, EXCEPINFO* raised)>;

    static com::ComPtr<ScriptObject> Make() { return com::ComPtr<ScriptObject>::Adopt(new ScriptObject); }

    void Add(const std::wstring& name, Method method) { methods_[name] = std::move(method); }
    int lookups() const { return lookups_; }
    ULONG references() const { return references_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) noexcept override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* raised, UINT* bad) noexcept override;

private:
    ScriptObject() = default;
    ~ScriptObject() = default;

    ULONG references_ = 1;
    int lookups_ = 0;
    std::map<std::wstring, Method> methods_;
};

}  // namespace zu::test
