#include "component/engine/RunTimeError.h"

#include <array>

namespace zu::component {

namespace {

/// The errors of the automation run time that come under a dispatch code too, or without a text.
struct KnownError {
    HRESULT code;
    LONG number;
    const wchar_t* description;
};

constexpr std::array<KnownError, 11> kKnown = {{
    {DISP_E_TYPEMISMATCH, 13, L"Type mismatch"},
    {DISP_E_BADVARTYPE, 13, L"Type mismatch"},
    {DISP_E_OVERFLOW, 6, L"Overflow"},
    {DISP_E_BADINDEX, 9, L"Subscript out of range"},
    {DISP_E_DIVBYZERO, 11, L"Division by zero"},
    {E_OUTOFMEMORY, 7, L"Out of memory"},
    {com::kTypeMismatch, 13, L"Type mismatch"},
    {com::kOverflow, 6, L"Overflow"},
    {com::kSubscriptOutOfRange, 9, L"Subscript out of range"},
    {com::kObjectNotSet, 91, L"Object variable not set"},
    {com::kDuplicateKey, 457, L"This key is already associated with an element of this collection"},
}};

constexpr ULONG kRunTimeErrors = 0x800A0000;

const KnownError* Find(HRESULT code) noexcept {
    for (const KnownError& error : kKnown) {
        if (error.code == code) return &error;
    }
    return nullptr;
}

LONG NumberOf(HRESULT code) noexcept {
    if (const KnownError* known = Find(code)) return known->number;
    const auto bits = static_cast<ULONG>(code);
    return (bits & 0xFFFF0000) == kRunTimeErrors ? static_cast<LONG>(bits & 0xFFFF) : code;
}

}  // namespace

std::wstring DescriptionOf(const com::ComError& error) {
    if (!error.description().empty()) return error.description();
    const KnownError* known = Find(error.code());
    return known ? known->description : L"Automation error";
}

com::ComError CurrentRunTimeError() {
    const HRESULT code = com::TranslateCurrentException();
    try {
        com::Check(code);
    } catch (const com::ComError& error) {
        return error;
    }
    return com::ComError(E_UNEXPECTED);
}

std::wstring RunTimeErrorText(const com::ComError& error, std::wstring_view function) {
    std::wstring text = std::to_wstring(NumberOf(error.code()));
    text += L" - ";
    text += DescriptionOf(error);
    text += L" in ";
    text += function;
    return text;
}

std::wstring RunTimeErrorText(std::wstring_view function) {
    return RunTimeErrorText(CurrentRunTimeError(), function);
}

}  // namespace zu::component
