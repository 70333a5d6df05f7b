#include "host/technologies/dbf/TableLayout.h"

#include <algorithm>

#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/FieldNames.h"

namespace zu::dbf {

namespace {

using expression::Storage;
using technologies::FieldType;

/// What a kind of field is to users and to expressions. Size and display width 0: the field's own width.
struct KindTraits {
    FieldKind kind;
    Storage storage;
    FieldType type;
    int size;
    int displayWidth;
    bool rightAligned;
};

constexpr KindTraits kTraits[] = {
    {FieldKind::Character, Storage::Character, FieldType::Text, 0, 0, false},
    {FieldKind::Varchar, Storage::Varchar, FieldType::Text, 0, 0, false},
    {FieldKind::Varbinary, Storage::Opaque, FieldType::Binary, 0, 0, false},
    {FieldKind::Number, Storage::NumberText, FieldType::Decimal, 0, 0, true},
    {FieldKind::Float, Storage::NumberText, FieldType::Double, 0, 0, true},
    {FieldKind::Date, Storage::DateText, FieldType::Date, 8, 10, false},
    {FieldKind::Logical, Storage::LogicalText, FieldType::Boolean, 1, 5, false},
    {FieldKind::Integer, Storage::Integer32, FieldType::Integer32, 11, 11, true},
    {FieldKind::Integer7, Storage::Opaque, FieldType::Integer32, 11, 11, true},
    {FieldKind::Double, Storage::Double, FieldType::Double, 20, 20, true},
    {FieldKind::Double7, Storage::Opaque, FieldType::Double, 20, 20, true},
    {FieldKind::Currency, Storage::Currency, FieldType::Currency, 21, 21, true},
    {FieldKind::DateTime, Storage::DateTime, FieldType::Date, 14, 19, false},
    {FieldKind::MemoText, Storage::Memo, FieldType::LongText, 10, 50, false},
    {FieldKind::MemoBinary, Storage::Opaque, FieldType::Binary, 10, 10, false},
    {FieldKind::Raw, Storage::Opaque, FieldType::Binary, 0, 0, false},
};

const KindTraits& TraitsOf(FieldKind kind) noexcept {
    const auto* found = std::find_if(std::begin(kTraits), std::end(kTraits),
                                     [kind](const KindTraits& traits) { return traits.kind == kind; });
    return found != std::end(kTraits) ? *found : kTraits[std::size(kTraits) - 1];
}

/// Widths of block numbers: binary in Visual FoxPro, decimal digits elsewhere.
bool IsMemoWidth(std::uint32_t width) noexcept {
    return width == 4 || width == 10;
}

FieldKind KindOf(const FieldDescriptor& field, const DbfVersion& version) noexcept {
    switch (field.type) {
        case 'C':
            return FieldKind::Character;
        case 'N':
            return FieldKind::Number;
        case 'F':
            return FieldKind::Float;
        case 'L':
            return field.width == 1 ? FieldKind::Logical : FieldKind::Raw;
        case 'D':
            return field.width == 8 ? FieldKind::Date : FieldKind::Raw;
        case 'M':
            if (!IsMemoWidth(field.width)) return FieldKind::Raw;
            return field.isBinary() ? FieldKind::MemoBinary : FieldKind::MemoText;
        case 'G':
        case 'P':
        case 'W':
            return IsMemoWidth(field.width) ? FieldKind::MemoBinary : FieldKind::Raw;
        case 'B':
            // A double for FoxPro, a pointer to binary data for dBASE V: the width tells.
            if (field.width == 8) return FieldKind::Double;
            return field.width == 10 ? FieldKind::MemoBinary : FieldKind::Raw;
        case 'I':
        case '+':
            if (field.width != 4) return FieldKind::Raw;
            return version.dBase7 ? FieldKind::Integer7 : FieldKind::Integer;
        case 'O':
            return field.width == 8 && version.dBase7 ? FieldKind::Double7 : FieldKind::Raw;
        case 'Y':
            return field.width == 8 ? FieldKind::Currency : FieldKind::Raw;
        case 'T':
            return field.width == 8 ? FieldKind::DateTime : FieldKind::Raw;
        case '@':
            return field.width == 8 && !version.dBase7 ? FieldKind::DateTime : FieldKind::Raw;
        case 'V':
            return version.visualFoxPro ? FieldKind::Varchar : FieldKind::Raw;
        case 'Q':
            return version.visualFoxPro ? FieldKind::Varbinary : FieldKind::Raw;
        default:
            return FieldKind::Raw;
    }
}

technologies::FieldDescription Describe(const FieldDescriptor& field, const KindTraits& traits,
                                        std::string name) {
    technologies::FieldDescription description;
    description.name = std::move(name);
    description.type = traits.type;
    description.size = traits.size != 0 ? traits.size : static_cast<int>(field.width);
    description.decimals = traits.rightAligned || field.type == 'Y' ? field.decimals : 0;
    description.displayWidth = traits.displayWidth != 0 ? traits.displayWidth : static_cast<int>(field.width);
    description.rightAligned = traits.rightAligned;
    description.nullable = field.isNullable();
    description.readOnly = traits.type == FieldType::Binary || field.type == '+' ||
                           (field.flags & kAutoIncrement) == kAutoIncrement;
    return description;
}

/// Hands out the bits of the null flags in the order of the fields: for variable-length fields one that says
/// "not full length", for nullable fields one that says "null".
class NullBits {
public:
    void Assign(const FieldDescriptor& field, expression::FieldLayout& layout) noexcept {
        if (field.type == 'V' || field.type == 'Q') layout.lengthBit = next_++;
        if (field.isNullable()) layout.nullBit = next_++;
    }
    std::uint32_t bytes() const noexcept { return static_cast<std::uint32_t>(next_ + 7) / 8; }

private:
    std::int32_t next_ = 0;
};

/// The hidden column that holds the null flags.
const FieldDescriptor* FindNullFlags(const std::vector<FieldDescriptor>& fields) noexcept {
    for (const FieldDescriptor& field : fields) {
        if (field.type == '0') return &field;
    }
    return nullptr;
}

}  // namespace

TableLayout TableLayout::Make(const DbfHeader& header, const text::CodePage& codePage,
                              const std::string& tableName) {
    TableLayout layout;
    layout.record.recordLength = header.recordLength;
    layout.record.tableName = tableName;
    layout.record.codePage = &codePage;

    std::vector<FieldDescriptor> visible;
    std::copy_if(header.fields.begin(), header.fields.end(), std::back_inserter(visible),
                 [](const FieldDescriptor& field) { return !field.isSystem(); });
    const std::vector<std::string> names = FieldNames(visible, codePage, header.codePageMark != 0);

    NullBits bits;
    std::size_t position = 0;
    for (const FieldDescriptor& field : header.fields) {
        expression::FieldLayout stored;
        if (header.version.visualFoxPro && field.type != '0') bits.Assign(field, stored);
        if (field.isSystem()) continue;
        const FieldKind kind = KindOf(field, header.version);
        const KindTraits& traits = TraitsOf(kind);
        stored.name = names[position];
        stored.storage = traits.storage;
        stored.offset = field.offset;
        stored.width = field.width;
        stored.decimals = field.decimals;
        layout.record.fields.push_back(std::move(stored));
        layout.descriptions.push_back(Describe(field, traits, names[position]));
        layout.kinds.push_back(kind);
        if (kind == FieldKind::Raw) {
            layout.warnings.push_back(
                "field " + names[position] + " has the unknown type '" +
                (field.type > 0x20 && field.type < 0x7F ? std::string(1, field.type) : std::string("?")) +
                "' or an odd width and is shown as bytes");
        }
        ++position;
    }

    const FieldDescriptor* nullFlags = FindNullFlags(header.fields);
    if (bits.bytes() == 0) return layout;
    if (nullFlags && nullFlags->width >= bits.bytes()) {
        layout.record.nullFlagsOffset = nullFlags->offset;
        return layout;
    }
    layout.warnings.emplace_back(
        "the hidden column that marks nulls and lengths is missing or too short; no value is read as null");
    for (expression::FieldLayout& field : layout.record.fields) {
        field.nullBit = -1;
        field.lengthBit = -1;
    }
    return layout;
}

bool TableLayout::hasMemos() const noexcept {
    return std::any_of(kinds.begin(), kinds.end(), [](FieldKind kind) {
        return kind == FieldKind::MemoText || kind == FieldKind::MemoBinary;
    });
}

}  // namespace zu::dbf
