#include "bench/limits/MappedTable.h"

#include <stdexcept>

namespace zu::bench {
namespace {

unsigned Number(const char* at, int bytes) {
    unsigned number = 0;
    for (int i = bytes - 1; i >= 0; --i)
        number = number << 8 | static_cast<unsigned char>(at[i]);
    return number;
}

}  // namespace

MappedTable::MappedTable(const std::string& path)
    : file_(path),
      count_(Number(bytes() + 4, 4)),
      headerLength_(Number(bytes() + 8, 2)),
      recordLength_(Number(bytes() + 10, 2)) {
    unsigned offset = 1;
    for (const char* at = bytes() + 32; *at != '\r'; at += 32) {
        const auto width = static_cast<unsigned char>(at[16]);
        columns_.push_back({at, at[11], offset, width, static_cast<unsigned char>(at[17])});
        offset += width;
    }
}

const Column& MappedTable::column(const char* name) const {
    for (const Column& column : columns_)
        if (column.name == name) return column;
    throw std::runtime_error(std::string("no field ") + name);
}

}  // namespace zu::bench
