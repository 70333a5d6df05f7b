#pragma once

#include <string>

namespace zu::runner {

/// The full path of the folder that --data names. Throws zu::Error (NotFound) when there is none.
std::wstring DataFolder(const std::wstring& folder);

}  // namespace zu::runner
