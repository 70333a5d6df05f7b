#include "runner/EventSink.h"

#include <optional>

#include "com/Bstr.h"
#include "runner/DispatchCall.h"

namespace zu::runner {

EventSink::EventSink(REFIID id, ITypeInfo& events, std::wstring prefix, com::ComPtr<IDispatch> routines)
    : id_(id), prefix_(std::move(prefix)), routines_(std::move(routines)) {
    FUNCDESC* function = nullptr;
    for (UINT i = 0; SUCCEEDED(events.GetFuncDesc(i, &function)); ++i) {
        const MEMBERID member = function->memid;
        events.ReleaseFuncDesc(function);
        com::Bstr name;
        UINT count = 0;
        if (SUCCEEDED(events.GetNames(member, name.put(), 1, &count)) && count == 1)
            names_[member] = name.str();
    }
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return DISP_E_UNKNOWNNAME;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID locale, WORD, DISPPARAMS* parameters, VARIANT* result,
                          EXCEPINFO* exception, UINT* badArgument) {
    const auto event = names_.find(id);
    if (event == names_.end()) return S_OK;
    const com::ComPtr<IDispatch> routines = routines_;  // a handler may disconnect this sink
    const std::optional<DISPID> routine = FindMember(routines.get(), prefix_ + event->second);
    if (!routine) return S_OK;  // an event that the script does not care about
    return routines->Invoke(*routine, IID_NULL, locale, DISPATCH_METHOD, parameters, result, exception,
                            badArgument);
}

}  // namespace zu::runner
