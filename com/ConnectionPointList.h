#pragma once

#include <windows.h>

#include <ocidl.h>

#include <atomic>

#include "com/ComPtr.h"
#include "com/Module.h"

namespace zu::com {

/// What EnumConnectionPoints answers for a source of one kind of events: a list with that one point. It keeps
/// the point, and with it the source, alive; copies have a position of their own.
class ConnectionPointList final : public IEnumConnectionPoints {
public:
    static ComPtr<IEnumConnectionPoints> Make(IConnectionPoint& point) { return MakeAt(point, false); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    /// `fetched` may be null when `count` is 1.
    HRESULT STDMETHODCALLTYPE Next(ULONG count, IConnectionPoint** points, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints** copy) noexcept override;

private:
    ConnectionPointList(IConnectionPoint& point, bool passed) noexcept : point_(&point), passed_(passed) {}
    ~ConnectionPointList() = default;

    static ComPtr<IEnumConnectionPoints> MakeAt(IConnectionPoint& point, bool passed);

    ComPtr<IConnectionPoint> point_;
    bool passed_;  ///< the position is behind the point
    std::atomic<ULONG> references_{1};
    ObjectCount counted_;
};

}  // namespace zu::com
