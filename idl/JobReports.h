#pragma once

#include <windows.h>

#include <unknwn.h>

// A private interface between this project's engine and component: how far a long job is. Other engines do
// not answer it, and jobs then run without being watched. It never leaves a process, and a change of its form
// takes a new identifier.

namespace zu {

/// Watches jobs that walk over records. Jobs may lie inside one another; each belongs to one thread.
struct JobReports : IUnknown {
    /// A job begins. `name` is what people call it; `total` is the number of its records.
    virtual HRESULT STDMETHODCALLTYPE BeginJob(const wchar_t* name, LONG total) noexcept = 0;
    /// So many records of the job begun last are done. Cheap enough for every record. E_ABORT: the user wants
    /// the job to end.
    virtual HRESULT STDMETHODCALLTYPE ReportJob(LONG done) noexcept = 0;
    /// The job begun last is over.
    virtual HRESULT STDMETHODCALLTYPE EndJob() noexcept = 0;
};

}  // namespace zu

__CRT_UUID_DECL(zu::JobReports, 0x8C2E51D6, 0x4B07, 0x49F3, 0x9A, 0x65, 0x0E, 0xD3, 0x7B, 0x24, 0xC8, 0x1F)
