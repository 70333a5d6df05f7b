#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "com/ComPtr.h"

namespace zu::runner {

/// GetObject of script hosts: the object that a path or other display name stands for; with an empty path the
/// running object of a class; with both, an object of the class that has loaded the file.
/// Throws com::ComError with the reason.
com::ComPtr<IDispatch> LookUpObject(const std::wstring& path, const std::wstring& className);

}  // namespace zu::runner
