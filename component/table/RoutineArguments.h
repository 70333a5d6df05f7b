#pragma once

#include <windows.h>

#include <oleauto.h>

#include <array>

namespace zu::component {

/// Argument0 to Argument9 as a caller gave them; null or missing ends the list.
using ArgumentList = std::array<const VARIANT*, 10>;

/// The arguments of a routine call: copies of the given ones up to the first that is missing, as an array
/// indexed from 0, or, with none, the one-element array indexed -1 to -1. What the routine writes into it
/// stays there from call to call and never reaches the caller's variables.
class RoutineArguments {
public:
    explicit RoutineArguments(const ArgumentList& given);
    RoutineArguments(const RoutineArguments&) = delete;
    RoutineArguments& operator=(const RoutineArguments&) = delete;
    ~RoutineArguments();

    /// The array for the engine, which takes it by reference.
    SAFEARRAY*& array() noexcept { return array_; }

private:
    SAFEARRAY* array_ = nullptr;
};

}  // namespace zu::component
