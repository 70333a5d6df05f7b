#include "Caller.h"

#include <algorithm>

namespace zu::com::test {

DISPID Caller::IdOf(const wchar_t* name) const {
    auto* text = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

Outcome Caller::Invoke(DISPID id, std::vector<VARIANT> arguments, WORD flags,
                       std::vector<DISPID> named) const {
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(named.size())};
    Outcome outcome;
    EXCEPINFO exception{};
    outcome.code = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                   outcome.result.put(), &exception, &outcome.badArgument);
    outcome.errorCode = exception.scode;
    outcome.error = Bstr::Adopt(exception.bstrDescription).str();
    outcome.source = Bstr::Adopt(exception.bstrSource).str();
    SysFreeString(exception.bstrHelpFile);
    return outcome;
}

Outcome Caller::Call(const wchar_t* name, std::vector<VARIANT> arguments, WORD flags) const {
    return Invoke(IdOf(name), std::move(arguments), flags);
}

Outcome Caller::Put(const wchar_t* name, std::vector<VARIANT> arguments, WORD flags) const {
    return Invoke(IdOf(name), std::move(arguments), flags, {DISPID_PROPERTYPUT});
}

VARIANT ByReference(Variant& variable) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = variable.address();
    return reference;
}

VARIANT ByReference(LONG& number) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number;
    return reference;
}

VARIANT ByReference(BSTR& text) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_BSTR;
    reference.pbstrVal = &text;
    return reference;
}

VARIANT ByReference(SAFEARRAY*& array) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    reference.pparray = &array;
    return reference;
}

namespace {

class ScriptArray final : public IDispatch {
public:
    ScriptArray(std::vector<Variant> elements, Variant length)
        : elements_(std::move(elements)), length_(std::move(length)) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const std::wstring name = names[0];
        if (name == L"length") {
            ids[0] = 1000;
            return S_OK;
        }
        const auto index = static_cast<std::size_t>(std::wcstoul(names[0], nullptr, 10));
        const bool there = name[0] >= L'0' && name[0] <= L'9' && index < elements_.size() &&
                           elements_[index].type() != VT_EMPTY;
        ids[0] = there ? static_cast<DISPID>(index) : DISPID_UNKNOWN;
        return there ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        *result = Variant(id == 1000 ? length_ : elements_.at(static_cast<std::size_t>(id))).detach();
        return S_OK;
    }

private:
    ~ScriptArray() = default;
    std::vector<Variant> elements_;
    Variant length_;
    ULONG references_ = 1;
};

}  // namespace

ComPtr<IDispatch> MakeScriptArray(std::vector<Variant> elements, Variant length) {
    return ComPtr<IDispatch>::Adopt(new ScriptArray(std::move(elements), std::move(length)));
}

ComPtr<IDispatch> MakeScriptArray(std::vector<Variant> elements) {
    const auto length = static_cast<LONG>(elements.size());
    return MakeScriptArray(std::move(elements), Variant(length));
}

}  // namespace zu::com::test
