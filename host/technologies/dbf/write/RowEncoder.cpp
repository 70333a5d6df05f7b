#include "host/technologies/dbf/write/RowEncoder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/technologies/dbf/DbfFormat.h"

namespace zu::dbf::write {
namespace {

using textio::Cell;

// Powers of ten of 64 bits.
constexpr unsigned kMostPlaces = 18;

constexpr auto kPowersOfTen = [] {
    std::array<std::int64_t, kMostPlaces + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

std::int64_t PowerOfTen(unsigned exponent) noexcept {
    return kPowersOfTen[exponent];
}

std::int64_t RoundedQuotient(std::int64_t number, std::int64_t divisor) noexcept {
    const std::int64_t rest = number % divisor;
    const std::int64_t quotient = number / divisor;
    // Compared so that nothing overflows: rest is at least half of the divisor.
    if (rest >= 0) return rest >= divisor - rest ? quotient + 1 : quotient;
    return -rest >= divisor + rest ? quotient - 1 : quotient;
}

}  // namespace

RowEncoder::RowEncoder(const EditedTable& table)
    : table_(table),
      fields_(table.layout),
      takesRows_(table.header.isConsistent),
      blank_(table.layout.record.recordLength) {
    for (const auto& field : table.header.fields)
        if ((field.flags & kAutoIncrement) == kAutoIncrement) takesRows_ = false;
    const text::CodePage& page = *table.layout.record.codePage;
    if (!page.isSingleByte()) takesRows_ = false;
    if (!takesRows_) return;
    fields_.Blank(blank_.data());
    for (std::size_t byte = 0; byte < stays_.size(); ++byte) {
        const std::string text(1, static_cast<char>(byte));
        std::u16string characters;
        page.Decode(text, characters);
        stays_[byte] = page.Encode(characters) == text;
    }
}

bool RowEncoder::Encode(std::span<const Cell> cells, std::span<const std::size_t> places, unsigned codePage) {
    if (!takesRows_ || cells.size() > places.size()) return false;
    codePage_ = codePage;
    record_ = blank_;
    memos_.clear();
    usedTexts_ = 0;
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (!EncodeCell(cells[i], places[i])) return false;
    return true;
}

bool RowEncoder::EncodeCell(const Cell& cell, std::size_t field) {
    if (field >= table_.layout.kinds.size() || table_.layout.descriptions[field].readOnly) return false;
    using Kind = Cell::Kind;
    const FieldKind kind = table_.layout.kinds[field];
    if (cell.kind == Kind::Null) {
        if (kind == FieldKind::MemoText || kind == FieldKind::MemoBinary) return false;
        fields_.SetNull(record_.data(), field);
        return true;
    }
    switch (kind) {
        case FieldKind::Character:
            return EncodeText(cell, field);
        case FieldKind::MemoText:
            return EncodeMemo(cell, field);
        case FieldKind::Number:
            if (cell.kind == Kind::Integer) return EncodeDecimal(cell.integer, 0, field);
            return cell.kind == Kind::Decimal && EncodeDecimal(cell.integer, cell.scale, field);
        case FieldKind::Integer:
            if (cell.kind != Kind::Integer || cell.integer != static_cast<std::int32_t>(cell.integer))
                return false;
            fields_.SetDecimal(record_.data(), field, cell.integer);
            return true;
        case FieldKind::Float:
        case FieldKind::Double:
            if (cell.kind != Kind::Double) return false;
            fields_.SetNumber(record_.data(), field, cell.number);
            return true;
        case FieldKind::Date:
        case FieldKind::DateTime:
            if (cell.kind != Kind::Date) return false;
            fields_.SetDateTime(record_.data(), field, static_cast<std::int32_t>(cell.integer),
                                static_cast<std::int32_t>(cell.length));
            return true;
        case FieldKind::Logical:
            if (cell.kind != Kind::Boolean) return false;
            fields_.SetBoolean(record_.data(), field, cell.integer != 0);
            return true;
        default:
            return false;
    }
}

std::optional<std::string_view> RowEncoder::BytesOf(const Cell& cell, std::string& encoded) const {
    if (cell.kind == Cell::Kind::Bytes) {
        const std::string_view bytes(cell.bytes, cell.length);
        const bool stay = codePage_ == table_.layout.record.codePage->number() &&
                          std::all_of(bytes.begin(), bytes.end(),
                                      [this](char c) { return stays_[static_cast<unsigned char>(c)]; });
        return stay ? std::optional(bytes) : std::nullopt;
    }
    if (cell.kind != Cell::Kind::Characters) return std::nullopt;
    auto bytes = table_.layout.record.codePage->Encode({cell.characters, cell.length});
    if (!bytes) return std::nullopt;
    encoded = std::move(*bytes);
    return encoded;
}

bool RowEncoder::EncodeMemo(const Cell& cell, std::size_t field) {
    if (table_.files.memo() == nullptr) return false;
    if (usedTexts_ == texts_.size()) texts_.emplace_back();
    const auto content = BytesOf(cell, texts_[usedTexts_]);
    if (!content) return false;
    ++usedTexts_;
    memos_.push_back({field, *content});
    return true;
}

bool RowEncoder::EncodeText(const Cell& cell, std::size_t field) {
    const auto bytes = BytesOf(cell, encoded_);
    if (!bytes) return false;
    std::string_view text = *bytes;
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    if (text.size() > table_.layout.record.fields[field].width) return false;
    fields_.SetBytes(record_.data(), field, text);
    return true;
}

// Numbers that only fit without the zero in front of the point are left to the edit.
bool RowEncoder::EncodeDecimal(std::int64_t units, unsigned scale, std::size_t field) {
    const auto& layout = table_.layout.record.fields[field];
    const unsigned places = layout.decimals;
    if (scale > kMostPlaces || places > kMostPlaces) return false;
    if (scale > places) {
        units = RoundedQuotient(units, PowerOfTen(scale - places));
    } else {
        const std::int64_t factor = PowerOfTen(places - scale);
        if (std::max(units, -units) > PowerOfTen(kMostPlaces) / factor) return false;
        units *= factor;
    }
    const unsigned besides = (places > 0 ? 1U : 0U) + (units < 0 ? 1U : 0U);
    if (layout.width < besides + places + 1) return false;
    const unsigned digits = layout.width - besides;
    if (digits <= kMostPlaces && std::max(units, -units) >= PowerOfTen(digits)) return false;
    fields_.SetDecimal(record_.data(), field, units);
    return true;
}

}  // namespace zu::dbf::write
