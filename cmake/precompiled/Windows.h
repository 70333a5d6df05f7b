#pragma once

#include "cmake/precompiled/Portable.h"

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>
