#include "portable/files/WindowsError.h"

#include <windows.h>

#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::files {

namespace {

std::string SystemText(DWORD code) {
    wchar_t text[512];
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                       static_cast<DWORD>(sizeof text / sizeof *text), nullptr);
    std::string message = text::ToUtf8({reinterpret_cast<const char16_t*>(text), length});
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r' || message.back() == '.' ||
                                message.back() == ' ')) {
        message.pop_back();
    }
    return message.empty() ? "system error " + std::to_string(code) : message;
}

}  // namespace

void ThrowWindowsError(unsigned long code, const std::string& path, const char* action) {
    ErrorKind kind = ErrorKind::IoFailure;
    std::string reason;
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_INVALID_DRIVE:
        case ERROR_NOT_READY:
            kind = ErrorKind::NotFound;
            reason = "it does not exist";
            break;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            kind = ErrorKind::AlreadyExists;
            reason = "it exists already";
            break;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_NETWORK_ACCESS_DENIED:
            kind = ErrorKind::AccessDenied;
            reason = "access is denied";
            break;
        case ERROR_SHARING_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_DELETE_PENDING:
            kind = ErrorKind::Locked;
            reason = "another program has it open and denies sharing it";
            break;
        case ERROR_LOCK_VIOLATION:
            kind = ErrorKind::Locked;
            reason = "another program has locked this part of it";
            break;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            kind = ErrorKind::DiskFull;
            reason = "there is no room on the disk";
            break;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_INVALID_PARAMETER:
            kind = ErrorKind::InvalidArgument;
            reason = "the name cannot be used";
            break;
        default:
            reason = SystemText(code);
    }
    throw Error(kind, "The file " + path + " cannot be " + action + ": " + reason + ".");
}

}  // namespace zu::files
