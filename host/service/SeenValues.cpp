#include "host/service/SeenValues.h"

#include <bit>

namespace zu::host {
namespace {

using technologies::Value;

constexpr std::uint64_t kStart = 0x9E3779B97F4A7C15ULL;

/// One round of a multiplicative hash: every bit of the result depends on every bit before.
std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) noexcept {
    hash = (hash ^ word) * 0xD6E8FEB86659FD93ULL;
    return hash ^ (hash >> 32);
}

}  // namespace

std::uint64_t SeenValues::Fingerprint(const Value& value) noexcept {
    std::uint64_t hash = Mix(kStart, static_cast<std::uint64_t>(value.kind));
    switch (value.kind) {
        case Value::Kind::Null:
            break;
        case Value::Kind::Boolean:
            hash = Mix(hash, value.boolean ? 1 : 0);
            break;
        case Value::Kind::Integer:
        case Value::Kind::Currency:
            hash = Mix(hash, static_cast<std::uint64_t>(value.integer));
            break;
        case Value::Kind::Double:
            hash = Mix(hash, std::bit_cast<std::uint64_t>(value.number));
            break;
        case Value::Kind::Decimal:
            hash = Mix(Mix(hash, value.decimal.low), value.decimal.high);
            hash = Mix(hash, value.decimal.scale * 2U + (value.decimal.negative ? 1U : 0U));
            break;
        case Value::Kind::DateTime:
            hash = Mix(Mix(hash, static_cast<std::uint64_t>(value.julianDay)),
                       static_cast<std::uint64_t>(value.milliseconds));
            break;
        case Value::Kind::Text:
            for (const char16_t unit : value.text)
                hash = Mix(hash, unit);
            break;
        case Value::Kind::Binary:
            for (const std::uint8_t byte : value.binary)
                hash = Mix(hash, byte);
            break;
    }
    return hash;
}

void SeenValues::Note(std::size_t field, const Value& value) {
    if (field >= fields_.size()) fields_.resize(field + 1);
    fields_[field] = {visit_, Fingerprint(value)};
}

bool SeenValues::Differs(std::size_t field, const Value& value) const noexcept {
    return WasNoted(field) && fields_[field].fingerprint != Fingerprint(value);
}

}  // namespace zu::host
