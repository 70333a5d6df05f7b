#include "bench/limits/RecordFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "bench/Keys.h"
#include "bench/limits/BlockFile.h"
#include "bench/limits/InputFile.h"
#include "bench/limits/MappedTable.h"

namespace zu::bench {
namespace {

constexpr off_t kCountOffset = 4;

class WritableFile {
public:
    explicit WritableFile(const std::string& path) : file_(open(path.c_str(), O_RDWR | O_CLOEXEC)) {
        if (file_ < 0) throw std::runtime_error(path + " cannot be written");
    }
    ~WritableFile() { close(file_); }
    WritableFile(const WritableFile&) = delete;
    WritableFile& operator=(const WritableFile&) = delete;

    void WriteAt(std::uint64_t offset, const char* bytes, std::size_t length) const {
        if (pwrite(file_, bytes, length, static_cast<off_t>(offset)) != static_cast<ssize_t>(length))
            throw std::runtime_error("the disk is full");
    }
    void WriteCount(std::uint32_t records) const {
        std::array<char, 4> bytes{};
        for (char& byte : bytes) {
            byte = static_cast<char>(records & 0xFF);
            records >>= 8;
        }
        WriteAt(kCountOffset, bytes.data(), bytes.size());
    }

private:
    int file_;
};

std::uint64_t OffsetOf(const MappedTable& table, std::uint32_t record) {
    return table.headerLength() + std::uint64_t{record} * table.recordLength();
}

}  // namespace

void WriteRecordCount(const std::string& table, std::uint32_t records) {
    WritableFile(table).WriteCount(records);
}

std::uint64_t CopyBytes(const std::string& from, const std::string& to) {
    const InputFile input(from);
    BlockFile file(to);
    file.Write(input.begin(), static_cast<std::size_t>(input.end() - input.begin()));
    file.Close();
    return 1;
}

std::uint64_t CopyLiving(const std::string& from, const std::string& to) {
    const MappedTable table(from);
    BlockFile file(to);
    file.Write(table.bytes(), table.headerLength());
    std::uint32_t living = 0;
    for (std::uint32_t i = 0; i < table.count(); ++i) {
        const char* record = table.record(i);
        if (*record == '*') continue;
        file.Write(record, table.recordLength());
        ++living;
    }
    file.Write("\x1A", 1);
    file.Close();
    WriteRecordCount(to, living);
    return living;
}

std::uint64_t SortKeys(const std::string& from, const std::string& to) {
    const MappedTable table(from);
    const Column& customer = table.column("CUSTOMER");
    std::vector<std::uint32_t> records(table.count());
    for (std::uint32_t i = 0; i < table.count(); ++i)
        records[i] = i;
    const auto key = [&](std::uint32_t record) { return table.record(record) + customer.offset; };
    std::sort(records.begin(), records.end(), [&](std::uint32_t left, std::uint32_t right) {
        const int order = std::memcmp(key(left), key(right), customer.width);
        return order != 0 ? order < 0 : left < right;
    });
    BlockFile file(to);
    for (const std::uint32_t record : records) {
        char* out = file.position();
        std::memcpy(out, key(record), customer.width);
        std::memcpy(out + customer.width, &record, sizeof record);
        file.Advance(out + customer.width + sizeof record);
    }
    file.Close();
    return table.count();
}

std::uint64_t AppendOneByOne(const std::string& table, std::uint32_t count) {
    const MappedTable records(table);
    const WritableFile file(table);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t record = records.count() + i;
        file.WriteAt(OffsetOf(records, record), records.record(0), records.recordLength());
        file.WriteCount(record + 1);
    }
    return count;
}

std::uint64_t UpdateOneByOne(const std::string& table, std::uint32_t count) {
    const MappedTable records(table);
    const Column& amount = records.column("AMOUNT");
    const WritableFile file(table);
    Keys keys(records.count());
    for (std::uint32_t i = 0; i < count; ++i)
        file.WriteAt(OffsetOf(records, keys.Next() - 1) + amount.offset, "     1234.56", amount.width);
    return count;
}

std::uint64_t MarkOneByOne(const std::string& table, std::uint32_t count) {
    const MappedTable records(table);
    const WritableFile file(table);
    Keys keys(records.count());
    for (std::uint32_t i = 0; i < count; ++i)
        file.WriteAt(OffsetOf(records, keys.Next() - 1), "*", 1);
    return count;
}

std::uint64_t MarkSelected(const std::string& table) {
    const MappedTable records(table);
    const Column& country = records.column("COUNTRY");
    const WritableFile file(table);
    std::uint64_t marked = 0;
    for (std::uint32_t i = 0; i < records.count(); ++i) {
        const char* record = records.record(i);
        if (*record == '*' || std::memcmp(record + country.offset, "SE", 2) != 0) continue;
        file.WriteAt(OffsetOf(records, i), "*", 1);
        ++marked;
    }
    return marked;
}

}  // namespace zu::bench
