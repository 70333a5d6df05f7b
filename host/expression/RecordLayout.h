#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zu::text {
class CodePage;
}

namespace zu::expression {

/// How the bytes of a field are stored in a record.
enum class Storage : std::uint8_t {
    Character,    ///< bytes of the code page, padded with blanks (or NULs)
    Varchar,      ///< as Character; when the length bit is set, the last byte of the slot is the length
    NumberText,   ///< a number as ASCII digits, right-justified
    DateText,     ///< YYYYMMDD
    LogicalText,  ///< T t Y y, F f N n, blank or '?'
    Integer32,    ///< signed, little-endian
    Double,       ///< IEEE double, little-endian
    Currency,     ///< signed 64-bit little-endian, units of 1/10000
    DateTime,     ///< Julian day and milliseconds since midnight, 32-bit little-endian each
    Memo,         ///< text kept elsewhere, fetched through MemoReader
    Opaque        ///< cannot be used in expressions
};

struct FieldLayout {
    std::string name;  ///< as stored, UTF-8; looked up without regard to case
    Storage storage = Storage::Opaque;
    std::uint32_t offset = 0;  ///< from the start of the record (the deletion mark is byte 0)
    std::uint32_t width = 0;   ///< bytes
    std::uint8_t decimals = 0;
    std::int32_t nullBit = -1;    ///< bit in the null flags that says "is null"; -1 = never null
    std::int32_t lengthBit = -1;  ///< bit that says "the last byte is the length"; -1 = always full
};

/// Where the fields of a record lie; shared by every record of a table.
struct RecordLayout {
    std::vector<FieldLayout> fields;
    std::uint32_t recordLength = 0;
    std::uint32_t nullFlagsOffset = 0;  ///< of the first byte of the null flags; used when a bit is >= 0
    std::string tableName;              ///< for names written as TABLE.FIELD or TABLE->FIELD
    const text::CodePage* codePage = nullptr;  ///< never null in a layout that is used
};

/// Fetches the content of a Memo field for a record.
class MemoReader {
public:
    virtual ~MemoReader() = default;
    /// Puts the content into `out`, in the code page's bytes; false when there is none.
    virtual bool Read(std::size_t field, const std::byte* record, std::string& out) = 0;
};

}  // namespace zu::expression
