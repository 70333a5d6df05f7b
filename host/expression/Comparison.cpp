#include "host/expression/Comparison.h"

#include <algorithm>
#include <cstring>

namespace zu::expression {

namespace {

template <class T>
int Order(const T& a, const T& b) noexcept {
    return a < b ? -1 : (b < a ? 1 : 0);
}

}  // namespace

std::string_view WithoutPadding(std::string_view text) noexcept {
    std::size_t size = text.size();
    while (size > 0 && (text[size - 1] == ' ' || text[size - 1] == '\0'))
        --size;
    return text.substr(0, size);
}

int CompareTexts(std::string_view a, std::string_view b) noexcept {
    a = WithoutPadding(a);
    b = WithoutPadding(b);
    const std::size_t common = std::min(a.size(), b.size());
    const int order = common == 0 ? 0 : std::memcmp(a.data(), b.data(), common);
    if (order != 0) return order;
    for (std::size_t i = common; i < a.size(); ++i) {
        if (a[i] != ' ') return static_cast<unsigned char>(a[i]) < ' ' ? -1 : 1;
    }
    for (std::size_t i = common; i < b.size(); ++i) {
        if (b[i] != ' ') return static_cast<unsigned char>(b[i]) < ' ' ? 1 : -1;
    }
    return 0;
}

int CompareSlots(const Slot& a, const Slot& b) noexcept {
    switch (a.type) {
        case Type::Boolean:
            return Order(a.boolean, b.boolean);
        case Type::Number:
            return Order(a.number, b.number);
        case Type::Text:
            return CompareTexts(a.text, b.text);
        case Type::Date:
        case Type::DateTime: {
            const int days = Order(a.julianDay, b.julianDay);
            return days != 0 ? days : Order(a.milliseconds, b.milliseconds);
        }
        case Type::Unknown:
            break;
    }
    return 0;
}

bool AreComparable(Type a, Type b) noexcept {
    if (a == Type::Unknown || b == Type::Unknown || a == b) return true;
    const auto isDay = [](Type type) { return type == Type::Date || type == Type::DateTime; };
    return isDay(a) && isDay(b);
}

bool Holds(Operator op, int order) noexcept {
    switch (op) {
        case Operator::Equal:
            return order == 0;
        case Operator::NotEqual:
            return order != 0;
        case Operator::Less:
            return order < 0;
        case Operator::LessEqual:
            return order <= 0;
        case Operator::Greater:
            return order > 0;
        case Operator::GreaterEqual:
            return order >= 0;
        default:
            return false;
    }
}

Operator Mirrored(Operator op) noexcept {
    switch (op) {
        case Operator::Less:
            return Operator::Greater;
        case Operator::LessEqual:
            return Operator::GreaterEqual;
        case Operator::Greater:
            return Operator::Less;
        case Operator::GreaterEqual:
            return Operator::LessEqual;
        default:
            return op;
    }
}

std::string_view TypeName(Type type) noexcept {
    switch (type) {
        case Type::Boolean:
            return "a logical";
        case Type::Number:
            return "a number";
        case Type::Text:
            return "a text";
        case Type::Date:
            return "a date";
        case Type::DateTime:
            return "a date-time";
        case Type::Unknown:
            break;
    }
    return "NULL";
}

}  // namespace zu::expression
