#include "host/technologies/dbf/HeaderWriter.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <string>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "portable/error/Error.h"

namespace zu::dbf {

namespace {

constexpr std::uint32_t kMostFields = 255;
constexpr std::uint32_t kLongestRecord = 65'500;
constexpr std::size_t kLongestName = 10;
constexpr int kWidestNumber = 20;

/// A type of field as writers make it. Width 0: as defined, within the limits.
struct TypeRule {
    char type;
    Format since;
    int width;
    int widest;
    std::uint8_t flags;  ///< set in Visual FoxPro
};

constexpr TypeRule kRules[] = {
    {'C', Format::DBase3, 0, 65'535, 0},
    {'N', Format::DBase3, 0, kWidestNumber, 0},
    {'F', Format::DBase3, 0, kWidestNumber, 0},
    {'D', Format::DBase3, 8, 8, 0},
    {'L', Format::DBase3, 1, 1, 0},
    {'M', Format::DBase3, 10, 10, 0},
    {'G', Format::FoxPro2, 10, 10, 0},
    {'I', Format::FoxPro2, 4, 4, kBinaryField},
    {'B', Format::FoxPro2, 8, 8, kBinaryField},
    {'Y', Format::FoxPro2, 8, 8, kBinaryField},
    {'T', Format::FoxPro2, 8, 8, kBinaryField},
    {'V', Format::VisualFoxPro, 0, 254, 0},
    {'Q', Format::VisualFoxPro, 0, 254, kBinaryField},
    {'W', Format::VisualFoxPro, 4, 4, 0},
};

[[noreturn]] void Fail(ErrorKind kind, const FieldDefinition& field, const std::string& reason) {
    throw Error(kind, "The field \"" + field.name + "\" cannot be made: " + reason + ".");
}

const TypeRule& RuleOf(const FieldDefinition& field, Format format) {
    for (const TypeRule& rule : kRules) {
        if (rule.type == field.type && rule.since <= format) return rule;
    }
    Fail(ErrorKind::Unsupported, field,
         std::string("tables of this format have no type '") + field.type + "'");
}

void CheckName(const FieldDefinition& field, std::set<std::string>& taken) {
    if (field.name.empty() || field.name.size() > kLongestName)
        Fail(ErrorKind::InvalidArgument, field, "a name has 1 to 10 characters");
    std::string upper;
    for (const char c : field.name) {
        const bool letter =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<std::uint8_t>(c) >= 0x80;
        if (!letter && c != '_' && (upper.empty() || c < '0' || c > '9'))
            Fail(ErrorKind::InvalidArgument, field,
                 "a name begins with a letter or an underscore and goes on with letters, digits and "
                 "underscores");
        upper.push_back(c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c);
    }
    if (!taken.insert(upper).second) Fail(ErrorKind::InvalidArgument, field, "the name is there twice");
}

std::uint32_t WidthOf(const FieldDefinition& field, const TypeRule& rule, Format format) {
    if (IsMemoType(field.type)) return format == Format::VisualFoxPro ? 4 : 10;
    if (rule.width != 0) return static_cast<std::uint32_t>(rule.width);
    if (field.width < 1 || field.width > rule.widest)
        Fail(ErrorKind::InvalidArgument, field,
             "its width is " + std::to_string(field.width) + ", possible are 1 to " +
                 std::to_string(rule.widest));
    return static_cast<std::uint32_t>(field.width);
}

void CheckDecimals(const FieldDefinition& field) {
    const bool digits = field.type == 'N' || field.type == 'F';
    const int most = field.type == 'B' ? 18 : digits ? std::min(18, std::max(0, field.width - 2)) : 0;
    if (field.decimals < 0 || field.decimals > most)
        Fail(ErrorKind::InvalidArgument, field,
             "it has " + std::to_string(field.decimals) + " decimal places, possible are 0 to " +
                 std::to_string(most));
}

/// Collects descriptors and the length of the record.
class DescriptorList {
public:
    explicit DescriptorList(Format format) : format_(format) {}

    void Add(const FieldDefinition& field) {
        const TypeRule& rule = RuleOf(field, format_);
        const bool foxPro = format_ == Format::VisualFoxPro;
        CheckName(field, taken_);
        CheckDecimals(field);
        if (field.nullable && !foxPro)
            Fail(ErrorKind::Unsupported, field, "only tables of Visual FoxPro have fields that can be null");
        const std::uint32_t width = WidthOf(field, rule, format_);
        Put(field.name, field.type, width, field.decimals,
            foxPro ? static_cast<std::uint8_t>(rule.flags | (field.nullable ? kNullable : 0))
                   : std::uint8_t{0});
        if (field.type == 'V' || field.type == 'Q') ++bits_;
        if (field.type == 'V' || field.type == 'Q' || field.type == 'W') isLate_ = true;
        if (field.nullable) ++bits_;
        hasMemo_ = hasMemo_ || IsMemoType(field.type);
        if (recordLength_ > kLongestRecord)
            Fail(ErrorKind::InvalidArgument, field,
                 "the record would be longer than " + std::to_string(kLongestRecord) + " bytes");
    }

    void AddNullFlags() {
        if (bits_ == 0) return;
        Put("_NullFlags", '0', (bits_ + 7) / 8, 0, kSystemField | kBinaryField);
    }

    const std::vector<std::byte>& bytes() const noexcept { return bytes_; }
    std::size_t count() const noexcept { return bytes_.size() / descriptor::kSize; }
    std::uint32_t recordLength() const noexcept { return recordLength_; }
    bool hasMemo() const noexcept { return hasMemo_; }
    bool isLate() const noexcept { return isLate_; }

private:
    void Put(const std::string& name, char type, std::uint32_t width, int decimals, std::uint8_t flags) {
        const std::size_t start = bytes_.size();
        bytes_.resize(start + descriptor::kSize);
        std::byte* at = &bytes_[start];
        std::memcpy(at + descriptor::kName, name.data(), name.size());
        at[descriptor::kType] = static_cast<std::byte>(type);
        if (format_ != Format::DBase3) StoreLittle(at + descriptor::kOffset, recordLength_);
        at[descriptor::kWidth] = static_cast<std::byte>(width);
        at[descriptor::kDecimals] =
            static_cast<std::byte>(type == 'C' ? width >> 8 : static_cast<unsigned>(decimals));
        at[descriptor::kFlags] = static_cast<std::byte>(flags);
        recordLength_ += width;
    }

    Format format_;
    std::vector<std::byte> bytes_;
    std::set<std::string> taken_;
    std::uint32_t recordLength_ = 1;
    std::uint32_t bits_ = 0;
    bool hasMemo_ = false;
    bool isLate_ = false;  ///< a type that only the last versions have
};

std::uint8_t VersionFor(Format format, const DescriptorList& fields) noexcept {
    switch (format) {
        case Format::DBase3:
            return fields.hasMemo() ? 0x83 : 0x03;
        case Format::FoxPro2:
            return fields.hasMemo() ? 0xF5 : 0x03;
        default:
            return fields.isLate() ? 0x32 : 0x30;
    }
}

}  // namespace

bool IsMemoType(char type) noexcept {
    return type == 'M' || type == 'G' || type == 'W';
}

MemoFormat MemoFormatOf(Format format) noexcept {
    return format == Format::DBase3 ? MemoFormat::Dbt3 : MemoFormat::Fpt;
}

std::vector<std::byte> MakeHeader(Format format, std::uint8_t codePageMark,
                                  const std::vector<FieldDefinition>& fields,
                                  const calendar::Date& lastChange) {
    DescriptorList list(format);
    if (fields.empty() || fields.size() >= kMostFields) {
        throw Error(ErrorKind::InvalidArgument,
                    "A table has 1 to 254 fields, not " + std::to_string(fields.size()) + ".");
    }
    for (const FieldDefinition& field : fields)
        list.Add(field);
    list.AddNullFlags();

    const bool foxPro = format == Format::VisualFoxPro;
    const std::size_t length = header::kSize + list.bytes().size() + 1 + (foxPro ? header::kBacklink : 0);
    std::vector<std::byte> bytes(length);
    bytes[header::kVersion] = std::byte{VersionFor(format, list)};
    bytes[header::kYear] =
        static_cast<std::byte>(format == Format::DBase3 ? lastChange.year - 1900 : lastChange.year % 100);
    bytes[header::kYear + 1] = static_cast<std::byte>(lastChange.month);
    bytes[header::kYear + 2] = static_cast<std::byte>(lastChange.day);
    StoreLittle(&bytes[header::kHeaderLength], static_cast<std::uint16_t>(length));
    StoreLittle(&bytes[header::kRecordLength], static_cast<std::uint16_t>(list.recordLength()));
    if (foxPro && list.hasMemo()) bytes[header::kTableFlags] = std::byte{kHasMemo};
    bytes[header::kCodePageMark] = std::byte{codePageMark};
    std::copy(list.bytes().begin(), list.bytes().end(), bytes.begin() + header::kSize);
    bytes[header::kSize + list.bytes().size()] = std::byte{kTerminator};
    return bytes;
}

}  // namespace zu::dbf
