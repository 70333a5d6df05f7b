// Whole records for text files: texts stay where they lie in the mapped file, numbers are taken from their
// digits.
#include "host/technologies/dbf/DbfTable.h"

#include <limits>

#include "host/technologies/RowCells.h"
#include "host/technologies/dbf/write/AppendBatch.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/NumberText.h"

namespace zu::dbf {

namespace {

using expression::FieldLayout;
using textio::Cell;

constexpr std::uint8_t kMostShortPlaces = 18;
/// Automation dates begin with the year 100.
constexpr int kFirstYear = 100;

std::string_view Bytes(const std::byte* record, const FieldLayout& field) noexcept {
    return {reinterpret_cast<const char*>(record + field.offset), field.width};
}

Cell TextCell(std::string_view text) noexcept {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
        text.remove_suffix(1);
    return Cell::OfBytes(text);
}

/// False: the digits need a closer look.
bool NumberCell(std::string_view bytes, Cell& cell) noexcept {
    text::DecimalDigits digits;
    if (text::ParseDecimal(bytes, digits) != text::NumberForm::Number) return false;
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (digits.high != 0 || digits.low > kMost || digits.scale > kMostShortPlaces) return false;
    const auto units = static_cast<std::int64_t>(digits.low);
    cell = Cell::OfDecimal(digits.negative ? -units : units, digits.scale);
    return true;
}

/// Null for what is no date of automation.
Cell DateCell(std::string_view digits) noexcept {
    int number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return Cell();
        number = number * 10 + (c - '0');
    }
    const calendar::Date date{number / 10000, number / 100 % 100, number % 100};
    if (!calendar::IsValid(date) || date.year < kFirstYear) return Cell();
    return Cell::OfInteger(calendar::ToJulianDay(date), Cell::Kind::Date);
}

Cell LogicalCell(char c) noexcept {
    if (c == 'T' || c == 't' || c == 'Y' || c == 'y') return Cell::OfBoolean(true);
    if (c == 'F' || c == 'f' || c == 'N' || c == 'n') return Cell::OfBoolean(false);
    return Cell();
}

}  // namespace

bool DbfTable::ReadRow(std::uint32_t record, std::span<const std::size_t> chosen,
                       technologies::RowCells& out) {
    // A batch of this table may let the file be mapped anew while the cells are still in use.
    if (batch_ && batch_->isOpen()) return false;
    const std::byte* const bytes = RequireRecord(record);
    // Blocks of a file that is not mapped come and go while the cells are still in use.
    const bool textsStay = records_.isMapped() && out.codePage() == codePage().number();
    const FieldReader reader(layout_, memos_.get(), blankNumbersAreNull_);
    for (const std::size_t position : chosen) {
        const FieldLayout& field = layout_.record.fields.at(position);
        const FieldKind kind = layout_.kinds[position];
        Cell cell;
        bool read = false;
        if (field.nullBit < 0 && field.lengthBit < 0) {
            switch (kind) {
                case FieldKind::Character:
                    read = textsStay;
                    if (read) cell = TextCell(Bytes(bytes, field));
                    break;
                case FieldKind::Number:
                    read = NumberCell(Bytes(bytes, field), cell);
                    break;
                case FieldKind::Date:
                    cell = DateCell(Bytes(bytes, field));
                    read = true;
                    break;
                case FieldKind::Logical:
                    cell = LogicalCell(static_cast<char>(bytes[field.offset]));
                    read = true;
                    break;
                default:
                    break;
            }
        }
        if (read) {
            out.Add(cell);
            continue;
        }
        reader.Read(bytes, position, out.scratch());
        if (!out.Add(out.scratch(), layout_.descriptions[position].type)) return false;
    }
    return true;
}

std::optional<std::vector<textio::StoredField>> DbfTable::StoredForm(std::span<const std::size_t> chosen,
                                                                     unsigned codePage) {
    using Form = textio::StoredField::Form;
    std::vector<textio::StoredField> stored;
    stored.reserve(chosen.size());
    for (const std::size_t position : chosen) {
        const FieldLayout& field = layout_.record.fields.at(position);
        if (field.nullBit >= 0 || field.lengthBit >= 0) return std::nullopt;
        textio::StoredField form{Form::Text, field.decimals, field.offset, field.width};
        switch (layout_.kinds[position]) {
            case FieldKind::Character:
                if (codePage != this->codePage().number() || !this->codePage().isSingleByte())
                    return std::nullopt;
                break;
            case FieldKind::Number:
                form.form = Form::Number;
                break;
            case FieldKind::Date:
                form.form = Form::Date;
                break;
            case FieldKind::Logical:
                form.form = Form::Logical;
                break;
            default:
                return std::nullopt;
        }
        stored.push_back(form);
    }
    return stored;
}

std::size_t DbfTable::LocateRecords(std::span<const std::uint32_t> records, const char** out) {
    if (!records_.isMapped() || (batch_ && batch_->isOpen())) return 0;
    std::size_t located = 0;
    for (const std::uint32_t record : records) {
        const std::byte* const bytes = records_.Record(record);
        if (!bytes) break;
        out[located++] = reinterpret_cast<const char*>(bytes);
    }
    return located;
}

}  // namespace zu::dbf
