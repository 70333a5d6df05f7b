#pragma once

#include <windows.h>

#include <oleauto.h>

namespace zu::com {

/// Scripts calculate with doubles; not every script engine takes decimals. Turns a decimal of at most 15
/// digits, which a double holds without loss, into a double and leaves everything else alone.
void MakeUsableForScripts(VARIANT& value) noexcept;

}  // namespace zu::com
