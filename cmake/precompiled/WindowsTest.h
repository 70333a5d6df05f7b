#pragma once

#include "cmake/precompiled/Windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
