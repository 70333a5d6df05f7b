#include "host/technologies/dbf/write/RowEncoder.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "host/technologies/dbf/DbfFormat.h"
#include "portable/text/ByteWords.h"
#include "portable/textio/StoredBytes.h"

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

char* Characters(std::byte* at) noexcept {
    return reinterpret_cast<char*>(at);
}

}  // namespace

RowEncoder::RowEncoder(const EditedTable& table)
    : table_(table),
      fields_(table.layout),
      takesRows_(table.header.isConsistent),
      blank_(table.layout.record.recordLength),
      record_(table.layout.record.recordLength),
      tablePage_(table.layout.record.codePage->number()) {
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
    asciiStays_ = std::all_of(stays_.begin(), stays_.begin() + 128, [](bool stays) { return stays; });
}

bool RowEncoder::Encode(std::span<const Cell> cells, std::span<const std::size_t> places, unsigned codePage) {
    if (!takesRows_ || cells.size() > places.size()) return false;
    codePage_ = codePage;
    Begin();
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (!EncodeCell(cells[i], places[i])) return false;
    return true;
}

void RowEncoder::Begin() noexcept {
    text::CopyBytes(Characters(blank_.data()), blank_.size(), Characters(record_.data()));
    memos_.clear();
    usedTexts_ = 0;
}

bool RowEncoder::MatchStored(std::span<const textio::StoredField> stored,
                             std::span<const std::size_t> places) {
    using Form = textio::StoredField::Form;
    matches_.clear();
    if (!takesRows_ || stored.size() != places.size()) return false;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const std::size_t place = places[i];
        if (place >= table_.layout.kinds.size() || table_.layout.descriptions[place].readOnly) return false;
        const auto& field = table_.layout.record.fields[place];
        if (field.nullBit >= 0 || field.lengthBit >= 0) return false;
        const FieldKind kind = table_.layout.kinds[place];
        const textio::StoredField& from = stored[i];
        const Match match{from, field.offset, field.width, {from.width, from.decimals}};
        const bool fits =
            (from.form == Form::Text && kind == FieldKind::Character) ||
            (from.form == Form::Number && kind == FieldKind::Number && from.decimals == field.decimals &&
             match.digits.isUsable()) ||
            (from.form == Form::Date && kind == FieldKind::Date && from.width == textio::kStoredDateWidth) ||
            (from.form == Form::Logical && kind == FieldKind::Logical);
        if (!fits) return false;
        matches_.push_back(match);
    }
    return true;
}

bool RowEncoder::EncodeStored(const char* stored) {
    Begin();
    return std::all_of(matches_.begin(), matches_.end(), [&](const Match& match) {
        return EncodeMatch(match, stored + match.from.offset, Characters(record_.data()) + match.offset);
    });
}

bool RowEncoder::EncodeMatch(const Match& match, const char* from, char* to) const noexcept {
    using Form = textio::StoredField::Form;
    switch (match.from.form) {
        case Form::Text: {
            const std::string_view text(from, textio::LengthWithoutPadding(from, match.from.width));
            if (text.size() > match.width || !Stays(text)) return false;
            PutText(text, to, match.width);
            return true;
        }
        case Form::Number: {
            const text::DigitsField::Place place = match.digits.Find(from);
            const std::size_t length = place.end - place.begin;
            if (place.end == 0 || length > match.width) return false;
            text::CopyBytes(from + place.begin, length, to + match.width - length);
            return true;
        }
        case Form::Date:
            if (textio::IsStoredDate(from)) std::memcpy(to, from, textio::kStoredDateWidth);
            return true;
        case Form::Logical:
            if (textio::IsStoredTrue(*from)) *to = 'T';
            if (textio::IsStoredFalse(*from)) *to = 'F';
            return true;
    }
    return false;
}

void RowEncoder::PutText(std::string_view text, char* field, std::size_t width) noexcept {
    text::CopyBytes(text.data(), text.size(), field);
    text::FillBlanks(field + text.size(), width - text.size());
}

bool RowEncoder::Stays(std::string_view bytes) const noexcept {
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    if (asciiStays_) {
        while (end - at >= 8 && (text::LoadWord(at) & text::kTopBits) == 0)
            at += 8;
    }
    return std::all_of(at, end, [this](char c) { return stays_[static_cast<unsigned char>(c)]; });
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
            if (cell.kind == Kind::Digits) return EncodeDigits(cell, field);
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
        const bool stay = codePage_ == tablePage_ && Stays(bytes);
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
    const auto& layout = table_.layout.record.fields[field];
    if (text.size() > layout.width) return false;
    if (layout.nullBit < 0)
        PutText(text, Characters(record_.data()) + layout.offset, layout.width);
    else
        fields_.SetBytes(record_.data(), field, text);
    return true;
}

bool RowEncoder::EncodeDigits(const Cell& cell, std::size_t field) {
    const auto& layout = table_.layout.record.fields[field];
    const std::string_view digits(cell.bytes, cell.length);
    if (cell.scale > layout.decimals || layout.nullBit >= 0) {
        std::int64_t units = 0;
        for (const char c : digits)
            if (c >= '0') units = units * 10 + (c - '0');  // signs and points lie below the digits
        return EncodeDecimal(digits.front() == '-' ? -units : units, cell.scale, field);
    }
    const std::size_t missing =
        layout.decimals == 0 ? 0 : layout.decimals - cell.scale + (cell.scale == 0 ? 1U : 0U);
    if (digits.size() + missing > layout.width) return false;
    char* at = Characters(record_.data()) + layout.offset;
    const std::size_t blanks = layout.width - digits.size() - missing;
    text::FillBlanks(at, blanks);
    at += blanks;
    text::CopyBytes(digits.data(), digits.size(), at);
    at += digits.size();
    if (missing != 0 && cell.scale == 0) *at++ = '.';
    std::fill_n(at, layout.decimals - cell.scale, '0');
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
