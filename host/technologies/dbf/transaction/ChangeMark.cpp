#include "host/technologies/dbf/transaction/ChangeMark.h"

#include <array>
#include <exception>
#include <utility>

namespace zu::dbf::transaction {
namespace {

// What is there when the file ends before the mark: neither of its values.
constexpr std::byte kNowhere{0xFF};

}  // namespace

std::byte ChangeMark::Read() const {
    std::array<std::byte, 1> byte{kNowhere};
    return index_->ReadAt(kOffset, byte) == byte.size() ? byte[0] : kNowhere;
}

void ChangeMark::Set() {
    if (index_ == nullptr || isSet_) return;
    const std::byte now = Read();
    if (now != kClear && now != kSet) return;
    if (now == kClear) index_->WriteAt(kOffset, std::array{kSet});
    isSet_ = true;
}

void ChangeMark::Clear() noexcept {
    if (!std::exchange(isSet_, false)) return;
    try {
        index_->WriteAt(kOffset, std::array{kClear});
    } catch (...) {
        static_cast<void>(std::current_exception());
    }
}

void ChangeMark::ClearLeft() noexcept {
    if (index_ == nullptr) return;
    try {
        isSet_ = Read() == kSet;
    } catch (...) {
        static_cast<void>(std::current_exception());
    }
    Clear();
}

void ChangeMark::KeepIn(std::uint64_t offset, std::span<std::byte> bytes) const noexcept {
    if (index_ == nullptr || !LiesIn(offset, bytes.size())) return;
    std::byte& mark = bytes[static_cast<std::size_t>(kOffset - offset)];
    if (mark == kClear) mark = kSet;
}

}  // namespace zu::dbf::transaction
