#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuProject with every operation a surprise: what the component is not meant to call ends up in the journal.
class UncalledProject : public ZuProject {
public:
    using Interface = ZuProject;

    STDMETHODIMP Engine(IDispatch**) override { return Unexpected("ZuProject.Engine"); }
    STDMETHODIMP get_Version(BSTR*) override { return Unexpected("ZuProject.get_Version"); }
    STDMETHODIMP get_SettingsFile(BSTR*) override { return Unexpected("ZuProject.get_SettingsFile"); }
    STDMETHODIMP get_Setting(BSTR, BSTR*) override { return Unexpected("ZuProject.get_Setting"); }
    STDMETHODIMP put_Setting(BSTR, BSTR) override { return Unexpected("ZuProject.put_Setting"); }
    STDMETHODIMP get_DataFolder(BSTR*) override { return Unexpected("ZuProject.get_DataFolder"); }
    STDMETHODIMP put_DataFolder(BSTR) override { return Unexpected("ZuProject.put_DataFolder"); }
    STDMETHODIMP get_RoutineHolder(IDispatch**) override { return Unexpected("ZuProject.get_RoutineHolder"); }
    STDMETHODIMP putref_RoutineHolder(IDispatch*) override {
        return Unexpected("ZuProject.putref_RoutineHolder");
    }
    STDMETHODIMP get_Listener(IDispatch**) override { return Unexpected("ZuProject.get_Listener"); }
    STDMETHODIMP putref_Listener(IDispatch*) override { return Unexpected("ZuProject.putref_Listener"); }
    STDMETHODIMP get_LastError(BSTR*) override { return Unexpected("ZuProject.get_LastError"); }
    STDMETHODIMP get_LastErrorCode(LONG*) override { return Unexpected("ZuProject.get_LastErrorCode"); }
    STDMETHODIMP ClearLastError() override { return Unexpected("ZuProject.ClearLastError"); }
    STDMETHODIMP get_LogFile(BSTR*) override { return Unexpected("ZuProject.get_LogFile"); }
    STDMETHODIMP get_Tracing(VARIANT_BOOL*) override { return Unexpected("ZuProject.get_Tracing"); }
    STDMETHODIMP put_Tracing(VARIANT_BOOL) override { return Unexpected("ZuProject.put_Tracing"); }
    STDMETHODIMP DatabaseService(IDispatch**) override { return Unexpected("ZuProject.DatabaseService"); }
};

}  // namespace zu::fake
