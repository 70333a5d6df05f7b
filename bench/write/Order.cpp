#include "bench/write/Order.h"

namespace zu::bench {
namespace {

// The same sequence everywhere: a linear congruence over 64 bits, of which the upper bits are taken.
class Sequence {
public:
    explicit Sequence(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ULL + 1) {}
    std::uint32_t Below(std::uint32_t limit) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>((state_ >> 33) % limit);
    }
    std::string Word(std::uint32_t shortest, std::uint32_t longest) {
        std::string word;
        const std::uint32_t length = shortest + Below(longest - shortest + 1);
        while (word.size() < length)
            word += static_cast<char>('A' + Below(26));
        return word;
    }

private:
    std::uint64_t state_;
};

}  // namespace

Order Order::Make(std::uint32_t number) {
    Sequence random(number);
    Order order;
    order.id = number;
    order.customer = random.Word(8, 30);
    order.country = random.Word(2, 2);
    order.day = 2455000 + static_cast<int>(random.Below(5000));
    order.cents = random.Below(2000000);
    order.quantity = random.Below(1000);
    order.paid = random.Below(2) == 1;
    order.rate = random.Below(1000000);
    order.note = random.Word(0, 60);
    order.code = random.Word(8, 8);
    order.deleted = random.Below(20) == 0;
    return order;
}

}  // namespace zu::bench
