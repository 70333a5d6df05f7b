#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

namespace zu::fake {

/// Arguments as the journal shows them: texts in quotes, numbers in VARIANTs with their type (`I2 0`),
/// objects by their label (`<view 1>`), references marked (`&`), arrays with their bounds (`[0..1: "A",
/// True]`).
std::string Show(const VARIANT& value);
std::string Show(BSTR text);
std::string Show(BSTR* text);
std::string Show(LONG number);
std::string Show(VARIANT_BOOL flag);
std::string Show(IUnknown* object);
std::string Show(SAFEARRAY* array);
std::string Show(SAFEARRAY** array);

/// Several arguments, separated by commas.
template <class First, class... Rest>
std::string ShowAll(const First& first, const Rest&... rest) {
    std::string text = Show(first);
    ((text += ", " + Show(rest)), ...);
    return text;
}
inline std::string ShowAll() {
    return {};
}

}  // namespace zu::fake
