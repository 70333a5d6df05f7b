#include "bench/limits/TextPass.h"

#include <cstring>

#include "bench/limits/BlockFile.h"
#include "bench/limits/InputFile.h"
#include "bench/limits/MappedTable.h"
#include "bench/limits/RecordFile.h"

namespace zu::bench {
namespace {

char* WriteDelimited(const Column& column, const char* at, char* out) {
    const char* end = at + column.width;
    if (column.type == 'C') {
        while (end != at && end[-1] == ' ')
            --end;
        *out++ = '"';
        for (; at != end; ++at) {
            if (*at == '"') *out++ = '"';
            *out++ = *at;
        }
        *out++ = '"';
        return out;
    }
    while (at != end && *at == ' ')
        ++at;
    if (column.type == 'N' && std::memchr(at, '.', static_cast<std::size_t>(end - at))) {
        while (end[-1] == '0')
            --end;
        if (end[-1] == '.') --end;
    }
    std::memcpy(out, at, static_cast<std::size_t>(end - at));
    return out + (end - at);
}

// A value at `at` goes into its field, which is blank; answers where the next value begins.
const char* ReadDelimited(const Column& column, const char* at, char* field) {
    if (*at == '"') {
        for (++at; at[0] != '"' || at[1] == '"'; ++at) {
            if (*at == '"') ++at;
            *field++ = *at;
        }
        return at + 2;
    }
    const char* end = at;
    while (*end != ',' && *end != '\r')
        ++end;
    const auto length = static_cast<unsigned>(end - at);
    if (column.type != 'N' || column.decimals == 0) {
        std::memcpy(column.type == 'N' ? field + column.width - length : field, at, length);
        return end + 1;
    }
    const auto* point = static_cast<const char*>(std::memchr(at, '.', length));
    const auto whole = point ? static_cast<unsigned>(point - at) : length;
    char* to = field + column.width - column.decimals - 1 - whole;
    std::memset(field + column.width - column.decimals, '0', column.decimals);
    std::memcpy(to, at, length);
    if (!point) to[whole] = '.';
    return end + 1;
}

}  // namespace

std::uint64_t ExportDelimited(const std::string& table, const std::string& text) {
    const MappedTable records(table);
    BlockFile file(text);
    std::uint64_t lines = 0;
    for (std::uint32_t i = 0; i < records.count(); ++i) {
        const char* record = records.record(i);
        if (*record == '*') continue;
        char* out = file.position();
        for (const Column& column : records.columns()) {
            if (column.offset != 1) *out++ = ',';
            out = WriteDelimited(column, record + column.offset, out);
        }
        *out++ = '\r';
        *out++ = '\n';
        file.Advance(out);
        ++lines;
    }
    file.Close();
    return lines;
}

std::uint64_t ExportFixed(const std::string& table, const std::string& text) {
    const MappedTable records(table);
    const unsigned length = records.recordLength() - 1;
    BlockFile file(text);
    std::uint64_t lines = 0;
    for (std::uint32_t i = 0; i < records.count(); ++i) {
        const char* record = records.record(i);
        if (*record == '*') continue;
        char* out = file.position();
        std::memcpy(out, record + 1, length);
        out[length] = '\r';
        out[length + 1] = '\n';
        file.Advance(out + length + 2);
        ++lines;
    }
    file.Close();
    return lines;
}

std::uint64_t ImportDelimited(const std::string& layout, const std::string& text, const std::string& table) {
    const MappedTable like(layout);
    const InputFile input(text);
    BlockFile file(table);
    file.Write(like.bytes(), like.headerLength());
    std::uint32_t records = 0;
    for (const char* at = input.begin(); at != input.end(); ++at, ++records) {
        char* out = file.position();
        std::memset(out, ' ', like.recordLength());
        for (const Column& column : like.columns())
            at = ReadDelimited(column, at, out + column.offset);
        file.Advance(out + like.recordLength());
    }
    file.Write("\x1A", 1);
    file.Close();
    WriteRecordCount(table, records);
    return records;
}

std::uint64_t ImportFixed(const std::string& layout, const std::string& text, const std::string& table) {
    const MappedTable like(layout);
    const InputFile input(text);
    const unsigned length = like.recordLength() - 1;
    BlockFile file(table);
    file.Write(like.bytes(), like.headerLength());
    std::uint32_t records = 0;
    for (const char* at = input.begin(); at != input.end(); at += length + 2, ++records) {
        char* out = file.position();
        *out = ' ';
        std::memcpy(out + 1, at, length);
        file.Advance(out + 1 + length);
    }
    file.Write("\x1A", 1);
    file.Close();
    WriteRecordCount(table, records);
    return records;
}

}  // namespace zu::bench
