#include "com/ComError.h"

#include <new>
#include <string_view>

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/Module.h"
#include "portable/error/Error.h"

namespace zu::com {
namespace {

/// The code of a faulty condition or expression, also as the engine reports it.
constexpr HRESULT kSyntaxError = static_cast<HRESULT>(0x80041017);

HRESULT CodeOf(ErrorKind kind) noexcept {
    switch (kind) {
        case ErrorKind::InvalidArgument:
            return E_INVALIDARG;
        case ErrorKind::NotFound:
            return STG_E_FILENOTFOUND;
        case ErrorKind::AlreadyExists:
            return STG_E_FILEALREADYEXISTS;
        case ErrorKind::AccessDenied:
            return E_ACCESSDENIED;
        case ErrorKind::Locked:
            return STG_E_LOCKVIOLATION;
        case ErrorKind::DiskFull:
            return STG_E_MEDIUMFULL;
        case ErrorKind::IoFailure:
            return STG_E_READFAULT;
        case ErrorKind::Damaged:
            return STG_E_DOCFILECORRUPT;
        case ErrorKind::Unsupported:
            return E_NOTIMPL;
        case ErrorKind::Syntax:
            return kSyntaxError;
        case ErrorKind::TypeMismatch:
            return kTypeMismatch;
        case ErrorKind::Overflow:
            return kOverflow;
        case ErrorKind::Conflict:
            return STG_E_NOTCURRENT;
        case ErrorKind::Cancelled:
            return E_ABORT;
        case ErrorKind::Internal:
            return E_UNEXPECTED;
    }
    return E_FAIL;
}

std::wstring FromUtf8(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(), length);
    return result;
}

/// Leaves the text for the caller to fetch; an empty text leaves nothing, not even an older one.
void Publish(const std::wstring& description, const std::wstring& source) {
    if (description.empty()) {
        SetErrorInfo(0, nullptr);
        return;
    }
    ComPtr<ICreateErrorInfo> creator;
    if (FAILED(CreateErrorInfo(creator.put()))) return;
    std::wstring text = description;
    std::wstring origin = source.empty() ? Module::Name() : source;
    creator->SetDescription(text.data());
    creator->SetSource(origin.data());
    if (const ComPtr<IErrorInfo> info = creator.tryAs<IErrorInfo>()) SetErrorInfo(0, info.get());
}

HRESULT PublishFailure(HRESULT code, const std::wstring& description, const std::wstring& source) noexcept {
    try {
        Publish(description, source);
    } catch (...) {
        SetErrorInfo(0, nullptr);  // the code alone is better than an older text beside it
    }
    return code;
}

HRESULT PublishUtf8(HRESULT code, std::string_view text) noexcept {
    try {
        return PublishFailure(code, FromUtf8(text), {});
    } catch (...) {
        return PublishFailure(code, {}, {});
    }
}

}  // namespace

void ThrowFailure(HRESULT result) {
    ComPtr<IErrorInfo> info;
    Bstr description;
    Bstr source;
    if (GetErrorInfo(0, info.put()) == S_OK && info) {
        info->GetDescription(description.put());
        info->GetSource(source.put());
    }
    throw ComError(result, description.str(), source.str());
}

HRESULT TranslateCurrentException() noexcept {
    try {
        throw;
    } catch (const ComError& error) {
        // A success code in an exception would tell the caller that all went well.
        const HRESULT code = FAILED(error.code()) ? error.code() : E_UNEXPECTED;
        return PublishFailure(code, error.description(), error.source());
    } catch (const Error& error) {
        return PublishUtf8(CodeOf(error.kind()), error.what());
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
        return PublishUtf8(E_FAIL, error.what());
    } catch (...) {
        SetErrorInfo(0, nullptr);
        return E_UNEXPECTED;
    }
}

}  // namespace zu::com
