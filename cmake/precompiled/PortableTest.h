#pragma once

#include "cmake/precompiled/Portable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
