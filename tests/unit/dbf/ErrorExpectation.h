#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "portable/error/Error.h"

namespace zu {

/// Runs `action`, which must fail with an error of `kind` whose text contains each of `parts`.
inline void ExpectError(ErrorKind kind, std::initializer_list<std::string_view> parts,
                        const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        EXPECT_EQ(static_cast<int>(error.kind()), static_cast<int>(kind)) << error.what();
        for (const std::string_view part : parts) {
            EXPECT_NE(std::string_view(error.what()).find(part), std::string_view::npos)
                << "\"" << part << "\" is missing in: " << error.what();
        }
        return;
    }
    ADD_FAILURE() << "no error was reported";
}

/// Some of `texts` contains `part`.
template <class Texts>
bool Mentions(const Texts& texts, std::string_view part) {
    for (const auto& text : texts) {
        if (std::string_view(text).find(part) != std::string_view::npos) return true;
    }
    return false;
}

}  // namespace zu
