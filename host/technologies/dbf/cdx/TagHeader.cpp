#include "host/technologies/dbf/cdx/TagHeader.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "host/technologies/dbf/ByteOrder.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

namespace at {
constexpr std::size_t kRoot = 0;
constexpr std::size_t kFreeList = 4;
constexpr std::size_t kCounter = 8;
constexpr std::size_t kKeyLength = 12;
constexpr std::size_t kOptions = 14;
constexpr std::size_t kSignature = 15;
constexpr std::size_t kCollation = 494;
constexpr std::size_t kDescending = 502;
constexpr std::size_t kFilterStart = 504;
constexpr std::size_t kFilterSize = 506;
constexpr std::size_t kKeyStart = 508;
constexpr std::size_t kKeySize = 510;
constexpr std::size_t kPool = 512;
}  // namespace at

constexpr std::size_t kCollationSize = 8;

std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::string Trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return std::string(text);
}

std::string_view PoolText(std::string_view pool, std::size_t start, std::size_t size) {
    if (start >= pool.size()) return {};
    return UpToNul(pool.substr(start, size));
}

}  // namespace

TagHeader TagHeader::Parse(std::span<const std::byte, kHeaderSize> bytes) {
    const std::byte* raw = bytes.data();
    TagHeader header;
    header.root = LoadLittle<std::uint32_t>(raw + at::kRoot);
    header.freeList = LoadLittle<std::uint32_t>(raw + at::kFreeList);
    header.counter = LoadLittle<std::uint32_t>(raw + at::kCounter);
    header.keyLength = LoadLittle<std::uint16_t>(raw + at::kKeyLength);
    header.options = std::to_integer<std::uint8_t>(raw[at::kOptions]);
    header.signature = std::to_integer<std::uint8_t>(raw[at::kSignature]);
    header.descending = LoadLittle<std::uint16_t>(raw + at::kDescending) != 0;

    const std::string_view text(reinterpret_cast<const char*>(raw), kHeaderSize);
    header.collation = Trimmed(UpToNul(text.substr(at::kCollation, kCollationSize)));

    const std::string_view pool = text.substr(at::kPool, kExpressionPool);
    const std::size_t keySize = LoadLittle<std::uint16_t>(raw + at::kKeySize);
    const std::size_t filterSize = LoadLittle<std::uint16_t>(raw + at::kFilterSize);
    if (keySize > 0) {
        header.key = Trimmed(PoolText(pool, LoadLittle<std::uint16_t>(raw + at::kKeyStart), keySize));
        if (filterSize > 1) {
            header.filter =
                Trimmed(PoolText(pool, LoadLittle<std::uint16_t>(raw + at::kFilterStart), filterSize));
        }
    } else {
        // Some writers leave positions and lengths 0: the texts then lie one behind the other.
        const std::string_view key = UpToNul(pool);
        header.key = Trimmed(key);
        if ((header.options & kHasFilter) != 0) {
            header.filter = Trimmed(PoolText(pool, key.size() + 1, pool.size()));
        }
    }
    return header;
}

void TagHeader::Store(std::span<std::byte, kHeaderSize> bytes) const {
    if (key.size() + filter.size() + 2 > kExpressionPool) {
        throw Error(ErrorKind::Overflow, "the index key and its FOR condition are longer than " +
                                             std::to_string(kExpressionPool - 2) + " characters together");
    }
    std::byte* raw = bytes.data();
    std::fill(bytes.begin(), bytes.end(), std::byte{0});
    StoreLittle<std::uint32_t>(raw + at::kRoot, root);
    StoreLittle<std::uint32_t>(raw + at::kFreeList, freeList);
    StoreLittle<std::uint32_t>(raw + at::kCounter, counter);
    StoreLittle<std::uint16_t>(raw + at::kKeyLength, keyLength);
    raw[at::kOptions] = static_cast<std::byte>(options);
    raw[at::kSignature] = static_cast<std::byte>(signature);
    std::memcpy(raw + at::kCollation, collation.data(), std::min(collation.size(), kCollationSize));
    StoreLittle<std::uint16_t>(raw + at::kDescending, descending ? 1 : 0);
    const std::size_t keySize = key.size() + 1;
    StoreLittle<std::uint16_t>(raw + at::kFilterStart, static_cast<std::uint16_t>(keySize));
    StoreLittle<std::uint16_t>(raw + at::kFilterSize, static_cast<std::uint16_t>(filter.size() + 1));
    StoreLittle<std::uint16_t>(raw + at::kKeyStart, 0);
    StoreLittle<std::uint16_t>(raw + at::kKeySize, static_cast<std::uint16_t>(keySize));
    std::memcpy(raw + at::kPool, key.data(), key.size());
    std::memcpy(raw + at::kPool + keySize, filter.data(), filter.size());
}

}  // namespace zu::dbf::cdx
