#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>
#include <vector>

#include "com/ComPtr.h"

namespace zu::runner {

/// The objects whose events the script handles.
class EventBindings {
public:
    ~EventBindings() { DisconnectAll(); }

    /// Calls the routines of `routines` whose names are `prefix` plus the name of an event of `object`.
    /// Throws com::ComError when the object has no events.
    void Connect(IDispatch* object, const std::wstring& prefix, com::ComPtr<IDispatch> routines);
    /// No more events of this object. An object that was not connected is passed over.
    void Disconnect(IDispatch* object) noexcept;
    void DisconnectAll() noexcept;

private:
    struct Binding {
        com::ComPtr<IUnknown> identity;
        com::ComPtr<IConnectionPoint> point;
        DWORD cookie = 0;
    };
    std::vector<Binding> bindings_;
};

}  // namespace zu::runner
