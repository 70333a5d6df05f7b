#include "host/technologies/dbf/MemoFields.h"

#include <limits>

#include "host/technologies/dbf/ByteOrder.h"

namespace zu::dbf {

std::optional<std::uint32_t> MemoBlock(const std::byte* at, std::uint32_t width) noexcept {
    if (width == 4) return LoadLittle<std::uint32_t>(at);
    std::uint64_t block = 0;
    bool digits = false;
    bool ended = false;
    for (std::uint32_t i = 0; i < width; ++i) {
        const auto c = std::to_integer<unsigned char>(at[i]);
        if (c == ' ' || c == 0) {
            ended = digits;
        } else if (c < '0' || c > '9' || ended) {
            return std::nullopt;
        } else {
            digits = true;
            block = block * 10 + (c - '0');
        }
    }
    if (block > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    return static_cast<std::uint32_t>(block);
}

MemoOutcome MemoFields::Fetch(std::size_t position, const std::byte* record, std::string& out) {
    out.clear();
    const expression::FieldLayout& field = layout_.record.fields[position];
    const auto block = MemoBlock(record + field.offset, field.width);
    if (block && *block == 0) return MemoOutcome::None;
    const MemoOutcome outcome = block && file_ ? file_->Read(*block, out) : MemoOutcome::Unreadable;
    if (outcome == MemoOutcome::Unreadable && file_ && !warned_) {
        warned_ = true;
        warnings_.push_back(
            "field " + field.name + ": a memo " +
            (block ? "at block " + std::to_string(*block) + " lies outside the memo file or is damaged"
                   : std::string("pointer is no number")) +
            "; such memos are read as null.");
    }
    return outcome;
}

}  // namespace zu::dbf
