#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/typelib/LibraryReader.h"

namespace zu::typelib {

using Lines = std::vector<std::string>;

/// The library `number` that `file` carries: the DLL in the program's own folder.
LibraryReader OpenLibrary(const wchar_t* file, unsigned number);

/// Compares operation by operation, so that a difference shows the one line that is meant.
void ExpectOperations(const LibraryReader& library, const wchar_t* interfaceName, const Lines& expected);

}  // namespace zu::typelib
