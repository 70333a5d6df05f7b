// The limit for exports: one table of plain fields, read in blocks, one loop, written in blocks of a megabyte
// as delimited text. Nothing is checked and nothing can be chosen.
//   native-pass TABLE.dbf OUT.txt

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t kBlock = 1024 * 1024;

struct Field {
    char type;
    unsigned width;
};

char* Write(const Field& field, const char* at, char* out) {
    const char* end = at + field.width;
    if (field.type == 'C') {
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
    if (field.type == 'N' && std::memchr(at, '.', static_cast<std::size_t>(end - at))) {
        while (end[-1] == '0')
            --end;
        if (end[-1] == '.') --end;
    }
    std::memcpy(out, at, static_cast<std::size_t>(end - at));
    return out + (end - at);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 64;
    std::FILE* in = std::fopen(arguments[1], "rb");
    std::FILE* to = std::fopen(arguments[2], "wb");
    unsigned char header[32];
    if (!in || !to || std::fread(header, 1, 32, in) != 32) return 66;
    const unsigned headerLength = header[8] | header[9] << 8;
    const unsigned recordLength = header[10] | header[11] << 8;
    std::vector<Field> fields;
    unsigned char descriptor[32];
    while (std::fread(descriptor, 1, 32, in) == 32 && descriptor[0] != '\r')
        fields.push_back({static_cast<char>(descriptor[11]), descriptor[16]});
    std::setvbuf(in, nullptr, _IONBF, 0);
    std::setvbuf(to, nullptr, _IONBF, 0);
    std::fseek(in, static_cast<long>(headerLength), SEEK_SET);
    std::vector<char> records(kBlock / recordLength * recordLength);
    std::vector<char> text(2 * kBlock + 64 * 1024);
    char* out = text.data();
    for (std::size_t read; (read = std::fread(records.data(), 1, records.size(), in)) >= recordLength;) {
        for (const char* record = records.data(); record + recordLength <= records.data() + read;
             record += recordLength) {
            if (*record == '*') continue;
            const char* at = record + 1;
            for (std::size_t i = 0; i < fields.size(); ++i) {
                if (i != 0) *out++ = ',';
                out = Write(fields[i], at, out);
                at += fields[i].width;
            }
            *out++ = '\r';
            *out++ = '\n';
            if (out - text.data() < static_cast<std::ptrdiff_t>(kBlock)) continue;
            std::fwrite(text.data(), 1, static_cast<std::size_t>(out - text.data()), to);
            out = text.data();
        }
    }
    std::fwrite(text.data(), 1, static_cast<std::size_t>(out - text.data()), to);
    return std::fclose(to) == 0 ? 0 : 74;
}
