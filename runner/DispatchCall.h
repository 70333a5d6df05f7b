#pragma once

#include <windows.h>

#include <oaidl.h>

#include <initializer_list>
#include <optional>
#include <string>

#include "com/Variant.h"

namespace zu::runner {

/// The dispatch id of a member; nothing when the object has no such member.
std::optional<DISPID> FindMember(IDispatch* object, const std::wstring& name);

/// Invokes a member with arguments as they come from a script engine. Failures are ComErrors with the texts
/// that the object gives.
com::Variant InvokeMember(IDispatch* object, DISPID id, WORD flags, const DISPPARAMS& parameters);

/// Calls a method, or reads a property, by name.
com::Variant CallMember(IDispatch* object, const std::wstring& name,
                        std::initializer_list<com::Variant> arguments = {});

/// Sets a property by name; an object is set by reference.
void PutMember(IDispatch* object, const std::wstring& name, const com::Variant& value);

}  // namespace zu::runner
