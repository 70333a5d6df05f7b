#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "portable/files/MemoryFiles.h"

namespace zu::dbf {

/// The bytes of a table file, put together by hand so that every lie can be told. Independent of the code
/// that writes tables.
class TableImage {
public:
    explicit TableImage(std::uint8_t version = 0x03) : version_(version) {}

    TableImage& Field(std::string_view name, char type, int width, int decimals = 0, int flags = 0);
    TableImage& Record(std::string_view fields, char mark = ' ');
    TableImage& Flags(int flags);
    TableImage& Mark(int codePageMark);
    /// Bytes behind the end mark of the field list.
    TableImage& Gap(std::size_t bytes);
    TableImage& EndMark(std::string_view bytes);
    TableImage& Tail(std::string_view bytes);
    /// Lies: what the header says instead of the truth.
    TableImage& StatedCount(std::uint32_t count);
    TableImage& StatedHeaderLength(unsigned length);
    TableImage& StatedRecordLength(unsigned length);
    /// Overwrites one byte of the finished file.
    TableImage& Byte(std::size_t offset, int value);

    std::string Bytes() const;
    std::size_t headerLength() const;
    std::size_t recordLength() const;

    void PutInto(files::MemoryFiles& files, const std::string& path) const;

private:
    std::uint8_t version_;
    int flags_ = 0;
    int mark_ = 0;
    std::size_t gap_ = 0;
    std::string endMark_ = "\x0D";
    std::string descriptors_;
    std::size_t widths_ = 0;
    std::string records_;
    std::uint32_t count_ = 0;
    std::string tail_ = "\x1A";
    std::optional<std::uint32_t> statedCount_;
    std::optional<unsigned> statedHeaderLength_;
    std::optional<unsigned> statedRecordLength_;
    std::vector<std::pair<std::size_t, int>> bytes_;
};

/// Little-endian and big-endian bytes of a number.
std::string Little(std::uint64_t value, int bytes);
std::string Big(std::uint64_t value, int bytes);
std::string DoubleBytes(double value);

void Put(files::MemoryFiles& files, const std::string& path, std::string_view bytes);

}  // namespace zu::dbf
