#include "host/engine/Reporting.h"

#include <oleauto.h>

#include <string>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/ComPtr.h"
#include "host/engine/EngineState.h"

namespace zu::host {
namespace {

/// Holds the thread's error information and puts it back: the listener is foreign code that may change it.
class ErrorInformation {
public:
    ErrorInformation() noexcept { GetErrorInfo(0, information_.put()); }
    ErrorInformation(const ErrorInformation&) = delete;
    ErrorInformation& operator=(const ErrorInformation&) = delete;
    ~ErrorInformation() { SetErrorInfo(0, information_.get()); }

    std::wstring description() const {
        com::Bstr text;
        if (information_) information_->GetDescription(text.put());
        return text.str();
    }

private:
    com::ComPtr<IErrorInfo> information_;
};

}  // namespace

HRESULT ReportCurrentException(Audience audience) noexcept {
    const HRESULT result = com::TranslateCurrentException();
    try {
        const ErrorInformation information;
        Messages& messages = EngineState::Current().messages;
        if (audience == Audience::User) {
            messages.Report(result, information.description());
        } else {
            messages.Note(result, information.description());
        }
    } catch (...) {  // NOLINT(bugprone-empty-catch): the caller has the HRESULT
    }
    return result;
}

}  // namespace zu::host
