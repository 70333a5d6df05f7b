#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::host {

/// What went wrong last on a thread.
struct LastError {
    LONG code = 0;
    std::wstring text;
};

/// The messages of one thread: the last error, the log, and the listener that a client may set.
///
/// The listener is an object with the methods Report(Code, Text), Trace(Text), Progress(Job, Done, Total) and
/// ProgressEnd(); all are optional. Only what Progress answers matters here; errors never do.
class Messages {
public:
    /// A diagnostic text: to the log (level debug) and, while tracing, to the listener.
    void Trace(std::wstring_view text) noexcept;
    /// An error that the user must see: last error, log, listener.
    void Report(LONG code, std::wstring_view text) noexcept;
    /// A failure that the caller is told by its HRESULT: last error and log (level debug).
    void Note(LONG code, std::wstring_view text) noexcept;
    /// As Note, for what stays the last error also when the call in which it came up succeeds.
    void Keep(LONG code, std::wstring_view text) noexcept;
    /// Something that was tolerated: log and, while tracing, listener.
    void Warn(std::wstring_view text) noexcept;

    /// How far a long job is, for the listener's Progress(Job, Done, Total). False: the job is to end.
    bool Progress(std::wstring_view job, std::uint64_t done, std::uint64_t total) noexcept;
    /// The job told last is over: the listener's ProgressEnd().
    void EndProgress() noexcept;

    const LastError& lastError() const noexcept { return last_; }
    void Forget() noexcept;
    /// Makes what was reported or kept last the last error again: what was only noted since is forgotten.
    void ForgetTolerated() noexcept;
    /// True when the user has been told this, as the last of all.
    bool HasTold(LONG code, std::wstring_view text) const noexcept;

    bool isTracing() const noexcept { return tracing_; }
    void SetTracing(bool tracing) noexcept { tracing_ = tracing; }
    const com::ComPtr<IDispatch>& listener() const noexcept { return listener_; }
    void SetListener(IDispatch* listener) noexcept;

private:
    static void Remember(LastError& error, LONG code, std::wstring_view text) noexcept;
    void Tell(const wchar_t* method, const LONG* code, std::wstring_view text) noexcept;
    /// Arguments last first. Answers what the listener answered, Empty when it did not.
    com::Variant Ask(const wchar_t* method, std::span<VARIANTARG> arguments) noexcept;

    LastError last_;
    LastError lasting_;  ///< the last one that was reported or kept
    bool told_ = false;  ///< the user knows the lasting one
    com::ComPtr<IDispatch> listener_;
    bool tracing_ = false;
    bool telling_ = false;  ///< the listener is running: what it causes is not told to it again
};

/// The insertions of a message as text: Null, Empty and omitted ones are empty texts, references are looked
/// through, what has no text form shows as "?".
std::vector<std::wstring> InsertionsOf(SAFEARRAY* arguments);

}  // namespace zu::host
