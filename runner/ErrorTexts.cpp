#include "runner/ErrorTexts.h"

#include <cwctype>

namespace zu::runner {
namespace {

struct KnownError {
    unsigned code;
    const wchar_t* text;
};

// Numbers 0x800A.... are those of script run times (the low word is Err.Number), 0x8002.... those of
// automation.
constexpr KnownError kErrors[] = {
    {0x800A0005, L"Invalid procedure call or argument"},
    {0x800A0006, L"Overflow"},
    {0x800A0007, L"Out of memory"},
    {0x800A0009, L"Subscript out of range"},
    {0x800A000A, L"This array is fixed or temporarily locked"},
    {0x800A000B, L"Division by zero"},
    {0x800A000D, L"Type mismatch"},
    {0x800A000E, L"Out of string space"},
    {0x800A001C, L"Out of stack space"},
    {0x800A0023, L"Sub or function not defined"},
    {0x800A0033, L"Internal error"},
    {0x800A0034, L"Bad file name or number"},
    {0x800A0035, L"File not found"},
    {0x800A0036, L"Bad file mode"},
    {0x800A0037, L"File already open"},
    {0x800A0039, L"Device input or output error"},
    {0x800A003A, L"File already exists"},
    {0x800A003D, L"Disk full"},
    {0x800A003E, L"Input past end of file"},
    {0x800A0046, L"Permission denied"},
    {0x800A004B, L"Path or file access error"},
    {0x800A004C, L"Path not found"},
    {0x800A005B, L"Object variable not set"},
    {0x800A005C, L"For loop not initialised"},
    {0x800A005E, L"Invalid use of Null"},
    {0x800A01A8, L"Object required"},
    {0x800A01AD, L"The object cannot be created"},
    {0x800A01AE, L"The class does not support automation"},
    {0x800A01B0, L"File or class name not found"},
    {0x800A01B6, L"The object has no such property or method, or the name is not defined"},
    {0x800A01BD, L"The object does not support this action"},
    {0x800A01C0, L"Named argument not found"},
    {0x800A01C1, L"Argument not optional"},
    {0x800A01C2, L"Wrong number of arguments"},
    {0x800A01C3, L"The object is no collection"},
    {0x800A01C9, L"This key is already in the collection"},
    {0x800A01CA, L"The variable has a type that the script language does not support"},
    {0x800A01F4, L"The variable is not defined"},
    {0x800A01F5, L"Illegal assignment"},
    {0x800A03EA, L"Syntax error"},
    {0x800A1389, L"Number expected"},
    {0x800A138A, L"Function expected"},
    {0x800A138F, L"Object expected"},
    {0x800A1391, L"The name is not defined"},
    {0x800A139E, L"An exception was thrown and not caught"},
    {0x80004001, L"Not implemented"},
    {0x80004002, L"The object does not support this interface"},
    {0x80004004, L"The operation was ended"},
    {0x80004005, L"The script engine gives no reason"},
    {0x80020003, L"Member not found"},
    {0x80020005, L"Type mismatch"},
    {0x80020006, L"Unknown name"},
    {0x80020008, L"Bad variable type"},
    {0x80020009, L"The called object raised an error"},
    {0x8002000A, L"Overflow"},
    {0x8002000B, L"Invalid index"},
    {0x8002000E, L"Wrong number of arguments"},
    {0x8002000F, L"Argument not optional"},
    {0x80020012, L"Division by zero"},
    {0x800401F3, L"No class is registered under this name"},
    {0x80040154, L"The class is not registered"},
    {0x80070057, L"Invalid argument"},
    {0x8007000E, L"Out of memory"},
};

}  // namespace

std::wstring ErrorNumber(HRESULT code) {
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    const auto number = static_cast<unsigned>(code);
    std::wstring result = L"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        result += kDigits[number >> shift & 0xF];
    return result;
}

std::wstring SystemErrorText(HRESULT code) {
    wchar_t buffer[512];
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(code), 0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    while (length > 0 && (std::iswspace(buffer[length - 1]) || buffer[length - 1] == L'.'))
        --length;
    return length > 0 ? std::wstring(buffer, length) : L"error " + ErrorNumber(code);
}

std::wstring ScriptErrorText(HRESULT code) {
    for (const KnownError& known : kErrors) {
        if (known.code == static_cast<unsigned>(code)) return known.text;
    }
    return SystemErrorText(code);
}

}  // namespace zu::runner
