#include "runner/GlobalFunctions.h"

#include <string_view>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SameText.h"
#include "runner/ExceptionInfo.h"

namespace zu::runner {
namespace {

// Dispatch ids of our own, far from those that type libraries give out.
constexpr DISPID kFirstConstant = 0x7A000000;
constexpr DISPID kUnavailable = 0x79000000;

// The names that the component's functions have, told apart from variables without the component's help.
bool LooksLikeFunction(std::wstring_view name) noexcept {
    return com::SameText(name.substr(0, 3), L"Dbf") || com::SameText(name, L"Descend");
}

}  // namespace

com::ComPtr<IDispatch> GlobalFunctions::Functions() {
    if (failure_) throw com::ComError(*failure_);
    if (functions_) return functions_;
    try {
        com::ComPtr<IDispatch> created = create_();
        ReadConstants(*created);
        functions_ = std::move(created);
    } catch (const com::ComError& failure) {
        // Not tried again: script engines ask for every name that they do not know.
        failure_ = failure;
        throw;
    }
    return functions_;
}

void GlobalFunctions::ReadConstants(IDispatch& functions) {
    com::ComPtr<ITypeInfo> type;
    com::ComPtr<ITypeLib> library;
    UINT index = 0;
    // A component without a type library has no constants to offer.
    if (FAILED(functions.GetTypeInfo(0, LOCALE_NEUTRAL, type.put())) || !type) return;
    if (FAILED(type->GetContainingTypeLib(library.put(), &index))) return;
    const UINT count = library->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        TYPEKIND kind{};
        com::ComPtr<ITypeInfo> entry;
        if (SUCCEEDED(library->GetTypeInfoType(i, &kind)) && kind == TKIND_ENUM &&
            SUCCEEDED(library->GetTypeInfo(i, entry.put()))) {
            ReadEnumeration(*entry);
        }
    }
}

void GlobalFunctions::ReadEnumeration(ITypeInfo& type) {
    VARDESC* variable = nullptr;
    for (UINT i = 0; SUCCEEDED(type.GetVarDesc(i, &variable)); ++i) {
        com::Bstr name;
        if (variable->varkind == VAR_CONST &&
            SUCCEEDED(type.GetDocumentation(variable->memid, name.put(), nullptr, nullptr, nullptr))) {
            constants_.push_back({name.str(), com::Variant(*variable->lpvarValue)});
        }
        type.ReleaseVarDesc(variable);
    }
}

HRESULT GlobalFunctions::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT GlobalFunctions::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT GlobalFunctions::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i)
        ids[i] = DISPID_UNKNOWN;
    HRESULT found = DISP_E_UNKNOWNNAME;
    const HRESULT code = com::Guard([&] { found = FindName(names, count, locale, ids); });
    return FAILED(code) ? code : found;
}

HRESULT GlobalFunctions::FindName(LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
    try {
        const com::ComPtr<IDispatch> functions = Functions();
        const std::wstring_view wanted = names[0];
        for (std::size_t i = 0; i < constants_.size(); ++i) {
            if (!com::SameText(constants_[i].name, wanted)) continue;
            ids[0] = kFirstConstant + static_cast<DISPID>(i);
            return S_OK;
        }
        return functions->GetIDsOfNames(IID_NULL, names, count, locale, ids);
    } catch (const com::ComError&) {
        if (!LooksLikeFunction(names[0])) return DISP_E_UNKNOWNNAME;
        ids[0] = kUnavailable;
        return S_OK;
    }
}

HRESULT GlobalFunctions::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    if (result) VariantInit(result);
    if (id >= kFirstConstant && static_cast<std::size_t>(id - kFirstConstant) < constants_.size()) {
        return DispatchGuard(exception, [&] {
            com::Variant value = constants_[static_cast<std::size_t>(id - kFirstConstant)].value;
            if (result) *result = value.detach();
        });
    }
    // When the component could not be created, asking again raises the reason.
    const HRESULT code = DispatchGuard(exception, [&] { Functions(); });
    if (FAILED(code)) return code;
    if (!watch_)
        return functions_->Invoke(id, IID_NULL, locale, flags, parameters, result, exception, badArgument);
    watch_->OnCall();
    const HRESULT called =
        functions_->Invoke(id, IID_NULL, locale, flags, parameters, result, exception, badArgument);
    const HRESULT returned = DispatchGuard(exception, [&] { watch_->OnReturn(); });
    return FAILED(returned) ? returned : called;
}

}  // namespace zu::runner
