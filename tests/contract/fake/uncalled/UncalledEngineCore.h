#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuEngineCore with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledEngineCore : public ZuEngineCore {
public:
    using Interface = ZuEngineCore;

    STDMETHODIMP get_Name(BSTR*) override { return Unexpected("ZuEngineCore.get_Name"); }
    STDMETHODIMP get_Version(BSTR*) override { return Unexpected("ZuEngineCore.get_Version"); }
    STDMETHODIMP get_SettingsFile(BSTR*) override { return Unexpected("ZuEngineCore.get_SettingsFile"); }
    STDMETHODIMP get_Setting(BSTR, BSTR*) override { return Unexpected("ZuEngineCore.get_Setting"); }
    STDMETHODIMP put_Setting(BSTR, BSTR) override { return Unexpected("ZuEngineCore.put_Setting"); }
};

}  // namespace zu::fake
