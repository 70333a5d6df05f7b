#pragma once

// Headers that most sources include. They are compiled once a build; the sources include what they use all
// the same, which the builds without precompiled headers (x86) show.
#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>
