#pragma once

#include <span>

#include "host/expression/Function.h"

namespace zu::expression {

// The functions of the language by subject; Function.cpp joins them.

std::span<const Function> TextFunctions();
std::span<const Function> SearchFunctions();
std::span<const Function> NumberFunctions();
std::span<const Function> DateFunctions();
std::span<const Function> ConversionFunctions();
std::span<const Function> LogicFunctions();

}  // namespace zu::expression
