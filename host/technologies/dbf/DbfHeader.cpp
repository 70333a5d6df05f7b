#include "host/technologies/dbf/DbfHeader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "portable/error/Error.h"

namespace zu::dbf {

namespace {

std::string Hex(std::uint8_t byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    return {'0', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
}

std::uint8_t ByteAt(const std::byte* at) noexcept {
    return std::to_integer<std::uint8_t>(*at);
}

/// Text up to the first NUL, at most `length` bytes.
std::string TextAt(const std::byte* at, std::size_t length) {
    const auto* text = reinterpret_cast<const char*>(at);
    return {text, strnlen(text, length)};
}

std::optional<calendar::Date> LastChange(const std::byte* at) noexcept {
    // dBASE and Clipper count from 1900, FoxPro writes the year's last two digits.
    const int year = ByteAt(at);
    calendar::Date date{year < 80 ? 2000 + year : 1900 + year, ByteAt(at + 1), ByteAt(at + 2)};
    if (!calendar::IsValid(date)) return std::nullopt;
    return date;
}

/// Reads the bytes of one header and judges them.
class HeaderReader {
public:
    explicit HeaderReader(const files::File& file) : file_(file), fileSize_(file.Size()) {}

    DbfHeader Read() {
        ReadFixedPart();
        ReadDescriptors();
        SettleWidths();
        PlaceFields();
        return std::move(header_);
    }

private:
    [[noreturn]] void Fail(ErrorKind kind, const std::string& reason) const {
        throw Error(kind, "The file " + file_.path() + " cannot be used as a table: " + reason + ".");
    }

    void Warn(const std::string& text) { header_.warnings.push_back(file_.path() + ": " + text + "."); }

    void ReadFixedPart() {
        if (fileSize_ == 0) Fail(ErrorKind::Damaged, "it is empty");
        std::array<std::byte, header::kSize> start{};
        const std::size_t got = file_.ReadAt(0, start);
        if (got < start.size()) {
            Fail(ErrorKind::Damaged, "it has only " + std::to_string(got) +
                                         " bytes, and a table begins with " + std::to_string(header::kSize) +
                                         " bytes of header");
        }
        header_.versionByte = ByteAt(&start[header::kVersion]);
        header_.version = VersionOf(header_.versionByte);
        header_.lastChange = LastChange(&start[header::kYear]);
        header_.recordCount = LoadLittle<std::uint32_t>(&start[header::kRecordCount]);
        header_.headerLength = LoadLittle<std::uint16_t>(&start[header::kHeaderLength]);
        header_.recordLength = LoadLittle<std::uint16_t>(&start[header::kRecordLength]);
        header_.tableFlags = ByteAt(&start[header::kTableFlags]);
        header_.codePageMark = ByteAt(&start[header::kCodePageMark]);

        if (header_.version.encrypted ||
            (header_.version.dBase4 && ByteAt(&start[header::kEncrypted]) == 1)) {
            Fail(ErrorKind::Unsupported, "its records are encrypted");
        }
        CheckLengths();
        if (header_.version.dBase4 && ByteAt(&start[header::kOpenTransaction]) == 1) {
            Warn("a transaction of dBASE IV was not completed; its records may be half changed");
        }
        bytes_.resize(header_.headerLength);
        if (file_.ReadAt(0, bytes_) < bytes_.size())
            Fail(ErrorKind::Damaged, "its header cannot be read whole");
    }

    void CheckLengths() const {
        const std::size_t fixed = header_.version.dBase7 ? header::kSizeOfDBase7 : header::kSize;
        if (header_.headerLength <= fixed) {
            Reject("the header length is " + std::to_string(header_.headerLength) + ", and at least " +
                   std::to_string(fixed + 1) + " was expected");
        }
        if (header_.headerLength > fileSize_) {
            Reject("the header length is " + std::to_string(header_.headerLength) +
                   ", but the file has only " + std::to_string(fileSize_) + " bytes");
        }
        if (header_.recordLength == 0) Reject("the record length is 0");
    }

    /// A fault in the sizes: of a table when the version is known, else a sign of another kind of file.
    [[noreturn]] void Reject(const std::string& reason) const {
        if (header_.versionByte == 0x02) Fail(ErrorKind::Unsupported, "tables of dBASE II are not read");
        if (!header_.version.known) {
            Fail(ErrorKind::Damaged, "it is no DBF file (its first byte is " + Hex(header_.versionByte) +
                                         ", which no table has, and " + reason + ")");
        }
        Fail(ErrorKind::Damaged, reason);
    }

    void ReadDescriptors() {
        const bool seven = header_.version.dBase7;
        const std::size_t size = seven ? descriptor7::kSize : descriptor::kSize;
        std::size_t at = seven ? header::kSizeOfDBase7 : header::kSize;
        if (seven) {
            header_.driverName = TextAt(&bytes_[header::kDriverNameOfDBase7], header::kDriverNameLength);
        }
        for (; at + size <= bytes_.size() && !IsEnd(at); at += size) {
            header_.fields.push_back(seven ? ReadDescriptor7(&bytes_[at]) : ReadDescriptor(&bytes_[at]));
        }
        if (at >= bytes_.size() || !IsEnd(at)) Warn("the list of fields has no end mark");
        if (header_.fields.empty()) Reject("the header names no fields");
    }

    /// 0D ends the list, in files of some writers 0A or 00.
    bool IsEnd(std::size_t at) const noexcept {
        const std::uint8_t first = ByteAt(&bytes_[at]);
        return first == kTerminator || first == 0x0A || first == 0x00;
    }

    static FieldDescriptor ReadDescriptor(const std::byte* at) {
        FieldDescriptor field;
        field.name = TextAt(at + descriptor::kName, descriptor::kNameLength);
        field.type = static_cast<char>(ByteAt(at + descriptor::kType));
        field.width = ByteAt(at + descriptor::kWidth);
        field.decimals = ByteAt(at + descriptor::kDecimals);
        field.flags = ByteAt(at + descriptor::kFlags);
        field.nextNumber = LoadLittle<std::uint32_t>(at + descriptor::kNextNumber);
        field.step = ByteAt(at + descriptor::kStep);
        return field;
    }

    static FieldDescriptor ReadDescriptor7(const std::byte* at) {
        FieldDescriptor field;
        field.name = TextAt(at, descriptor7::kNameLength);
        field.type = static_cast<char>(ByteAt(at + descriptor7::kType));
        field.width = ByteAt(at + descriptor7::kWidth);
        field.decimals = ByteAt(at + descriptor7::kDecimals);
        field.nextNumber = LoadLittle<std::uint32_t>(at + descriptor7::kNextNumber);
        return field;
    }

    /// The second width byte of character fields is a high byte for Clipper and FoxPro and decimals for
    /// others: what makes the fields fill the record is right.
    void SettleWidths() {
        std::uint64_t narrow = 1;
        std::uint64_t wide = 1;
        for (const FieldDescriptor& field : header_.fields) {
            narrow += field.width;
            wide += field.width + (field.type == 'C' ? field.decimals * 256U : 0U);
        }
        const bool useHighByte = narrow != header_.recordLength && wide == header_.recordLength;
        for (FieldDescriptor& field : header_.fields) {
            if (field.type != 'C') continue;
            if (useHighByte) field.width += field.decimals * 256U;
            field.decimals = 0;
        }
        const std::uint64_t total = useHighByte ? wide : narrow;
        header_.isConsistent = total == header_.recordLength;
        if (header_.version.doubtful && !header_.isConsistent) {
            Reject("the fields need " + std::to_string(total) + " bytes a record where the header says " +
                   std::to_string(header_.recordLength));
        }
        if (header_.version.doubtful) {
            Warn("the version byte " + Hex(header_.versionByte) +
                 " is not known for sure; the table can only be read");
        }
        if (!header_.isConsistent) {
            Warn("the fields need " + std::to_string(total) + " bytes a record, the header says " +
                 std::to_string(header_.recordLength) + "; the table can only be read");
        }
    }

    void PlaceFields() {
        std::uint32_t offset = 1;
        for (FieldDescriptor& field : header_.fields) {
            field.offset = offset;
            const std::uint32_t room = header_.recordLength - std::min(offset, header_.recordLength);
            if (field.width > room) {
                Warn("field " + field.name + " does not fit into the record and is cut to " +
                     std::to_string(room) + " bytes");
                field.width = room;
            }
            offset += field.width;
        }
        std::erase_if(header_.fields, [](const FieldDescriptor& field) { return field.width == 0; });
        if (header_.fields.empty()) Reject("all fields have the width 0");
    }

    const files::File& file_;
    std::uint64_t fileSize_;
    std::vector<std::byte> bytes_;
    DbfHeader header_;
};

}  // namespace

bool FieldDescriptor::isSystem() const noexcept {
    return (flags & kSystemField) != 0 || type == '0';
}
bool FieldDescriptor::isNullable() const noexcept {
    return (flags & kNullable) != 0;
}
bool FieldDescriptor::isBinary() const noexcept {
    return (flags & kBinaryField) != 0;
}

DbfHeader DbfHeader::Read(const files::File& file) {
    return HeaderReader(file).Read();
}

}  // namespace zu::dbf
