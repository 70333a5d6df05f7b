#include "com/ConnectionPoint.h"

#include <olectl.h>

#include <algorithm>

#include "com/ComError.h"

namespace zu::com {

HRESULT ConnectionPoint::Find(REFIID events, IConnectionPoint** point) noexcept {
    if (!point) return E_POINTER;
    *point = nullptr;
    if (!IsEqualIID(events, events_)) return CONNECT_E_NOCONNECTION;
    AddRef();
    *point = this;
    return S_OK;
}

void ConnectionPoint::Fire(DISPID event, std::span<const VARIANT> arguments, Variant* answer) {
    // A client may connect or leave while it is being called; this call goes to those that were there before.
    const std::vector<Client> clients = clients_;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    for (const Client& client : clients) {
        DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        Variant result;
        client.sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result.put(),
                            nullptr, nullptr);
        if (answer && result.type() != VT_EMPTY) *answer = std::move(result);
    }
}

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IConnectionPoint)) return E_NOINTERFACE;
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

ULONG ConnectionPoint::AddRef() noexcept {
    return source_.AddRef();
}

ULONG ConnectionPoint::Release() noexcept {
    return source_.Release();
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* events) noexcept {
    if (!events) return E_POINTER;
    *events = events_;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** source) noexcept {
    if (!source) return E_POINTER;
    source_.AddRef();
    *source = &source_;
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* client, DWORD* cookie) noexcept {
    if (!client || !cookie) return E_POINTER;
    *cookie = 0;
    // A client that implements the events proper is asked first; scripts only know IDispatch.
    ComPtr<IDispatch> sink;
    if (FAILED(client->QueryInterface(events_, sink.putVoid()))) {
        if (FAILED(client->QueryInterface(IID_IDispatch, sink.putVoid()))) return CONNECT_E_CANNOTCONNECT;
    }
    return Guard([&] {
        clients_.push_back({nextCookie_, std::move(sink)});
        *cookie = nextCookie_++;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) noexcept {
    const auto found = std::find_if(clients_.begin(), clients_.end(),
                                    [cookie](const Client& client) { return client.cookie == cookie; });
    if (found == clients_.end()) return CONNECT_E_NOCONNECTION;
    const ComPtr<IDispatch> leaving = std::move(found->sink);  // let go after the list is in order again
    clients_.erase(found);
    return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) noexcept {
    if (connections) *connections = nullptr;
    return E_NOTIMPL;
}

}  // namespace zu::com
