#pragma once

#include <cstdint>

namespace zu::bench {

/// Keys from 1 to `records`, spread over all of them, the same in every program that is measured: each is the
/// one before plus 7919, which is prime.
class Keys {
public:
    explicit Keys(std::uint32_t records) : records_(records) {}
    std::uint32_t Next() noexcept {
        key_ = (key_ + kStep) % records_;
        return key_ + 1;
    }

private:
    static constexpr std::uint32_t kStep = 7919;
    std::uint32_t records_;
    std::uint32_t key_ = 0;
};

}  // namespace zu::bench
