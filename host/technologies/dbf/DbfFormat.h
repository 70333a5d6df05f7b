#pragma once

#include <cstddef>
#include <cstdint>

namespace zu::dbf {

// The fixed numbers of DBF files. All integers are little-endian.

inline constexpr std::uint8_t kLiveMark = 0x20;
inline constexpr std::uint8_t kDeletedMark = 0x2A;
inline constexpr std::uint8_t kEndOfFile = 0x1A;

/// Where things lie in the first 32 bytes.
namespace header {
inline constexpr std::size_t kVersion = 0;
inline constexpr std::size_t kYear = 1;  ///< then month and day, one byte each
inline constexpr std::size_t kRecordCount = 4;
inline constexpr std::size_t kHeaderLength = 8;
inline constexpr std::size_t kRecordLength = 10;
inline constexpr std::size_t kOpenTransaction = 14;
inline constexpr std::size_t kEncrypted = 15;
inline constexpr std::size_t kTableFlags = 28;
inline constexpr std::size_t kCodePageMark = 29;
inline constexpr std::size_t kSize = 32;
inline constexpr std::size_t kSizeOfDBase7 = 68;
inline constexpr std::size_t kDriverNameOfDBase7 = 32;
inline constexpr std::size_t kDriverNameLength = 32;
/// What Visual FoxPro keeps behind the descriptors: the path of the owning database, or zeros.
inline constexpr std::size_t kBacklink = 263;
}  // namespace header

/// Bits of the table flags.
enum TableFlag : std::uint8_t { kProductionIndex = 0x01, kHasMemo = 0x02, kIsDatabase = 0x04 };

/// A field descriptor of 32 bytes.
namespace descriptor {
inline constexpr std::size_t kName = 0;
inline constexpr std::size_t kNameLength = 11;
inline constexpr std::size_t kType = 11;
inline constexpr std::size_t kOffset = 12;
inline constexpr std::size_t kWidth = 16;
inline constexpr std::size_t kDecimals = 17;
inline constexpr std::size_t kFlags = 18;
inline constexpr std::size_t kNextNumber = 19;
inline constexpr std::size_t kStep = 23;
inline constexpr std::size_t kSize = 32;
}  // namespace descriptor

/// A field descriptor of dBASE 7, 48 bytes.
namespace descriptor7 {
inline constexpr std::size_t kNameLength = 32;
inline constexpr std::size_t kType = 32;
inline constexpr std::size_t kWidth = 33;
inline constexpr std::size_t kDecimals = 34;
inline constexpr std::size_t kNextNumber = 40;
inline constexpr std::size_t kSize = 48;
}  // namespace descriptor7

/// Bits of a field's flags (Visual FoxPro).
enum FieldFlag : std::uint8_t {
    kSystemField = 0x01,
    kNullable = 0x02,
    kBinaryField = 0x04,
    kAutoIncrement = 0x0C  ///< both bits
};

/// First bytes that end the list of descriptors.
inline constexpr std::uint8_t kTerminator = 0x0D;

}  // namespace zu::dbf
