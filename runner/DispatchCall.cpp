#include "runner/DispatchCall.h"

#include <algorithm>
#include <vector>

#include "com/ComError.h"
#include "runner/ExceptionInfo.h"

namespace zu::runner {
namespace {

DISPID RequiredMember(IDispatch* object, const std::wstring& name) {
    const std::optional<DISPID> id = FindMember(com::Required(object), name);
    if (!id) throw com::ComError(DISP_E_UNKNOWNNAME, L"the object has no member " + name);
    return *id;
}

}  // namespace

std::optional<DISPID> FindMember(IDispatch* object, const std::wstring& name) {
    auto* text = const_cast<LPOLESTR>(name.c_str());  // the interface is older than const
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id))) return std::nullopt;
    return id;
}

com::Variant InvokeMember(IDispatch* object, DISPID id, WORD flags, const DISPPARAMS& parameters) {
    com::Variant result;
    EXCEPINFO exception{};
    UINT badArgument = 0;
    DISPPARAMS copy = parameters;
    const HRESULT code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &copy, result.put(),
                                        &exception, &badArgument);
    if (FAILED(code)) throw ErrorOfCall(code, exception);
    return result;
}

com::Variant CallMember(IDispatch* object, const std::wstring& name,
                        std::initializer_list<com::Variant> arguments) {
    const DISPID id = RequiredMember(object, name);
    std::vector<VARIANT> reversed;
    reversed.reserve(arguments.size());
    for (const com::Variant& argument : arguments)
        reversed.push_back(argument.get());  // borrowed
    std::reverse(reversed.begin(), reversed.end());
    const DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return InvokeMember(object, id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters);
}

void PutMember(IDispatch* object, const std::wstring& name, const com::Variant& value) {
    const DISPID id = RequiredMember(object, name);
    VARIANT argument = value.get();  // borrowed
    DISPID put = DISPID_PROPERTYPUT;
    const DISPPARAMS parameters{&argument, &put, 1, 1};
    const WORD flags = value.type() == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
    InvokeMember(object, id, flags, parameters);
}

}  // namespace zu::runner
