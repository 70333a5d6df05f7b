#include "runner/ExceptionInfo.h"

#include "com/Bstr.h"
#include "com/ComPtr.h"

namespace zu::runner {
namespace {

bool IsCallFailure(HRESULT code) noexcept {
    switch (code) {
        case DISP_E_MEMBERNOTFOUND:
        case DISP_E_UNKNOWNNAME:
        case DISP_E_BADPARAMCOUNT:
        case DISP_E_PARAMNOTOPTIONAL:
        case DISP_E_PARAMNOTFOUND:
        case DISP_E_NONAMEDARGS:
        case DISP_E_EXCEPTION:
            return true;
        default:
            return false;
    }
}

}  // namespace

HRESULT DispatchFailure(HRESULT code, EXCEPINFO* exception) noexcept {
    if (IsCallFailure(code) || !exception) return code;
    *exception = EXCEPINFO{};
    exception->scode = code;
    com::ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.put()) == S_OK && information) {
        information->GetDescription(&exception->bstrDescription);
        information->GetSource(&exception->bstrSource);
    }
    return DISP_E_EXCEPTION;
}

com::ComError ErrorOfCall(HRESULT code, EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    const com::Bstr description = com::Bstr::Adopt(exception.bstrDescription);
    const com::Bstr source = com::Bstr::Adopt(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    if (code == DISP_E_EXCEPTION) {
        if (exception.scode != 0) code = exception.scode;
        // Old components report a number of the script run time instead of an HRESULT.
        if (exception.scode == 0 && exception.wCode != 0)
            code = static_cast<HRESULT>(0x800A0000U | exception.wCode);
    }
    exception = EXCEPINFO{};
    return com::ComError(code, description.str(), source.str());
}

}  // namespace zu::runner
