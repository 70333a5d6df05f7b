#include "LateBound.h"

#include <algorithm>
#include <utility>

#include "com/Bstr.h"

namespace zu::test {

DISPID LateBound::Find(std::wstring name) const {
    LPOLESTR text = name.data();
    DISPID id = DISPID_UNKNOWN;
    result_ = object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_INVARIANT, &id);
    return id;
}

com::Variant LateBound::Invoke(DISPID id, WORD flags, std::vector<com::Variant> arguments) const {
    std::reverse(arguments.begin(), arguments.end());
    std::vector<VARIANTARG> raw;
    raw.reserve(arguments.size());
    for (const com::Variant& argument : arguments)
        raw.push_back(argument.get());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{raw.data(), nullptr, static_cast<UINT>(raw.size()), 0};
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    com::Variant answer;
    EXCEPINFO raised{};
    result_ =
        object_->Invoke(id, IID_NULL, LOCALE_INVARIANT, flags, &parameters, answer.put(), &raised, nullptr);
    const com::Bstr description = com::Bstr::Adopt(raised.bstrDescription);
    SysFreeString(raised.bstrSource);
    SysFreeString(raised.bstrHelpFile);
    error_ = description.str();
    if (result_ == DISP_E_EXCEPTION) result_ = raised.scode;
    return answer;
}

com::Variant LateBound::Get(std::wstring name, std::vector<com::Variant> arguments) const {
    const DISPID id = Find(std::move(name));
    if (FAILED(result_)) return {};
    return Invoke(id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(arguments));
}

LateBound LateBound::Object(std::wstring name, std::vector<com::Variant> arguments) const {
    return LateBound(Get(std::move(name), std::move(arguments)));
}

void LateBound::Put(std::wstring name, const com::Variant& value, std::vector<com::Variant> arguments) const {
    const DISPID id = Find(std::move(name));
    if (FAILED(result_)) return;
    arguments.push_back(value);
    Invoke(id, DISPATCH_PROPERTYPUT, std::move(arguments));
}

void LateBound::PutObject(std::wstring name, IDispatch* value) const {
    const DISPID id = Find(std::move(name));
    if (SUCCEEDED(result_)) Invoke(id, DISPATCH_PROPERTYPUTREF, {com::Variant(value)});
}

com::Variant LateBound::Default(std::vector<com::Variant> arguments) const {
    return Invoke(DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(arguments));
}

com::Variant Text(std::wstring_view text) {
    return com::Variant(text);
}
com::Variant Number(LONG number) {
    return com::Variant(number);
}

std::wstring ErrorText() {
    com::ComPtr<IErrorInfo> information;
    com::Bstr text;
    if (GetErrorInfo(0, information.put()) == S_OK && information) information->GetDescription(text.put());
    return text.str();
}

}  // namespace zu::test
