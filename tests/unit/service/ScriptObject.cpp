#include "ScriptObject.h"

#include <iterator>

namespace zu::test {

HRESULT ScriptObject::QueryInterface(REFIID iid, void** object) noexcept {
    *object = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch)) return E_NOINTERFACE;
    *object = this;
    AddRef();
    return S_OK;
}

ULONG ScriptObject::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count) noexcept {
    *count = 0;
    return S_OK;
}

HRESULT ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) noexcept {
    ++lookups_;
    const auto found = methods_.find(names[0]);
    *ids = found == methods_.end() ? DISPID_UNKNOWN
                                   : 1 + static_cast<DISPID>(std::distance(methods_.begin(), found));
    return found == methods_.end() ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT ScriptObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* raised, UINT*) noexcept {
    if (id < 1 || static_cast<std::size_t>(id) > methods_.size()) return DISP_E_MEMBERNOTFOUND;
    std::vector<VARIANT*> arguments;
    for (UINT i = parameters->cArgs; i-- > 0;) {
        VARIANT& argument = parameters->rgvarg[i];
        arguments.push_back(argument.vt == (VT_BYREF | VT_VARIANT) ? argument.pvarVal : &argument);
    }
    return std::next(methods_.begin(), id - 1)->second(arguments, result, raised);
}

}  // namespace zu::test
