#pragma once

#include "com/Object.h"
#include "idl/FailureReasons.h"
#include "idl/JobReports.h"
#include "idl/Zuengine.h"

namespace zu::host {

/// The project object, which is the engine object too. Every object of a thread is a door to the same engine:
/// what one of them is told counts for all (see EngineState).
class Zuproject final
    : public com::DualObject<Zuproject, ZuProject, ZuEngineCore, ZuEngineContext, ZuEngineData,
                             ZuEngineMessages, ZuEngineUserInterface, JobReports, FailureReasons> {
public:
    static CLSID classId() noexcept { return __uuidof(::Project); }

    // Shared by several interfaces, and the project's own
    HRESULT STDMETHODCALLTYPE Engine(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Version(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_SettingsFile(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Setting(BSTR Name, BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_Setting(BSTR Name, BSTR Value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_DataFolder(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_DataFolder(BSTR Value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_LogFile(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DatabaseService(IDispatch** Result) noexcept override;

    // Context
    HRESULT STDMETHODCALLTYPE get_RoutineHolder(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_RoutineHolder(IDispatch* Value) noexcept override;
    HRESULT STDMETHODCALLTYPE HasRoutine(BSTR Name, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ClearRoutines() noexcept override;
    HRESULT STDMETHODCALLTYPE SetContextItem(LONG Handle, VARIANT Value) noexcept override;
    HRESULT STDMETHODCALLTYPE SaveContextItem(LONG Handle, VARIANT* Value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_CurrentView(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_CurrentRecord(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_ContextItemCount(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ContextItemHandle(LONG Item, LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE HasContextItem(LONG Item, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ClearContextItem(LONG Handle) noexcept override;
    HRESULT STDMETHODCALLTYPE ContextItem(LONG Handle, VARIANT* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ClearContextItems() noexcept override;
    HRESULT STDMETHODCALLTYPE Routine(BSTR Name, IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE CallRoutine(IDispatch* Routine, BSTR Name, SAFEARRAY** Arguments,
                                          VARIANT_BOOL* Result) noexcept override;

    // Data
    HRESULT STDMETHODCALLTYPE ToBoolean(VARIANT Value, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ToText(VARIANT Value, BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ToLong(VARIANT Value, LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ToDouble(VARIANT Value, double* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ToDate(VARIANT Value, DATE* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE ToCurrency(VARIANT Value, CURRENCY* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE IsBlank(VARIANT Value, VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE NewRecordVariable(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DecimalPlaces(LONG TypeCode, LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE DefaultTechnology(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE RecordAdded(IDispatch* Values) noexcept override;

    // Messages
    HRESULT STDMETHODCALLTYPE Trace(BSTR Text) noexcept override;
    HRESULT STDMETHODCALLTYPE ClearLastError() noexcept override;
    HRESULT STDMETHODCALLTYPE RaiseError(LONG Code, SAFEARRAY** Arguments) noexcept override;
    HRESULT STDMETHODCALLTYPE MessageText(LONG Code, SAFEARRAY** Arguments, BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_LastError(BSTR* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_LastErrorCode(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Tracing(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_Tracing(VARIANT_BOOL Value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Listener(IDispatch** Result) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_Listener(IDispatch* Value) noexcept override;

    // User interface
    HRESULT STDMETHODCALLTYPE OwnerWindow(LONG* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE SetOwnerWindow(LONG Window) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Interactive(VARIANT_BOOL* Result) noexcept override;
    HRESULT STDMETHODCALLTYPE put_Interactive(VARIANT_BOOL Value) noexcept override;

    // The private half for the component
    HRESULT STDMETHODCALLTYPE BeginJob(const wchar_t* name, LONG total) noexcept override;
    HRESULT STDMETHODCALLTYPE ReportJob(LONG done) noexcept override;
    HRESULT STDMETHODCALLTYPE EndJob() noexcept override;
    HRESULT STDMETHODCALLTYPE BeginCall() noexcept override;
    HRESULT STDMETHODCALLTYPE EndCall() noexcept override;
    HRESULT STDMETHODCALLTYPE TellReason(LONG code, const wchar_t* text, ReasonFor whom) noexcept override;
};

}  // namespace zu::host
