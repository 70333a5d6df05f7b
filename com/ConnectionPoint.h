#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

#include <span>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::com {

/// The one connection point of an event source, built into the source: it shares the source's reference
/// count.
///
///     class Parser : public com::DualObject<Parser, ZuParser, IConnectionPointContainer> { ... };
///
/// The source forwards FindConnectionPoint to `Find` and fires its events with `Fire`. Clients hold the
/// source through the connection point.
class ConnectionPoint final : public IConnectionPoint {
public:
    /// `source` must outlive this object; it is usually the object that holds it as a member.
    ConnectionPoint(IConnectionPointContainer& source, REFIID events) noexcept
        : source_(source), events_(events) {}

    /// FindConnectionPoint of the source.
    HRESULT Find(REFIID events, IConnectionPoint** point) noexcept;

    /// Calls every client with `arguments` in their natural order. References among them carry answers back.
    /// A client that fails does not keep the others from being called. `answer`, when it is given, receives
    /// the last result that is not Empty, for clients whose language cannot change arguments.
    void Fire(DISPID event, std::span<const VARIANT> arguments, Variant* answer = nullptr);

    std::size_t clients() const noexcept { return clients_.size(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* events) noexcept override;
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** source) noexcept override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* client, DWORD* cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) noexcept override;

private:
    struct Client {
        DWORD cookie;
        ComPtr<IDispatch> sink;
    };

    IConnectionPointContainer& source_;
    IID events_;
    std::vector<Client> clients_;
    DWORD nextCookie_ = 1;
};

}  // namespace zu::com
