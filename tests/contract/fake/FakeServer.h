#pragma once

#include <windows.h>

namespace zu::fake {

/// The file name of the program stands in its manifest as the server of "Zuengine.Zuproject", so COM asks the
/// program itself for the class object. This says how the class object behaves on the calling thread.
struct FakeServer {
    /// The HRESULT of DllGetClassObject.
    HRESULT classObject = S_OK;

    static FakeServer& OfThread();
};

}  // namespace zu::fake
